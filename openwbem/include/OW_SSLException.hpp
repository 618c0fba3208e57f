#ifndef OW_SSL_EXCEPTION_HPP_INCLUDED
#define OW_SSL_EXCEPTION_HPP_INCLUDED
#include "OW_Exception.hpp"

namespace OpenWBEM {

/** A TLS handshake failed, or this library was built without TLS. */
OW_DECLARE_EXCEPTION(SSL)

} // namespace OpenWBEM
#endif
