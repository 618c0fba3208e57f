#ifndef OW_HTTP_EXCEPTION_HPP_INCLUDED
#define OW_HTTP_EXCEPTION_HPP_INCLUDED
#include "OW_Exception.hpp"

namespace OpenWBEM {

/** The object manager sent an HTTP error response, or a reply that is not HTTP. */
OW_DECLARE_EXCEPTION(HTTP)

} // namespace OpenWBEM
#endif
