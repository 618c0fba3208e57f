#ifndef UTIL_LOCK_FILE_HPP_INCLUDED
#define UTIL_LOCK_FILE_HPP_INCLUDED
#include "util/Descriptor.hpp"

#include <string>

namespace util {

/** A file that one process at a time holds locked. The destructor removes it, unless another file has its
 * name. */
class LockFile {
public:
    /**
     * Creates the file if it is missing, and locks it. Throws std::system_error;
     * std::errc::operation_would_block if another process holds the lock.
     */
    explicit LockFile(std::string path);
    ~LockFile();
    LockFile(const LockFile&) = delete;
    LockFile& operator=(const LockFile&) = delete;

    /** Whether the file still has its name. Once it or its directory is removed, another process can take the
     * lock. */
    bool isHeld() const;

private:
    std::string m_path;
    Descriptor m_file;
};

} // namespace util
#endif
