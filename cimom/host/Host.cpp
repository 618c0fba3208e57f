#include "host/Host.hpp"

#include "util/Ascii.hpp"
#include "util/Descriptor.hpp"

#include <cerrno>
#include <climits>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace cimom {
namespace {

struct CloseDirectory {
    void operator()(DIR* directory) const { ::closedir(directory); }
};

/** The result of a failed call. Throws std::system_error if errno leaves open whether the file exists. */
std::nullopt_t absent(const std::string& path) {
    if (errno == EMFILE || errno == ENFILE || errno == ENOMEM)
        throw std::system_error(errno, std::generic_category(), path);
    return std::nullopt;
}

std::string withoutSlashAtEnd(std::string path) {
    while (!path.empty() && path.back() == '/')
        path.pop_back();
    return path;
}

} // namespace

bool FileVersion::operator==(const FileVersion& other) const {
    return modified.tv_sec == other.modified.tv_sec && modified.tv_nsec == other.modified.tv_nsec &&
           size == other.size && inode == other.inode;
}

Host::Host(std::string root)
    : m_root(withoutSlashAtEnd(std::move(root))) {}

std::optional<std::string> Host::readFile(const std::string& path) const {
    // Non-blocking: a pipe in place of a file must not block the object manager.
    const util::Descriptor file(::open(realPath(path).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (file.number() < 0)
        return absent(path);
    std::string content;
    if (!readAll(file, content))
        return absent(path);
    return content;
}

std::optional<std::string> Host::readLine(const std::string& path) const {
    const std::optional<std::string> content = readFile(path);
    if (!content)
        return std::nullopt;
    const std::string_view line = ascii::trim(*content);
    return line.empty() ? std::nullopt : std::optional<std::string>(line);
}

std::optional<std::vector<std::string>> Host::listDirectory(const std::string& path) const {
    const std::unique_ptr<DIR, CloseDirectory> directory(::opendir(realPath(path).c_str()));
    if (!directory)
        return absent(path);
    std::vector<std::string> names;
    errno = 0; // only errno distinguishes the end of the directory from a failure
    while (const dirent* const entry = ::readdir(directory.get())) {
        std::string name = entry->d_name;
        if (name != "." && name != "..")
            names.push_back(std::move(name));
        errno = 0;
    }
    if (errno != 0)
        return absent(path);
    return names;
}

std::optional<FileVersion> Host::fileVersion(const std::string& path) const {
    struct stat status;
    if (::stat(realPath(path).c_str(), &status) != 0)
        return absent(path);
    return FileVersion{status.st_mtim, status.st_size, status.st_ino};
}

std::optional<std::timespec> Host::modificationTime(const std::string& path) const {
    const std::optional<FileVersion> version = fileVersion(path);
    return version ? std::optional<std::timespec>(version->modified) : std::nullopt;
}

std::optional<std::string> Host::readLink(const std::string& path) const {
    char target[PATH_MAX];
    const ssize_t size = ::readlink(realPath(path).c_str(), target, sizeof target);
    if (size < 0)
        return absent(path);
    return std::string(target, static_cast<std::size_t>(size));
}

std::optional<struct statvfs> Host::fileSystemStatus(const std::string& path) const {
    struct statvfs status;
    if (::statvfs(realPath(path).c_str(), &status) != 0)
        return absent(path);
    return status;
}

std::optional<std::string> Host::name() const {
    return readLine("/proc/sys/kernel/hostname");
}

} // namespace cimom
