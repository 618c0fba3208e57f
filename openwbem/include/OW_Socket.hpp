#ifndef OW_SOCKET_HPP_INCLUDED
#define OW_SOCKET_HPP_INCLUDED
#include "OW_Exception.hpp"

namespace OpenWBEM {

/** A peer was silent for longer than the bound. */
OW_DECLARE_EXCEPTION(SocketTimeout)

} // namespace OpenWBEM
#endif
