#ifndef CIMOM_HOST_INTERNET_PROTOCOLS_HPP_INCLUDED
#define CIMOM_HOST_INTERNET_PROTOCOLS_HPP_INCLUDED
#include "OW_Types.hpp"
#include "host/Host.hpp"
#include "system/Text.hpp"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace cimom {

/**
 * /proc/net/snmp, proc(5). Each protocol has a line with column names and a line with values; both begin with
 * the name of the protocol and a colon. Columns are found by name, because they differ between kernels.
 */
class SnmpFile {
public:
    explicit SnmpFile(const Host& host);

    /** A value; absent if the file does not hold it or it does not fit in T. */
    template <class T>
    std::optional<T> get(const std::string& protocol, const std::string& column) const {
        const auto found = m_values.find(protocol + ":" + column);
        return found == m_values.end() ? std::nullopt : number<T>(found->second);
    }

private:
    std::map<std::string, std::string> m_values; // by "protocol:column"
};

/** One end of a TCP connection. */
struct TCPAddress {
    /** In the form of inet_ntop(3). */
    std::string address;
    OpenWBEM::UInt16 port;
};

/** A TCP connection, or a listener, of this host. */
struct TCPConnection {
    /**
     * Identifies the connection: `local:port-remote:port`, with IPv6 addresses in brackets. `#inode` follows
     * if several sockets share both ends, such as listeners with SO_REUSEPORT.
     */
    std::string name;
    /** tcpConnectionState of RFC 4022. */
    OpenWBEM::UInt16 state;
    TCPAddress local;
    TCPAddress remote;
};

/** The connections of /proc/net/tcp, then those of /proc/net/tcp6, proc(5). Malformed lines are skipped. */
std::vector<TCPConnection> tcpConnections(const Host& host);

} // namespace cimom
#endif
