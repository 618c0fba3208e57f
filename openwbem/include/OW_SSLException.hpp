#ifndef OW_SSL_EXCEPTION_HPP_INCLUDED
#define OW_SSL_EXCEPTION_HPP_INCLUDED
#include "OW_Exception.hpp"

namespace OpenWBEM {

/** TLS failed or cannot be loaded, and the text says why; or this library was built without TLS. */
OW_DECLARE_EXCEPTION(SSL)

} // namespace OpenWBEM
#endif
