#include "system/LockFile.hpp"

#include "system/Descriptor.hpp"

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

int openLocked(const std::string& path) {
    for (;;) {
        Descriptor file(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
        if (file.number() < 0 || ::flock(file.number(), LOCK_EX | LOCK_NB) != 0)
            fail(path);
        if (isStill(file.number(), path))
            return file.release();
        if (isUnknown(file.number()))
            fail(path);
    }
}

} // namespace

LockFile::LockFile(std::string path)
    : m_path(std::move(path))
    , m_descriptor(openLocked(m_path)) {}

LockFile::~LockFile() {
    if (isHeld())
        ::unlink(m_path.c_str());
    ::close(m_descriptor);
}

bool LockFile::isHeld() const {
    return isStill(m_descriptor, m_path);
}

} // namespace cimom
