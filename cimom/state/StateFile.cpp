#include "state/StateFile.hpp"

#include "Descriptor.hpp"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <unistd.h>
#include <utility>

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

} // namespace

StateFile::StateFile(std::string path)
    : m_path(std::move(path))
    , m_lock(lockFor(m_path)) {}

std::optional<std::string> StateFile::read() const {
    const Descriptor file(::open(m_path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (file.number() < 0 && errno == ENOENT)
        return std::nullopt;
    std::string content;
    if (file.number() < 0 || !readAll(file, content))
        fail(m_path);
    return content;
}

void StateFile::replace(const std::string& content) const {
    const std::string unfinished = m_path + ".new"; // of this process alone, by the lock
    {
        const Descriptor file(
            ::open(unfinished.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, 0600));
        if (file.number() < 0)
            fail(unfinished);
        writeAll(file, content, unfinished);
        flush(file, unfinished);
    }
    if (::rename(unfinished.c_str(), m_path.c_str()) != 0)
        fail(m_path);
    const std::string folder = folderOf(m_path);
    const Descriptor names(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (names.number() < 0)
        fail(folder);
    flush(names, folder);
}

} // namespace cimom
