#include "system/LockFile.hpp"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace cimom {
namespace {

[[noreturn]] void fail(const std::string& path) {
    throw std::system_error(errno, std::generic_category(), path);
}

int openLocked(const std::string& path) {
    const int descriptor = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (descriptor < 0)
        fail(path);
    if (::flock(descriptor, LOCK_EX | LOCK_NB) == 0)
        return descriptor;
    const int error = errno;
    ::close(descriptor);
    errno = error;
    fail(path);
}

/** False when the file was removed after it had been opened: its lock then keeps nobody out. */
bool isStill(int descriptor, const std::string& path) {
    struct stat opened;
    struct stat named;
    return ::fstat(descriptor, &opened) == 0 && ::lstat(path.c_str(), &named) == 0 &&
           opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}

/** Whether nobody can tell, as of a file whose time is beyond what this program knows. */
bool isUnknown(int descriptor) {
    struct stat opened;
    return ::fstat(descriptor, &opened) != 0;
}

} // namespace

LockFile::LockFile(std::string path)
    : m_path(std::move(path))
    , m_descriptor(openLocked(m_path)) {
    while (!isStill(m_descriptor, m_path)) {
        if (isUnknown(m_descriptor)) {
            const int error = errno;
            ::close(m_descriptor);
            errno = error;
            fail(m_path);
        }
        ::close(m_descriptor);
        m_descriptor = openLocked(m_path);
    }
}

LockFile::~LockFile() {
    if (isHeld())
        ::unlink(m_path.c_str());
    ::close(m_descriptor);
}

bool LockFile::isHeld() const {
    return isStill(m_descriptor, m_path);
}

} // namespace cimom
