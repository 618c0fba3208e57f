#ifndef SNMP_SESSION_MASTER_ADDRESS_HPP
#define SNMP_SESSION_MASTER_ADDRESS_HPP

#include <boost/asio/generic/stream_protocol.hpp>
#include <optional>
#include <string>

namespace snmp {

/** Where a master listens. */
struct MasterAddress {
    /** As it was given, for messages. */
    std::string text;
    boost::asio::generic::stream_protocol::endpoint endpoint;
};

/** Reads the path of a Unix-domain socket, or `tcp:ADDRESS:PORT` with a numeric address. Nothing for any
 * other text. */
std::optional<MasterAddress> masterAddress(const std::string& text);

} // namespace snmp
#endif
