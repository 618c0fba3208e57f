#ifndef OW_CIMVALUE_CAST_HPP_INCLUDED
#define OW_CIMVALUE_CAST_HPP_INCLUDED
#include "OW_CIMFwd.hpp"
#include "OW_Exception.hpp"

namespace OpenWBEM {

/** A value does not have the requested type. */
OW_DECLARE_EXCEPTION(ValueCast)

namespace CIMValueCast {

/**
 * Converts a value to another type by parsing its text. Numbers, booleans and characters convert to each
 * other; all types but embedded objects convert to and from strings; embedded objects convert to strings. A
 * single value converts to an array of one element, an array to its first element. The result is null for the
 * null value, and for a type that is not set.
 *
 * Throws CIMException FAILED if there is no such conversion, or if the text is not a number or boolean;
 * CIMDateTimeException, or the exception of CIMObjectPath::parse(), if the text is not a datetime or a path;
 * OutOfBoundsException for an empty array; ValueCastException if the type is an embedded object.
 */
OW_COMMON_API CIMValue castValueToDataType(const CIMValue& value, const CIMDataType& type);

} // namespace CIMValueCast

} // namespace OpenWBEM
#endif
