#ifndef OW_HTTPUTILS_HPP_INCLUDED
#define OW_HTTPUTILS_HPP_INCLUDED
#include "OW_Exception.hpp"

namespace OpenWBEM {

/** A percent sign in a URL is not followed by two hexadecimal digits. */
OW_DECLARE_EXCEPTION(UnescapeCharForURL)

} // namespace OpenWBEM
#endif
