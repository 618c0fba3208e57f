#ifndef CIMOM_HOST_TCP_CONNECTIONS_HPP_INCLUDED
#define CIMOM_HOST_TCP_CONNECTIONS_HPP_INCLUDED
#include "OW_Types.hpp"
#include "host/Host.hpp"

#include <string>
#include <vector>

namespace cimom {

/** One end of a TCP connection. */
struct TCPAddress {
    /** In the form of inet_ntop(3). */
    std::string address;
    OpenWBEM::UInt16 port;
};

/** A TCP connection, or a listener, of this host. */
struct TCPConnection {
    /**
     * Identifies the connection among all others: `local:port-remote:port`, IPv6 addresses in brackets.
     * Sockets that share both ends, as listeners with SO_REUSEPORT do, have `#inode` added.
     */
    std::string name;
    /** tcpConnectionState of RFC 4022. */
    OpenWBEM::UInt16 state;
    TCPAddress local;
    TCPAddress remote;
};

/** The connections of /proc/net/tcp, then those of /proc/net/tcp6, proc(5). Odd lines are left out. */
std::vector<TCPConnection> tcpConnections(const Host& host);

} // namespace cimom
#endif
