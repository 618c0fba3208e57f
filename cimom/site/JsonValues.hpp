#ifndef CIMOM_SITE_JSON_VALUES_HPP_INCLUDED
#define CIMOM_SITE_JSON_VALUES_HPP_INCLUDED
#include "OW_CIMValue.hpp"
#include "objects/Provider.hpp"
#include "objects/ServedClasses.hpp"
#include "json/Document.hpp"

namespace cimom {

/**
 * A value of a JSON document as one of a property; the null value for null.
 *
 * An integer is a number without fraction and exponent; a real is a number; a boolean is true or false. All
 * else is a string: a char16 one character of UCS-2, a datetime 25 characters as in DSP0004 without
 * asterisks, a reference the path of an instance of a served class, see ServedClasses::read(). An array is
 * an array of these, none of them null. No string holds U+0000.
 *
 * Throws json::Error that says what was expected.
 */
OpenWBEM::CIMValue valueOf(const json::Value& value, const PropertyDeclaration& declared,
                           const ServedClasses& classes);

} // namespace cimom
#endif
