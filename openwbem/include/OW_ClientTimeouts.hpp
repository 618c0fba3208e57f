#ifndef OW_CLIENT_TIMEOUTS_HPP_INCLUDED
#define OW_CLIENT_TIMEOUTS_HPP_INCLUDED
#include "OW_config.h"
#include <chrono>

namespace OpenWBEM {

/**
 * How long a request waits on a silent peer before it fails. Each bounds one silence, not the whole request:
 * time starts anew with every byte that gets through. An extension of this library.
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
