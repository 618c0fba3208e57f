#include "state/DefaultPath.hpp"

#include <cstdlib>
#include <pwd.h>
#include <unistd.h>

namespace cimom {
namespace {

std::string environment(const char* name) {
    const char* const value = std::getenv(name);
    return value ? value : "";
}

std::string home() {
    std::string wanted = environment("HOME");
    if (!wanted.empty())
        return wanted;
    const passwd* const user = ::getpwuid(::geteuid());
    return user && user->pw_dir ? user->pw_dir : "";
}

std::string stateFolder() {
    if (::geteuid() == 0)
        return "/var/lib";
    std::string wanted = environment("XDG_STATE_HOME");
    if (!wanted.empty() && wanted.front() == '/') // a relative one is to be ignored
        return wanted;
    const std::string folder = home();
    return folder.empty() ? folder : folder + "/.local/state";
}

} // namespace

std::string defaultStatePath() {
    const std::string folder = stateFolder();
    return folder.empty() ? folder : folder + "/owb/state.json";
}

} // namespace cimom
