#ifndef CIMOM_SITE_JSON_VALUES_HPP_INCLUDED
#define CIMOM_SITE_JSON_VALUES_HPP_INCLUDED
#include "OW_CIMValue.hpp"
#include "schema/ClassDeclaration.hpp"
#include "schema/ServedClasses.hpp"
#include "json/Document.hpp"

namespace cimom {

/**
 * The value of a property from a value of a JSON document; null for null.
 *
 * Integers are numbers without fraction and exponent, reals are numbers, booleans are true or false. All
 * other types are strings: a char16 is one character of UCS-2, a datetime has 25 characters as in DSP0004
 * without asterisks, a reference is the path of an instance of a served class, see ServedClasses::read(). An
 * array holds such values, and no null. No string holds U+0000.
 *
 * Throws json::Error that reports what was expected.
 */
OpenWBEM::CIMValue valueOf(const json::Value& value, const PropertyDeclaration& declared,
                           const ServedClasses& classes);

} // namespace cimom
#endif
