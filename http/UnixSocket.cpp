#include "http/UnixSocket.hpp"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <stdexcept>
#include <sys/socket.h>
#include <sys/un.h>
#include <system_error>
#include <unistd.h>

namespace http {
namespace {

[[noreturn]] void fail(const std::string& path, const std::string& why) {
    throw std::runtime_error(path + ": " + why);
}

[[noreturn]] void failInUse(const std::string& path) {
    fail(path, "another process listens on it");
}

/** Returns the path; throws if no socket can have it. */
const std::string& checked(const std::string& path) {
    const std::size_t maximum = sizeof(sockaddr_un::sun_path) - 1;
    if (path.empty())
        fail("socket", "the path is empty");
    if (path.size() > maximum)
        fail(path, "a socket's path has at most " + std::to_string(maximum) + " bytes");
    return path;
}

util::LockFile lockFor(const std::string& path) {
    try {
        return util::LockFile(path + ".lock");
    } catch (const std::system_error& e) {
        if (e.code() != std::errc::operation_would_block)
            throw;
        struct stat file;
        if (::lstat(path.c_str(), &file) != 0 && errno == ENOENT)
            fail(path, "no socket, but another process holds " + path + ".lock");
        failInUse(path);
    }
}

sockaddr_un addressOf(const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    return address;
}

int makeSocket(const std::string& path) {
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (descriptor < 0)
        fail(path, std::strerror(errno));
    return descriptor;
}

/** Connects to the socket at a path. Returns 0 or the error. */
int tryToConnect(const std::string& path) {
    const sockaddr_un address = addressOf(path);
    const util::Descriptor socket(makeSocket(path));
    const auto* const where = reinterpret_cast<const sockaddr*>(&address);
    return ::connect(socket.number(), where, sizeof address) == 0 ? 0 : errno;
}

/** Removes a socket on which no process listens. */
void removeStale(const std::string& path) {
    struct stat file;
    if (::lstat(path.c_str(), &file) != 0) {
        if (errno == ENOENT)
            return;
        fail(path, std::strerror(errno));
    }
    if (!S_ISSOCK(file.st_mode))
        fail(path, "exists and is not a socket");
    const int error = tryToConnect(path);
    if (error == 0 || error == EAGAIN) // EAGAIN: listen backlog full
        failInUse(path);
    if (error != ECONNREFUSED)
        fail(path, std::strerror(error));
    if (::unlink(path.c_str()) != 0)
        fail(path, std::strerror(errno));
}

/** Sets the mode between bind(2) and listen(2): clients can connect only after listen(2). */
int listenAt(const std::string& path, mode_t mode) {
    removeStale(path);
    const sockaddr_un address = addressOf(path);
    util::Descriptor socket(makeSocket(path));
    const auto* const where = reinterpret_cast<const sockaddr*>(&address);
    const bool isBound = ::bind(socket.number(), where, sizeof address) == 0;
    if (isBound && ::chmod(path.c_str(), mode) == 0 && ::listen(socket.number(), SOMAXCONN) == 0)
        return socket.release();
    const std::string why = std::strerror(errno);
    if (isBound)
        ::unlink(path.c_str());
    fail(path, why);
}

} // namespace

UnixSocket::UnixSocket(const std::string& path, mode_t mode)
    : m_path(checked(path))
    , m_lock(lockFor(m_path))
    , m_socket(listenAt(m_path, mode))
    , m_file() {
    ::lstat(m_path.c_str(), &m_file);
}

UnixSocket::~UnixSocket() {
    struct stat file;
    if (::lstat(m_path.c_str(), &file) == 0 && file.st_dev == m_file.st_dev && file.st_ino == m_file.st_ino)
        ::unlink(m_path.c_str());
}

int UnixSocket::duplicate() const {
    const int descriptor = ::fcntl(m_socket.number(), F_DUPFD_CLOEXEC, 0);
    if (descriptor < 0)
        fail(m_path, std::strerror(errno));
    return descriptor;
}

} // namespace http
