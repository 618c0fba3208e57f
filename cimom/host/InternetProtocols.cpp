#include "host/InternetProtocols.hpp"

#include <algorithm>
#include <arpa/inet.h>
#include <map>
#include <set>

namespace cimom {

using namespace OpenWBEM;

SnmpFile::SnmpFile(const Host& host) {
    const std::string content = host.readFile("/proc/net/snmp").value_or("");
    std::vector<std::string_view> columns;
    for (const std::string_view line : lines(content)) {
        const std::vector<std::string_view> fields = words(line);
        if (fields.empty() || columns.empty() || fields[0] != columns[0]) {
            columns = fields;
            continue;
        }
        for (std::size_t i = 1; i < std::min(columns.size(), fields.size()); ++i)
            m_values[std::string(columns[0]).append(columns[i])] = fields[i];
        columns.clear();
    }
}

namespace {

struct Socket {
    TCPConnection connection;
    UInt64 inode; // 0 if the connection does not belong to a process yet or any more
};

/** RFC 4022, tcpConnectionState, of a kernel state (linux/tcp.h); absent if the state is unknown. */
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
        4,  // synReceived, before the connection has a socket
    };
    const std::size_t index = kernelState - 1U;
    return index < sizeof states / sizeof *states ? std::optional<UInt16>(states[index]) : std::nullopt;
}

/** Reads "<address>:<port>". The address consists of hexadecimal 32-bit words in host byte order. */
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

/** The sockets of each name. A connection without a socket has no entry. */
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
    std::set<std::string> names;
    for (Socket& socket : sockets) {
        TCPConnection& connection = socket.connection;
        const auto sharing = inodes.find(connection.name);
        // A connection that changes its state during the read may be listed twice, once without its socket.
        if (sharing != inodes.end() && socket.inode == 0)
            continue;
        if (sharing != inodes.end() && sharing->second.size() > 1)
            connection.name += "#" + std::to_string(socket.inode);
        if (names.insert(connection.name).second)
            connections.push_back(std::move(connection));
    }
    return connections;
}

} // namespace cimom
