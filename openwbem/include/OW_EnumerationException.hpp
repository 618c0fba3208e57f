#ifndef OW_ENUMERATION_EXCEPTION_HPP_INCLUDED
#define OW_ENUMERATION_EXCEPTION_HPP_INCLUDED
#include "OW_Exception.hpp"

namespace OpenWBEM {

/** An element was taken from an empty enumeration. */
OW_DECLARE_EXCEPTION(Enumeration)

} // namespace OpenWBEM
#endif
