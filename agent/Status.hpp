#ifndef AGENT_STATUS_HPP
#define AGENT_STATUS_HPP

#include <string>

namespace owbctl {

/** Exit statuses besides those of exitStatus(). */
constexpr int exitFailed = 1;
constexpr int exitUsage = 2;

/** Exit status for a status of the library: 0 for OWB_DONE, else 10 more than the library's number. */
int exitStatus(long status);

/** Whether a status may come from an object manager that could not be reached. */
bool mayBeUnreachable(long status);

/** What a status of the library other than OWB_DONE means for a request to the object manager at `url`. */
std::string failureText(long status, const std::string& url);

} // namespace owbctl
#endif
