#ifndef OWBCTL_COMMANDS_REPORT_HPP
#define OWBCTL_COMMANDS_REPORT_HPP

#include "agent/Group.hpp"

#include <string>

namespace owbctl {

/** Says on standard error that a read failed. `url` is for people to read. */
void reportFailure(const Group& group, const std::string& url);

/** Says on standard error how to find out why the object manager could not be read. */
void hintAtDoctor();

/** Says on standard error how to find the cause of what the library does not tell. */
void hintAtTrace();

} // namespace owbctl
#endif
