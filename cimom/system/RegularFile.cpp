#include "system/RegularFile.hpp"

#include "system/Descriptor.hpp"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <unistd.h>

namespace cimom {
namespace {

[[noreturn]] void fail(const std::string& path) {
    throw std::system_error(errno, std::generic_category(), path);
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

void makeLike(const Descriptor& file, const struct stat& other, const std::string& path) {
    const mode_t permissions = 0777;
    if (::fchown(file.number(), other.st_uid, other.st_gid) != 0 ||
        ::fchmod(file.number(), other.st_mode & permissions) != 0)
        fail(path);
}

/** Makes a file that holds a content. None is left when that fails. */
void writeNew(const std::string& path, const std::string& content, const struct stat* like) {
    const Descriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (file.number() < 0)
        fail(path);
    try {
        if (like)
            makeLike(file, *like, path);
        writeAll(file, content, path);
        flush(file, path);
    } catch (const std::system_error&) {
        ::unlink(path.c_str());
        throw;
    }
}

} // namespace

std::string folderOf(const std::string& path) {
    const std::string folder = std::filesystem::path(path).parent_path().string();
    return folder.empty() ? "." : folder;
}

std::optional<RegularFile> readRegularFile(const std::string& path) {
    // Without waiting for one who writes to a pipe.
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (file.number() < 0 && errno == ENOENT)
        return std::nullopt;
    RegularFile result{};
    if (file.number() < 0 || ::fstat(file.number(), &result.status) != 0)
        fail(path);
    if (!S_ISREG(result.status.st_mode))
        throw std::runtime_error(path + ": not a regular file");
    if (!readAll(file, result.content))
        fail(path);
    return result;
}

void replaceRegularFile(const std::string& path, const std::string& content, const struct stat* like) {
    const std::string folder = folderOf(path);
    const Descriptor names(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (names.number() < 0)
        fail(folder);
    const std::string unfinished = path + ".new";
    if (::unlink(unfinished.c_str()) != 0 && errno != ENOENT)
        fail(unfinished);
    writeNew(unfinished, content, like);
    if (::rename(unfinished.c_str(), path.c_str()) != 0) {
        const int error = errno;
        ::unlink(unfinished.c_str());
        errno = error;
        fail(path);
    }
    flush(names, folder);
}

} // namespace cimom
