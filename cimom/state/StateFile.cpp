#include "state/StateFile.hpp"

#include "system/RegularFile.hpp"

#include <cerrno>
#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace cimom {
namespace {

LockFile lockFor(const std::string& path) {
    std::error_code error;
    std::filesystem::create_directories(folderOf(path), error);
    if (error)
        throw std::system_error(error, folderOf(path));
    try {
        return LockFile(path + ".lock");
    } catch (const std::system_error& e) {
        if (e.code() == std::errc::operation_would_block)
            throw std::runtime_error(path + ": another object manager keeps its values there");
        throw;
    }
}

} // namespace

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
