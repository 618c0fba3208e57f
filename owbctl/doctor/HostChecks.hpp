#ifndef OWBCTL_DOCTOR_HOSTCHECKS_HPP
#define OWBCTL_DOCTOR_HOSTCHECKS_HPP

#include "doctor/Check.hpp"

/** Checks of this host: what agents read here, without an object manager. */
namespace owbctl {

/** Whether an agent that starts in the current directory traces, into which file, and who enabled that. */
Check checkTrace();

/** Whether /proc shows the processes of all users (hidepid in proc(5)). */
Check checkProcessTable();

/** Whether the program that determines the kind of a process is executable. */
Check checkSoftwareInventory();

} // namespace owbctl
#endif
