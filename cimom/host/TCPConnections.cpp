#include "host/TCPConnections.hpp"

#include <arpa/inet.h>
#include <map>
#include <set>

namespace cimom {

using namespace OpenWBEM;

namespace {

struct Socket {
    TCPConnection connection;
    UInt64 inode; // 0 when the connection belongs to no process any more, or to none yet
};

/** RFC 4022, tcpConnectionState, for a state of the kernel (enumeration in linux/tcp.h); absent for others.
 */
std::optional<UInt16> rfcState(unsigned kernelState) {
    static const UInt16 states[] = {
        5,  // established
        3,  // synSent
        4,  // synReceived
        6,  // finWait1
        7,  // finWait2
        11, // timeWait
        1,  // closed
        8,  // closeWait
        9,  // lastAck
        2,  // listen
        10, // closing
        4,  // synReceived, before it has a socket of its own
    };
    const std::size_t index = kernelState - 1U;
    return index < sizeof states / sizeof *states ? std::optional<UInt16>(states[index]) : std::nullopt;
}

/** Reads "<address>:<port>". The address is words of eight digits whose bytes in memory are in network order.
 */
std::optional<TCPAddress> parseAddress(std::string_view text) {
    const std::size_t digits = text.find(':');
    if (digits != 8 && digits != 32)
        return std::nullopt;
    UInt32 network[4];
    for (std::size_t i = 0; i < digits / 8; ++i) {
        const std::optional<UInt32> word = number<UInt32>(text.substr(8 * i, 8), 16);
        if (!word)
            return std::nullopt;
        network[i] = *word;
    }
    const std::optional<UInt16> port = number<UInt16>(text.substr(digits + 1), 16);
    char address[INET6_ADDRSTRLEN];
    if (!port || !::inet_ntop(digits == 8 ? AF_INET : AF_INET6, network, address, sizeof address))
        return std::nullopt;
    return TCPAddress{address, *port};
}

std::string endName(const TCPAddress& end) {
    const bool isIPv6 = end.address.find(':') != std::string::npos;
    return (isIPv6 ? "[" + end.address + "]" : end.address) + ":" + std::to_string(end.port);
}

std::optional<Socket> parseSocket(std::string_view line) {
    enum Column { localAddress = 1, remoteAddress = 2, connectionState = 3, inode = 9 };
    const std::vector<std::string_view> fields = words(line);
    if (fields.size() <= inode)
        return std::nullopt;
    const std::optional<TCPAddress> local = parseAddress(fields[localAddress]);
    const std::optional<TCPAddress> remote = parseAddress(fields[remoteAddress]);
    const std::optional<UInt16> state = rfcState(number<unsigned>(fields[connectionState], 16).value_or(0));
    const std::optional<UInt64> owner = number<UInt64>(fields[inode]);
    if (!local || !remote || !state || !owner)
        return std::nullopt;
    return Socket{{endName(*local) + "-" + endName(*remote), *state, *local, *remote}, *owner};
}

std::vector<Socket> readSockets(const Host& host) {
    std::vector<Socket> sockets;
    for (const char* const path : {"/proc/net/tcp", "/proc/net/tcp6"}) {
        const std::string content = host.readFile(path).value_or("");
        for (const std::string_view line : lines(content)) {
            if (std::optional<Socket> socket = parseSocket(line))
                sockets.push_back(std::move(*socket));
        }
    }
    return sockets;
}

using InodesByName = std::map<std::string, std::set<UInt64>>;

/** The sockets behind each name; a connection that belongs to no socket has no entry. */
InodesByName inodesByName(const std::vector<Socket>& sockets) {
    InodesByName inodes;
    for (const Socket& socket : sockets) {
        if (socket.inode != 0)
            inodes[socket.connection.name].insert(socket.inode);
    }
    return inodes;
}

} // namespace

std::vector<TCPConnection> tcpConnections(const Host& host) {
    std::vector<Socket> sockets = readSockets(host);
    const InodesByName inodes = inodesByName(sockets);

    std::vector<TCPConnection> connections;
    std::set<std::string> told;
    for (Socket& socket : sockets) {
        TCPConnection& connection = socket.connection;
        const auto sharing = inodes.find(connection.name);
        // The kernel may list a connection twice when it changes its state during the reading, and one of
        // the two without its socket.
        if (sharing != inodes.end() && socket.inode == 0)
            continue;
        if (sharing != inodes.end() && sharing->second.size() > 1)
            connection.name += "#" + std::to_string(socket.inode);
        if (told.insert(connection.name).second)
            connections.push_back(std::move(connection));
    }
    return connections;
}

} // namespace cimom
