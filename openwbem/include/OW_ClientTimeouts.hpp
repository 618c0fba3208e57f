#ifndef OW_CLIENT_TIMEOUTS_HPP_INCLUDED
#define OW_CLIENT_TIMEOUTS_HPP_INCLUDED
#include "OW_config.h"
#include <chrono>

namespace OpenWBEM {

/**
 * Timeouts of a request. An extension of this library.
 *
 * `connect` limits the whole connection setup, including the TLS handshake. `send` limits each wait for the
 * peer to accept more of the request. `receive` limits the wait for the whole head of the reply, and then
 * each wait for more bytes of its body; framing and trailers do not restart it. There is no limit on the
 * total time.
 */
struct ClientTimeouts {
    std::chrono::milliseconds connect{std::chrono::seconds(60)};
    std::chrono::milliseconds send{std::chrono::seconds(600)};
    std::chrono::milliseconds receive{std::chrono::seconds(600)};
};

/** The timeouts of all clients in the process. Change them only while no request is in progress. */
OW_CLIENT_API ClientTimeouts& clientTimeouts();

} // namespace OpenWBEM
#endif
