#ifndef CIMOM_HOST_HOST_HPP_INCLUDED
#define CIMOM_HOST_HOST_HPP_INCLUDED
#include "system/Text.hpp"

#include <ctime>
#include <optional>
#include <string>
#include <sys/statvfs.h>
#include <sys/types.h>
#include <vector>

namespace cimom {

/** Differs between two reads if the file was modified or replaced. */
struct FileVersion {
    std::timespec modified;
    off_t size;
    ino_t inode;

    bool operator==(const FileVersion& other) const;
};

/**
 * The files of the host whose data is served: /proc, /sys, /etc, /run, /dev and mount points, below a root
 * directory. Paths are absolute, as the host sees them. The kernel follows symbolic links, so an absolute
 * link leaves the root. A file that cannot be read is absent, not an error: files of /proc come and go. If
 * this process or the system is out of descriptors or memory, the functions throw std::system_error.
 */
class Host {
public:
    /** @param root "/" for the host that this process runs on */
    explicit Host(std::string root);

    /** The path of a file for this process. */
    std::string realPath(const std::string& path) const { return m_root + path; }

    /** The whole content of a file. */
    std::optional<std::string> readFile(const std::string& path) const;
    /** The content of a file of one line, without blanks around it; absent if empty. */
    std::optional<std::string> readLine(const std::string& path) const;
    /** The content of a file of one decimal number. */
    template <class T>
    std::optional<T> readNumber(const std::string& path) const {
        const std::optional<std::string> line = readLine(path);
        return line ? number<T>(*line) : std::nullopt;
    }
    /** The content of a file of one hexadecimal number after "0x". */
    template <class T>
    std::optional<T> readHexadecimal(const std::string& path) const {
        const std::optional<std::string> line = readLine(path);
        if (!line || line->compare(0, 2, "0x") != 0)
            return std::nullopt;
        return number<T>(std::string_view(*line).substr(2), 16);
    }
    /** The names in a directory, except "." and "..", in any order. */
    std::optional<std::vector<std::string>> listDirectory(const std::string& path) const;
    /** The present version of a file or of the target of a link. */
    std::optional<FileVersion> fileVersion(const std::string& path) const;
    /** The time of the last modification of a file or of the target of a link. */
    std::optional<std::timespec> modificationTime(const std::string& path) const;
    /** The target of a symbolic link, not resolved. */
    std::optional<std::string> readLink(const std::string& path) const;
    /** The sizes of the file system that holds a file, statvfs(3). Waits for the server of a remote one. */
    std::optional<struct statvfs> fileSystemStatus(const std::string& path) const;

    /** Name of the host, proc(5): /proc/sys/kernel/hostname. */
    std::optional<std::string> name() const;

private:
    std::string m_root; // without a slash at its end
};

} // namespace cimom
#endif
