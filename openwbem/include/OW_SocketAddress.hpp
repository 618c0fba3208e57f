#ifndef OW_SOCKET_ADDRESS_HPP_INCLUDED
#define OW_SOCKET_ADDRESS_HPP_INCLUDED
#include "OW_Exception.hpp"

namespace OpenWBEM {

/** A host name has no address; the message is the name. */
OW_DECLARE_EXCEPTION(UnknownHost)

/** An address is invalid. */
OW_DECLARE_EXCEPTION(SocketAddress)

} // namespace OpenWBEM
#endif
