#ifndef OWBCTL_DOCTOR_TRACECHECK_HPP
#define OWBCTL_DOCTOR_TRACECHECK_HPP

#include "doctor/Check.hpp"

namespace owbctl {

/** Whether an agent that is started here would trace, where to, and by whose will. */
Check checkTrace();

} // namespace owbctl
#endif
