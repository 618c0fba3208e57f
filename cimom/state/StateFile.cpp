#include "state/StateFile.hpp"

#include "system/RegularFile.hpp"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <pwd.h>
#include <stdexcept>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace cimom {
namespace {

std::string environment(const char* name) {
    const char* const value = std::getenv(name);
    return value ? value : "";
}

std::string homeDirectory() {
    std::string home = environment("HOME");
    if (!home.empty())
        return home;
    const passwd* const user = ::getpwuid(::geteuid());
    return user && user->pw_dir ? user->pw_dir : "";
}

/** Empty for a user without a home directory. */
std::string stateDirectory() {
    if (::geteuid() == 0)
        return "/var/lib";
    std::string directory = environment("XDG_STATE_HOME");
    if (!directory.empty() && directory.front() == '/') // XDG: a relative path is invalid, and ignored
        return directory;
    const std::string home = homeDirectory();
    return home.empty() ? home : home + "/.local/state";
}

util::LockFile lockFor(const std::string& path) {
    std::error_code error;
    std::filesystem::create_directories(directoryOf(path), error);
    if (error)
        throw std::system_error(error, directoryOf(path));
    try {
        return util::LockFile(path + ".lock");
    } catch (const std::system_error& e) {
        if (e.code() == std::errc::operation_would_block)
            throw std::runtime_error(path + ": another object manager uses this file");
        throw;
    }
}

} // namespace

std::string defaultStatePath() {
    const std::string directory = stateDirectory();
    return directory.empty() ? directory : directory + "/owb/state.json";
}

StateFile::StateFile(const std::string& path)
    : m_path(std::filesystem::weakly_canonical(path).string())
    , m_lock(lockFor(m_path)) {}

std::optional<std::string> StateFile::read() const {
    std::optional<RegularFile> file = readRegularFile(m_path);
    return file ? std::optional<std::string>(std::move(file->content)) : std::nullopt;
}

void StateFile::replace(const std::string& content) const {
    if (!m_lock.isHeld())
        throw std::system_error(ENOENT, std::generic_category(), m_path + ".lock");
    replaceRegularFile(m_path, content);
}

} // namespace cimom
