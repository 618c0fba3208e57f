#ifndef OW_CLIENT_TIMEOUTS_HPP_INCLUDED
#define OW_CLIENT_TIMEOUTS_HPP_INCLUDED
#include "OW_config.h"
#include <chrono>

namespace OpenWBEM {

/**
 * How long a request waits on a peer before it fails. An extension of this library.
 *
 * `connect` bounds the whole making of a connection, the TLS handshake included. `send` bounds one silence:
 * time starts anew with every part of the request that the peer takes. `receive` bounds the wait for the head
 * of the reply as a whole, and then each wait for more bytes of its body; what frames them, and trailers, do
 * not start it anew. A peer that keeps sending is listened to.
 */
struct ClientTimeouts {
    std::chrono::milliseconds connect{std::chrono::seconds(60)};
    std::chrono::milliseconds send{std::chrono::seconds(600)};
    std::chrono::milliseconds receive{std::chrono::seconds(600)};
};

/** The bounds of every client of the process; change them while no request is under way. */
OW_CLIENT_API ClientTimeouts& clientTimeouts();

} // namespace OpenWBEM
#endif
