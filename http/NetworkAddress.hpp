#ifndef HTTP_NETWORK_ADDRESS_HPP_INCLUDED
#define HTTP_NETWORK_ADDRESS_HPP_INCLUDED
#include <cstdint>
#include <optional>
#include <string>
#include <sys/socket.h>

namespace http {

/** An address and a port to listen on. */
struct NetworkAddress {
    sockaddr_storage address{};
    socklen_t size = 0;
};

/**
 * Reads `ADDRESS:PORT`. The address is one of IPv4, or one of IPv6 in brackets. Without an address (`:PORT`
 * or `PORT`) it is the loopback address of IPv4. Nothing for any other text.
 */
std::optional<NetworkAddress> networkAddress(const std::string& text);

/** The same, and an address alone with the default port. */
std::optional<NetworkAddress> networkAddress(const std::string& text, std::uint16_t defaultPort);

/** Whether only clients of this host can connect to the address. */
bool isLoopback(const NetworkAddress& address);

/** `ADDRESS:PORT`, with IPv6 addresses in brackets. */
std::string textOf(const NetworkAddress& address);

/** A TCP socket that listens, non-blocking, closed on exec. */
struct NetworkSocket {
    /** The caller owns and closes it. */
    int descriptor;
    /** Where it listens: the kernel replaces port 0 by a free port. */
    NetworkAddress at;
};

/** Listens on an address. Throws std::runtime_error `<address>: <why>`. */
NetworkSocket listenOn(const NetworkAddress& address);

} // namespace http
#endif
