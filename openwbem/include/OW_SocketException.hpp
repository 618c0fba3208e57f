#ifndef OW_SOCKET_EXCEPTION_HPP_INCLUDED
#define OW_SOCKET_EXCEPTION_HPP_INCLUDED
#include "OW_Exception.hpp"

namespace OpenWBEM {

/** The object manager could not be reached, or the connection broke. */
OW_DECLARE_EXCEPTION(Socket)

} // namespace OpenWBEM
#endif
