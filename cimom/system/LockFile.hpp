#ifndef CIMOM_SYSTEM_LOCK_FILE_HPP_INCLUDED
#define CIMOM_SYSTEM_LOCK_FILE_HPP_INCLUDED
#include <string>

namespace cimom {

/** A file that one process at a time holds locked; removed when it lets go, unless another has taken its
 * place. */
class LockFile {
public:
    /** Throws std::system_error; std::errc::operation_would_block when another process holds the lock. */
    explicit LockFile(std::string path);
    ~LockFile();
    /** Whether the file is still there: who removes it, or its folder, lets another process in. */
    bool isHeld() const;
    LockFile(const LockFile&) = delete;
    LockFile& operator=(const LockFile&) = delete;

private:
    std::string m_path;
    int m_descriptor;
};

} // namespace cimom
#endif
