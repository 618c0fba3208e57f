#ifndef OW_NO_SUCH_PROPERTY_EXCEPTION_HPP_INCLUDED
#define OW_NO_SUCH_PROPERTY_EXCEPTION_HPP_INCLUDED
#include "OW_Exception.hpp"

namespace OpenWBEM {

/** An instance or a path has no such property or key; the message is its name. */
OW_DECLARE_EXCEPTION(NoSuchProperty)

} // namespace OpenWBEM
#endif
