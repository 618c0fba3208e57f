#ifndef OWBCTL_COMMANDS_REPORT_HPP
#define OWBCTL_COMMANDS_REPORT_HPP

#include "agent/Group.hpp"

/** Exit statuses and messages that several commands share. */
namespace owbctl {

/** owbctl itself failed. */
constexpr int exitFailed = 1;
constexpr int exitUsage = 2;

/** Exit status for a status of the library: 0 for OWB_DONE, else the library's number plus 10. */
int exitStatus(long status);

/** Reports a failed read on standard error. */
void reportFailure(const agent::Group& group);

/** Says on standard error what finds out more. For failures of the connection, where the doctor does. */
void hintAtDoctor();

/** Says on standard error how to find the object manager's reason. */
void hintAtTrace();

} // namespace owbctl
#endif
