#ifndef OW_NULL_VALUE_EXCEPTION_HPP_INCLUDED
#define OW_NULL_VALUE_EXCEPTION_HPP_INCLUDED
#include "OW_Exception.hpp"

namespace OpenWBEM {

/** A property has no value; the message is its name. */
OW_DECLARE_EXCEPTION(NULLValue)

} // namespace OpenWBEM
#endif
