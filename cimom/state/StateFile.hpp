#ifndef CIMOM_STATE_STATE_FILE_HPP_INCLUDED
#define CIMOM_STATE_STATE_FILE_HPP_INCLUDED
#include "util/LockFile.hpp"

#include <optional>
#include <string>

namespace cimom {

/**
 * The default path of the state file: /var/lib/owb/state.json for root, owb/state.json in the state directory
 * of any other user (XDG Base Directory Specification). Empty for a user without a home directory.
 */
std::string defaultStatePath();

/**
 * A file whose content is replaced as a whole: if the process or the machine fails, it holds the content
 * written last or the one before. The lock file `<path>.lock` reserves it for one process.
 */
class StateFile {
public:
    /**
     * Locks the file, which need not exist; of a symbolic link the file that it leads to. Creates the
     * directories of the path. Throws std::runtime_error `<path>: <why>`.
     */
    explicit StateFile(const std::string& path);

    const std::string& path() const { return m_path; }
    /**
     * The content; nothing if the file does not exist. Throws std::runtime_error `<path>: <why>` if it cannot
     * be read, or is not a regular file.
     */
    std::optional<std::string> read() const;
    /**
     * Replaces the content, readable for the owner only. When this returns, the new content is on the disk.
     *
     * Throws std::system_error. The content is then the old one; the new one only if the last flush has
     * failed. Also throws if the lock file is gone: another process may write the file then.
     */
    void replace(const std::string& content) const;

private:
    std::string m_path;
    util::LockFile m_lock;
};

} // namespace cimom
#endif
