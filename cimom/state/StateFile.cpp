#include "state/StateFile.hpp"

#include "Descriptor.hpp"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <stdexcept>
#include <string_view>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace cimom {
namespace {

[[noreturn]] void fail(const std::string& path) {
    throw std::system_error(errno, std::generic_category(), path);
}

/** Folder that holds a file. */
std::string folderOf(const std::string& path) {
    const std::string folder = std::filesystem::path(path).parent_path().string();
    return folder.empty() ? "." : folder;
}

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

void writeAll(const Descriptor& file, std::string_view content, const std::string& path) {
    while (!content.empty()) {
        const ssize_t size = ::write(file.number(), content.data(), content.size());
        if (size >= 0)
            content.remove_prefix(static_cast<std::size_t>(size));
        else if (errno != EINTR)
            fail(path);
    }
}

void flush(const Descriptor& file, const std::string& path) {
    if (::fsync(file.number()) != 0)
        fail(path);
}

/** Makes a file that holds a content. None is left when that fails. */
void writeNew(const std::string& path, const std::string& content) {
    const Descriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (file.number() < 0)
        fail(path);
    try {
        writeAll(file, content, path);
        flush(file, path);
    } catch (const std::system_error&) {
        ::unlink(path.c_str());
        throw;
    }
}

} // namespace

StateFile::StateFile(const std::string& path)
    : m_path(std::filesystem::weakly_canonical(path).string())
    , m_lock(lockFor(m_path)) {}

std::optional<std::string> StateFile::read() const {
    const Descriptor file(::open(m_path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (file.number() < 0 && errno == ENOENT)
        return std::nullopt;
    struct stat status;
    if (file.number() < 0 || ::fstat(file.number(), &status) != 0)
        fail(m_path);
    if (!S_ISREG(status.st_mode))
        throw std::runtime_error(m_path + ": not a regular file");
    std::string content;
    if (!readAll(file, content))
        fail(m_path);
    return content;
}

void StateFile::replace(const std::string& content) const {
    if (!m_lock.isHeld())
        throw std::system_error(ENOENT, std::generic_category(), m_path + ".lock");
    const std::string folder = folderOf(m_path);
    const Descriptor names(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (names.number() < 0)
        fail(folder);
    const std::string unfinished = m_path + ".new"; // of this process alone, by the lock
    if (::unlink(unfinished.c_str()) != 0 && errno != ENOENT)
        fail(unfinished);
    writeNew(unfinished, content);
    if (::rename(unfinished.c_str(), m_path.c_str()) != 0)
        fail(m_path);
    flush(names, folder);
}

} // namespace cimom
