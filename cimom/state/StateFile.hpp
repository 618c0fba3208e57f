#ifndef CIMOM_STATE_STATE_FILE_HPP_INCLUDED
#define CIMOM_STATE_STATE_FILE_HPP_INCLUDED
#include "system/LockFile.hpp"

#include <optional>
#include <string>

namespace cimom {

/**
 * A file whose content is replaced as a whole: whatever happens to the process or the machine, it holds what
 * was written last or what was written before that. Belongs to one process at a time, by the lock file
 * `<path>.lock`.
 */
class StateFile {
public:
    /**
     * Takes the file, which need not exist, or the one that a link leads to, and makes the folders on the
     * way. Throws std::runtime_error that says `<path>: <why>`.
     */
    explicit StateFile(const std::string& path);

    const std::string& path() const { return m_path; }
    /** The content; nothing when there is no file. Throws std::runtime_error that says `<path>: <why>` when
     * it cannot be read, or is no regular file. */
    std::optional<std::string> read() const;
    /**
     * Replaces the content, readable for the owner alone. When this returns, the new content is on the disk.
     * Throws std::system_error; the content is then the old one, or, when the disk failed at the very end,
     * the new. So it does when the lock file is gone, and with it the certainty that nobody else writes.
     */
    void replace(const std::string& content) const;

private:
    std::string m_path;
    LockFile m_lock;
};

} // namespace cimom
#endif
