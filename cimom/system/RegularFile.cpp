#include "system/RegularFile.hpp"

#include "util/Descriptor.hpp"

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

void writeAll(const util::Descriptor& file, std::string_view content, const std::string& path) {
    while (!content.empty()) {
        const ssize_t size = ::write(file.number(), content.data(), content.size());
        if (size >= 0)
            content.remove_prefix(static_cast<std::size_t>(size));
        else if (errno != EINTR)
            fail(path);
    }
}

void flush(const util::Descriptor& file, const std::string& path) {
    if (::fsync(file.number()) != 0)
        fail(path);
}

void makeLike(const util::Descriptor& file, const struct stat& other, const std::string& path) {
    const mode_t permissions = 0777;
    if (::fchown(file.number(), other.st_uid, other.st_gid) != 0 ||
        ::fchmod(file.number(), other.st_mode & permissions) != 0)
        fail(path);
}

/** Creates a file with a content; removes it again on failure. */
void writeNew(const std::string& path, const std::string& content, const struct stat* like) {
    const util::Descriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (!file.isOpen())
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

std::string directoryOf(const std::string& path) {
    const std::string directory = std::filesystem::path(path).parent_path().string();
    return directory.empty() ? "." : directory;
}

std::optional<RegularFile> readRegularFile(const std::string& path) {
    // O_NONBLOCK: opening a FIFO would wait for a writer.
    const util::Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file.isOpen() && errno == ENOENT)
        return std::nullopt;
    RegularFile result{};
    if (!file.isOpen() || ::fstat(file.number(), &result.status) != 0)
        fail(path);
    if (!S_ISREG(result.status.st_mode))
        throw std::runtime_error(path + ": not a regular file");
    if (!readAll(file, result.content))
        fail(path);
    return result;
}

void replaceRegularFile(const std::string& path, const std::string& content, const struct stat* like) {
    const std::string directory = directoryOf(path);
    const util::Descriptor names(::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!names.isOpen())
        fail(directory);
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
    flush(names, directory);
}

} // namespace cimom
