#ifndef OWBCTL_DOCTOR_HOSTCHECKS_HPP
#define OWBCTL_DOCTOR_HOSTCHECKS_HPP

#include "doctor/Check.hpp"

namespace owbctl {

/** Whether /proc shows the processes of every user (see hidepid in proc(5)). */
Check checkProcessTable();

/** Whether the program that tells the kind of a process can be run. */
Check checkSoftwareInventory();

} // namespace owbctl
#endif
