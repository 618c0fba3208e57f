#include "doctor/SocketCheck.hpp"

#include "doctor/Users.hpp"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace owbctl {
namespace {

using Result = Check::Result;

constexpr const char* name = "socket";

/** A descriptor that is closed at the end. */
class Socket {
public:
    Socket()
        : m_descriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {}
    ~Socket() {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;

    /** 0, or the number of the error. */
    int connectTo(const std::string& path) const {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        path.copy(address.sun_path, sizeof address.sun_path - 1);
        return ::connect(m_descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0
                   ? 0
                   : errno;
    }
    ucred peer() const {
        ucred credentials{};
        socklen_t size = sizeof credentials;
        ::getsockopt(m_descriptor, SOL_SOCKET, SO_PEERCRED, &credentials, &size);
        return credentials;
    }

private:
    const int m_descriptor;
};

std::string programOf(pid_t process) {
    std::string command;
    std::getline(std::ifstream("/proc/" + std::to_string(process) + "/comm"), command);
    return command.empty() ? std::string() : " (" + command + ")";
}

Check refused(const std::string& path, int error, uid_t owner) {
    const std::string finding = path + ", of " + userName(owner) + ": " + std::strerror(error);
    const std::string remove = "; remove the socket first, as root or " + userName(owner);
    if (error == ECONNREFUSED)
        return {Result::fail, name, finding + ": nobody listens",
                "The object manager has ended and left its socket behind: start it again" +
                    (owner == ::geteuid() || ::geteuid() == 0 ? "" : remove)};
    if (error == EAGAIN)
        return {Result::fail, name, finding + ": too many wait to be served",
                "The object manager is busy or stuck: see its log, or start it again"};
    if (error == EACCES || error == EPERM)
        return {Result::fail, name, finding,
                "Run this as a user who may use the socket, or have its mode changed"};
    return {Result::fail, name, finding, {}};
}

Check served(const std::string& path, uid_t owner, const ucred& peer) {
    const std::string finding = path + ", of " + userName(owner) + ", served by process " +
                                std::to_string(peer.pid) + programOf(peer.pid) + " of " + userName(peer.uid);
    if (peer.uid == 0 || peer.uid == ::geteuid() || !anyoneMayWriteBeside(path))
        return {Result::ok, name, finding, {}};
    return {Result::warn, name, finding,
            "Anyone may put a socket into this folder before the object manager does: make sure that " +
                userName(peer.uid) +
                " is meant to serve it, or move the socket to a folder of the manager's own"};
}

} // namespace

Check checkSocket(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0)
        return {Result::fail, name, path + ": " + std::strerror(errno),
                errno == EACCES
                    ? "Run this as a user who may enter the folder"
                    : "Start the object manager, or name the socket of a running one with --url or OWB_URL"};
    if (!S_ISSOCK(status.st_mode))
        return {Result::fail, name, path + ": is there, but is no socket",
                "See whether the URL names the right path"};
    const Socket socket;
    const int error = socket.connectTo(path);
    return error != 0 ? refused(path, error, status.st_uid) : served(path, status.st_uid, socket.peer());
}

} // namespace owbctl
