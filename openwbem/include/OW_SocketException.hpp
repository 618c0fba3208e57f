#ifndef OW_SOCKET_EXCEPTION_HPP_INCLUDED
#define OW_SOCKET_EXCEPTION_HPP_INCLUDED
#include "OW_Exception.hpp"

namespace OpenWBEM {

/** The connection to the object manager failed. */
OW_DECLARE_EXCEPTION(Socket)

} // namespace OpenWBEM
#endif
