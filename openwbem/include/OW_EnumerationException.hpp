#ifndef OW_ENUMERATION_EXCEPTION_HPP_INCLUDED
#define OW_ENUMERATION_EXCEPTION_HPP_INCLUDED
#include "OW_Exception.hpp"

namespace OpenWBEM {

/** The next element of an empty enumeration was requested. */
OW_DECLARE_EXCEPTION(Enumeration)

} // namespace OpenWBEM
#endif
