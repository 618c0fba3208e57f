#ifndef OW_CIMVALUE_CAST_HPP_INCLUDED
#define OW_CIMVALUE_CAST_HPP_INCLUDED
#include "OW_Exception.hpp"

namespace OpenWBEM {

/** A value is not of the type that was asked for. */
OW_DECLARE_EXCEPTION(ValueCast)

} // namespace OpenWBEM
#endif
