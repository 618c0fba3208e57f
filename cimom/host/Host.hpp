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

/** What differs when a file has been written to, or replaced by another. */
struct FileVersion {
    std::timespec modified;
    off_t size;
    ino_t inode;

    bool operator==(const FileVersion& other) const;
};

/**
 * The host whose data is served, as its files tell it: /proc, /sys, /etc, /run, /dev and where file systems
 * are mounted, below a root folder. All paths given are absolute, as the host itself sees them. Symbolic
 * links are followed by the kernel, so an absolute one leaves the root. What cannot be read is absent, not
 * an error: it may be gone the next moment. Only when this process or the system is out of descriptors or
 * memory, so that nobody knows what is there, the functions throw std::system_error.
 */
class Host {
public:
    /** @param root "/" for the host that this process runs on */
    explicit Host(std::string root);

    /** Where a file is for this process. */
    std::string realPath(const std::string& path) const { return m_root + path; }

    /** The whole content of a file. */
    std::optional<std::string> readFile(const std::string& path) const;
    /** The content of a file that holds one line, without the blanks around it; absent when that is empty. */
    std::optional<std::string> readLine(const std::string& path) const;
    /** The content of a file that holds one decimal number. */
    template <class T>
    std::optional<T> readNumber(const std::string& path) const {
        const std::optional<std::string> line = readLine(path);
        return line ? number<T>(*line) : std::nullopt;
    }
    /** The content of a file that holds one hexadecimal number behind "0x". */
    template <class T>
    std::optional<T> readHexadecimal(const std::string& path) const {
        const std::optional<std::string> line = readLine(path);
        if (!line || line->compare(0, 2, "0x") != 0)
            return std::nullopt;
        return number<T>(std::string_view(*line).substr(2), 16);
    }
    /** Names in a folder, without "." and "..", in no order. */
    std::optional<std::vector<std::string>> listDirectory(const std::string& path) const;
    /** What a file, or what a link leads to, is at present. */
    std::optional<FileVersion> fileVersion(const std::string& path) const;
    /** When a file, or what a link leads to, was last modified. */
    std::optional<std::timespec> modificationTime(const std::string& path) const;
    /** What a symbolic link leads to, as it says itself. */
    std::optional<std::string> readLink(const std::string& path) const;
    /** Sizes of the file system that holds a file, statvfs(3). Waits for the server of a remote one. */
    std::optional<struct statvfs> fileSystemStatus(const std::string& path) const;

    /** Name of the host, proc(5): /proc/sys/kernel/hostname. */
    std::optional<std::string> name() const;

private:
    std::string m_root; // without a slash at its end
};

} // namespace cimom
#endif
