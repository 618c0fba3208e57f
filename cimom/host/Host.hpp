#ifndef CIMOM_HOST_HOST_HPP_INCLUDED
#define CIMOM_HOST_HOST_HPP_INCLUDED
#include "Text.hpp"

#include <ctime>
#include <optional>
#include <string>
#include <vector>

namespace cimom {

/**
 * The host whose data is served, as its files tell it: /proc, /sys, /etc and /run below a root folder. All
 * paths given are absolute, as the host itself sees them. Symbolic links are followed by the kernel, so an
 * absolute one leaves the root. What cannot be read is absent, not an error: it may be gone the next moment.
 * Only when this process or the system is out of descriptors or memory, so that nobody knows what is there,
 * the functions throw std::system_error.
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
    /** Names in a folder, without "." and "..", in no order. */
    std::optional<std::vector<std::string>> listDirectory(const std::string& path) const;
    /** When a file, or what a link leads to, was last modified. */
    std::optional<std::timespec> modificationTime(const std::string& path) const;

    /** Name of the host, proc(5): /proc/sys/kernel/hostname. */
    std::optional<std::string> name() const;

private:
    std::string m_root; // without a slash at its end
};

} // namespace cimom
#endif
