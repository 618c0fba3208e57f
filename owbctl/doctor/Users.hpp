#ifndef OWBCTL_DOCTOR_USERS_HPP
#define OWBCTL_DOCTOR_USERS_HPP

#include <string>
#include <sys/types.h>

namespace owbctl {

/** Name of a user, or "user 1234" for one without. */
std::string userName(uid_t user);

/** Whether every user may make files in the folder that a path lies in. */
bool anyoneMayWriteBeside(const std::string& path);

} // namespace owbctl
#endif
