#include "OW_ClientTimeouts.hpp"

namespace OpenWBEM {

ClientTimeouts& clientTimeouts() {
    static ClientTimeouts timeouts;
    return timeouts;
}

} // namespace OpenWBEM
