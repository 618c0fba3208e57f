#include "doctor/MasterCheck.hpp"

#include "util/Descriptor.hpp"

#include <cerrno>
#include <cstring>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace owbctl {
namespace {

using Result = Check::Result;

constexpr const char* name = "SNMP";
constexpr const char* program = "/usr/sbin/owb-agentx";
constexpr const char* settings = "/etc/snmp/snmpd.conf.d/owb.conf";
/** net-snmp's own; owb-agentx connects there by default. */
constexpr const char* socketOfMaster = "/var/agentx/master";

bool exists(const std::string& path) {
    return ::access(path.c_str(), F_OK) == 0;
}

/** Connects a socket; returns 0 or the number of the error. */
int connectTo(const std::string& path) {
    sockaddr_un address{};
    if (path.size() >= sizeof address.sun_path)
        return ENAMETOOLONG;
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    const util::Descriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    const int result =
        ::connect(socket.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address);
    return result == 0 ? 0 : errno;
}

std::string adviceOn(int error) {
    switch (error) {
    case ENOENT:
    case ECONNREFUSED:
        return "The SNMP master does not run, or without AgentX: systemctl restart snmpd";
    case EACCES:
    case EPERM:
        return "Only users with access to the socket can check it: run as root or owb-agentx. If owb-agentx "
               "fails, "
               "restart snmpd: it sets the permissions when it starts";
    default:
        return {};
    }
}

/** A missing master is no failure of the object manager, so the worst result is a warning. */
Check failed(const std::string& path, int error) {
    return {Result::warn, name, path + ": " + std::strerror(error), adviceOn(error)};
}

} // namespace

std::optional<Check> checkMaster(const std::string& root) {
    if (!exists(root + program) && !exists(root + settings))
        return std::nullopt;
    const std::string path = root + socketOfMaster;
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0)
        return failed(path, errno);
    if (!S_ISSOCK(status.st_mode))
        return Check{Result::warn, name, path + ": not a socket", "Remove it and restart snmpd"};
    if (const int error = connectTo(path))
        return failed(path, error);
    return Check{
        Result::ok, name, path + ", of " + userName(status.st_uid) + ": the master accepts subagents", {}};
}

} // namespace owbctl
