#ifndef OW_NO_SUCH_PROPERTY_EXCEPTION_HPP_INCLUDED
#define OW_NO_SUCH_PROPERTY_EXCEPTION_HPP_INCLUDED
#include "OW_Exception.hpp"

namespace OpenWBEM {

/** An instance lacks a property that was asked for; the message is its name. */
OW_DECLARE_EXCEPTION(NoSuchProperty)

} // namespace OpenWBEM
#endif
