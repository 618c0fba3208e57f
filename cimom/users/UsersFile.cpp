#include "users/UsersFile.hpp"

#include "system/RegularFile.hpp"
#include "util/LockFile.hpp"

#include <cerrno>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <system_error>

namespace cimom {
namespace {

void checkAccess(mode_t mode, const std::string& path) {
    if ((mode & (S_IWGRP | S_IWOTH)) != 0)
        throw std::runtime_error(path + ": writable by group or others");
    if ((mode & S_IROTH) != 0)
        throw std::runtime_error(path + ": readable by others");
}

Users usersOf(const RegularFile& file, const std::string& path) {
    checkAccess(file.status.st_mode, path);
    try {
        return Users(file.content);
    } catch (const Users::Error& e) {
        throw std::runtime_error(path + ":" + std::to_string(e.line()) + ": " + e.what());
    }
}

util::LockFile lockFor(const std::string& path) {
    try {
        return util::LockFile(path + ".lock");
    } catch (const std::system_error& e) {
        if (e.code() == std::errc::operation_would_block)
            throw std::runtime_error(path + ": another process is changing it");
        throw;
    }
}

} // namespace

Users readUsers(const std::string& path) {
    const std::optional<RegularFile> file = readRegularFile(path);
    if (!file)
        throw std::system_error(ENOENT, std::generic_category(), path);
    return usersOf(*file, path);
}

void changeUsers(const std::string& path, const std::function<void(Users&)>& change) {
    // Replaces the file that a symbolic link leads to, not the link.
    const std::string real = std::filesystem::weakly_canonical(path).string();
    const util::LockFile lock = lockFor(real);
    const std::optional<RegularFile> file = readRegularFile(real);
    Users users = file ? usersOf(*file, real) : Users();
    change(users);
    replaceRegularFile(real, users.text(), file ? &file->status : nullptr);
}

} // namespace cimom
