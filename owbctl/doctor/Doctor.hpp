#ifndef OWBCTL_DOCTOR_DOCTOR_HPP
#define OWBCTL_DOCTOR_DOCTOR_HPP

#include "agent/Trace.hpp"
#include "doctor/Check.hpp"

#include <functional>
#include <string>

namespace owbctl {

/**
 * Looks at everything that a read needs: the URL, the socket, the object manager, the login, the trace, /proc
 * and the software inventory. `url` is the one that is set; the library must trace into `trace`, which tells
 * why a read failed. Each finding is handed to `report` before the next is looked for, which may take its
 * time.
 */
void examine(const std::string& url, const Trace& trace, const std::function<void(const Check&)>& report);

} // namespace owbctl
#endif
