#include "doctor/Users.hpp"

#include <filesystem>
#include <pwd.h>
#include <sys/stat.h>

namespace owbctl {

std::string userName(uid_t user) {
    const passwd* const entry = ::getpwuid(user);
    return entry == nullptr ? "user " + std::to_string(user) : entry->pw_name;
}

bool anyoneMayWriteBeside(const std::string& path) {
    const std::string folder = std::filesystem::path(path).parent_path().string();
    struct stat status {};
    return ::stat(folder.empty() ? "." : folder.c_str(), &status) == 0 && (status.st_mode & S_IWOTH) != 0;
}

} // namespace owbctl
