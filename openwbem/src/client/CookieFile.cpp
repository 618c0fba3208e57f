#include "client/CookieFile.hpp"

#include "OW_HTTPException.hpp"
#include "client/Descriptor.hpp"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>

namespace OpenWBEM {
namespace {

// Digits of a cookie. It is the decimal texts of four or five 32-bit numbers run together.
const std::size_t longestCookie = 64;

[[noreturn]] void throwUnreadable(int error) {
    const std::string reason = std::to_string(error) + "(" + std::strerror(error) + ")";
    OW_THROW(HTTPException, ("Unable to open local authentication file: " + reason).c_str());
}

[[noreturn]] void throwRefused(const std::string& path, const char* reason) {
    OW_THROW(HTTPException, ("Refused local authentication file " + path + ": " + reason).c_str());
}

void checkFile(const Descriptor& file, const std::string& path) {
    struct stat status {};
    if (::fstat(file.number(), &status) != 0)
        throwUnreadable(errno);
    if (!S_ISREG(status.st_mode))
        throwRefused(path, "it is not a regular file");
    if (status.st_uid != ::geteuid())
        throwRefused(path, "it belongs to another user");
    if ((status.st_mode & (S_IRWXG | S_IRWXO)) != 0)
        throwRefused(path, "it is open to other users");
    // The kernel's own files say that they are empty, and reading some of them changes something (proc(5)).
    if (status.st_size < 1 || status.st_size > static_cast<off_t>(longestCookie) + 1)
        throwRefused(path, "it holds more or other than one number");
}

// Up to size bytes from the start of a file.
std::string readStart(const Descriptor& file, std::size_t size) {
    std::string content(size, '\0');
    std::size_t length = 0;
    while (length < size) {
        const ssize_t n = ::read(file.number(), &content[length], size - length);
        if (n < 0 && errno != EINTR)
            throwUnreadable(errno);
        if (n == 0)
            break;
        length += n > 0 ? static_cast<std::size_t>(n) : 0;
    }
    content.resize(length);
    return content;
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

} // namespace

std::string readCookie(const std::string& path) {
    if (path.empty() || path.front() != '/')
        throwRefused(path, "its path is not absolute");
    // What the path leads to is looked at before it is opened for reading, which may have effects on a
    // device.
    const Descriptor found(::open(path.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC));
    if (!found.isOpen())
        throwUnreadable(errno);
    checkFile(found, path);
    const std::string same = "/proc/self/fd/" + std::to_string(found.number());
    const Descriptor file(::open(same.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (!file.isOpen())
        throwUnreadable(errno);

    std::string cookie = readStart(file, longestCookie + 2); // one for the line end, one too many
    if (!cookie.empty() && cookie.back() == '\n')
        cookie.pop_back();
    const bool isCookie = !cookie.empty() && cookie.size() <= longestCookie &&
                          std::all_of(cookie.begin(), cookie.end(), isDigit);
    if (!isCookie)
        throwRefused(path, "it holds more or other than one number");
    return cookie;
}

} // namespace OpenWBEM
