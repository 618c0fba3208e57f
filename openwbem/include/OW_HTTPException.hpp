#ifndef OW_HTTP_EXCEPTION_HPP_INCLUDED
#define OW_HTTP_EXCEPTION_HPP_INCLUDED
#include "OW_Exception.hpp"

namespace OpenWBEM {

/** The object manager refused a request at the level of HTTP, or its answer is not HTTP. */
OW_DECLARE_EXCEPTION(HTTP)

} // namespace OpenWBEM
#endif
