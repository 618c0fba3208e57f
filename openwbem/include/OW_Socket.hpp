#ifndef OW_SOCKET_HPP_INCLUDED
#define OW_SOCKET_HPP_INCLUDED
#include "OW_Exception.hpp"

namespace OpenWBEM {

/** A wait for the peer timed out. */
OW_DECLARE_EXCEPTION(SocketTimeout)

} // namespace OpenWBEM
#endif
