#include "doctor/SocketCheck.hpp"

#include "util/Descriptor.hpp"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace owbctl {
namespace {

using Result = Check::Result;

constexpr const char* name = "socket";

/** Connects a socket; returns 0 or the number of the error. */
int connectTo(const std::string& path, int descriptor) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    const int result = ::connect(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address);
    return result == 0 ? 0 : errno;
}

ucred peerOf(int descriptor) {
    ucred credentials{};
    socklen_t size = sizeof credentials;
    ::getsockopt(descriptor, SOL_SOCKET, SO_PEERCRED, &credentials, &size);
    return credentials;
}

/** Whether every user may create files in the directory of a path. */
bool isInSharedDirectory(const std::string& path) {
    const std::string directory = std::filesystem::path(path).parent_path().string();
    struct stat status {};
    return ::stat(directory.empty() ? "." : directory.c_str(), &status) == 0 &&
           (status.st_mode & S_IWOTH) != 0;
}

std::string programOf(pid_t process) {
    std::string command;
    std::getline(std::ifstream("/proc/" + std::to_string(process) + "/comm"), command);
    return command.empty() ? std::string() : " (" + command + ")";
}

Check unreachable(const std::string& path, int error, uid_t owner) {
    const std::string finding = path + ", of " + userName(owner) + ": " + std::strerror(error);
    const std::string remove = "; remove the socket first, as root or " + userName(owner);
    if (error == ECONNREFUSED)
        return {Result::fail, name, finding + ": no process listens",
                "The object manager has ended and its socket remains: restart it" +
                    (owner == ::geteuid() || ::geteuid() == 0 ? "" : remove)};
    if (error == EAGAIN)
        return {Result::fail, name, finding + ": listen backlog full",
                "The object manager is busy or stuck: read its log, or restart it"};
    if (error == EACCES || error == EPERM)
        return {Result::fail, name, finding, "Run as a user with access to the socket, or change its mode"};
    return {Result::fail, name, finding, {}};
}

Check served(const std::string& path, uid_t owner, const ucred& peer) {
    const std::string finding = path + ", of " + userName(owner) + ", served by process " +
                                std::to_string(peer.pid) + programOf(peer.pid) + " of " + userName(peer.uid);
    if (peer.uid == 0 || peer.uid == ::geteuid() || !isInSharedDirectory(path))
        return {Result::ok, name, finding, {}};
    return {
        Result::warn, name, finding,
        "Every user may create a socket in this directory before the object manager does: make sure that " +
            userName(peer.uid) +
            " is the right one, or move the socket to a directory that only the manager may write"};
}

} // namespace

Check checkSocket(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0)
        return {Result::fail, name, path + ": " + std::strerror(errno),
                errno == EACCES
                    ? "Run as a user with access to the directory"
                    : "Start the object manager, or set --url or OWB_URL to the socket of a running one"};
    if (!S_ISSOCK(status.st_mode))
        return {Result::fail, name, path + ": not a socket", "Check the path in the URL"};
    const util::Descriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    const int error = connectTo(path, socket.number());
    return error != 0 ? unreachable(path, error, status.st_uid)
                      : served(path, status.st_uid, peerOf(socket.number()));
}

} // namespace owbctl
