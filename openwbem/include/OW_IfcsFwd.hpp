#ifndef OW_IFCS_FWD_HPP_INCLUDED
#define OW_IFCS_FWD_HPP_INCLUDED
#include "OW_IntrusiveReference.hpp"
#include "OW_config.h"

namespace OpenWBEM {

class ClientAuthCBIFC;
/** A null reference means no callback. */
typedef IntrusiveReference<ClientAuthCBIFC> ClientAuthCBIFCRef;

} // namespace OpenWBEM
#endif
