#ifndef HTTP_PEER_HPP_INCLUDED
#define HTTP_PEER_HPP_INCLUDED
#include <optional>
#include <string>
#include <sys/types.h>

namespace http {

/** The client of a connection. */
struct Peer {
    /** For the log: "uid 1000" of a local client, "127.0.0.1:41234" of a client on the network. */
    std::string name;
    /** User of a local client; nothing if the kernel does not report it. */
    std::optional<uid_t> user{};
    /** Address of a client on the network, by which failed logins are counted: of IPv6 the network of 64
     * bits, which one host may have to itself. Empty for a local client. */
    std::string address{};
    /** Common name in the certificate of a client with TLS, which the server has verified; else empty. */
    std::string subject{};

    bool isOnNetwork() const { return !address.empty(); }
};

/** The peer of a connected socket. The user of a Unix-domain socket is the one that connected (SO_PEERCRED).
 */
Peer peerOf(int socket);

} // namespace http
#endif
