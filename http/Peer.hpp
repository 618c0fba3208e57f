#ifndef HTTP_PEER_HPP_INCLUDED
#define HTTP_PEER_HPP_INCLUDED
#include "objects/Access.hpp"

#include <string>

namespace cimom {

/** Who is at the other end of a connection. */
struct Peer {
    /** For the log: "uid 1000" of a local one, "127.0.0.1:41234" of one on the network. */
    std::string name;
    /** Of one on the network, what its failed logins are counted by: its address, of IPv6 the network of 64
     * bits that it belongs to, which one host may have to itself. */
    std::string address;
    /** What it may do unless it logs in. */
    Access access;
    /** It may log in by name and password; a local one is known by its user. */
    bool isOnNetwork;
};

/**
 * The peer of a connected socket. That of a Unix-domain socket has the access of the user that it connected
 * as (SO_PEERCRED, unix(7)), see accessOf(); one on the network, and one that the kernel tells nothing about,
 * may read.
 */
Peer peerOf(int socket);

} // namespace cimom
#endif
