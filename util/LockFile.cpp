#include "util/LockFile.hpp"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace util {
namespace {

[[noreturn]] void fail(const std::string& path) {
    throw std::system_error(errno, std::generic_category(), path);
}

/** Whether a path still names an open file. The lock of a file that was removed excludes no other process. */
bool isNamed(int descriptor, const std::string& path) {
    struct stat opened;
    struct stat named;
    return ::fstat(descriptor, &opened) == 0 && ::lstat(path.c_str(), &named) == 0 &&
           opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}

/** Whether fstat(2) works: it fails for a file whose time this program cannot represent. */
bool hasStatus(int descriptor) {
    struct stat opened;
    return ::fstat(descriptor, &opened) == 0;
}

int openLocked(const std::string& path) {
    for (;;) {
        Descriptor file(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
        if (!file.isOpen() || ::flock(file.number(), LOCK_EX | LOCK_NB) != 0)
            fail(path);
        if (isNamed(file.number(), path))
            return file.release();
        if (!hasStatus(file.number()))
            fail(path);
    }
}

} // namespace

LockFile::LockFile(std::string path)
    : m_path(std::move(path))
    , m_file(openLocked(m_path)) {}

LockFile::~LockFile() {
    if (isHeld())
        ::unlink(m_path.c_str());
}

bool LockFile::isHeld() const {
    return isNamed(m_file.number(), m_path);
}

} // namespace util
