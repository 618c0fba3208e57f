#ifndef OW_CLIENT_TIMEOUTS_HPP_INCLUDED
#define OW_CLIENT_TIMEOUTS_HPP_INCLUDED
#include "OW_config.h"
#include <chrono>

namespace OpenWBEM {

/**
 * How long a request waits on a silent peer before it fails. `connect` bounds the whole wait for a
 * connection. `send` and `receive` bound one silence: time starts anew with every part of the request that is
 * taken, with the end of the answer's head, and with every part of its body that arrives, so that a peer that
 * keeps sending is listened to. An extension of this library.
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
