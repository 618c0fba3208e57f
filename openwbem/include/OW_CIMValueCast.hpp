#ifndef OW_CIMVALUE_CAST_HPP_INCLUDED
#define OW_CIMVALUE_CAST_HPP_INCLUDED
#include "OW_CIMFwd.hpp"
#include "OW_Exception.hpp"

namespace OpenWBEM {

/** A value is not of the type that was asked for. */
OW_DECLARE_EXCEPTION(ValueCast)

namespace CIMValueCast {

/**
 * A value as one of another type. Numbers, booleans and characters cast to each other, everything but
 * objects from and to strings, objects to strings: what the value's text reads as. A single value becomes an
 * array of one element, an array its first element. The null value results for the null value and for a type
 * that is not set.
 * CIMException FAILED when the types do not cast, or the text does not read as a number or a truth value;
 * CIMDateTimeException or what CIMObjectPath::parse() throws for a text that is none of these;
 * OutOfBoundsException for an empty array; ValueCastException when the type is one of objects.
 */
OW_COMMON_API CIMValue castValueToDataType(const CIMValue& value, const CIMDataType& type);

} // namespace CIMValueCast

} // namespace OpenWBEM
#endif
