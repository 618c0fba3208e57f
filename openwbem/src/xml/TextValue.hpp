#ifndef OPENWBEM_XML_TEXT_VALUE_HPP_INCLUDED
#define OPENWBEM_XML_TEXT_VALUE_HPP_INCLUDED
#include "OW_Bool.hpp"
#include "OW_CIMDataType.hpp"
#include "OW_CIMDateTime.hpp"
#include "OW_Char16.hpp"
#include "OW_String.hpp"
#include "util/Ascii.hpp"

#include <string_view>

namespace OpenWBEM {
namespace xml {

/**
 * Parses a text as a value of one CIM type (DSP0201, VALUE). Integers are decimal, after optional white space
 * and a sign; the empty text is 0. Booleans are "true" and "false" in any case. A char16 is the first
 * character: 0 for the empty text, 0xFFFF for a character without a 16-bit code. Throws CIMException
 * INVALID_PARAMETER for a malformed value and a value out of range, and CIMDateTimeException for a malformed
 * datetime.
 */
template <class T>
T fromText(std::string_view text);

/** Parses an integer like fromText(); false if the text is not an integer or is empty. */
bool parseInteger(std::string_view text, Int64& number);

/** Whether the text of a number means null: "NULL" in any case. */
bool isNullNumber(std::string_view text);

using ascii::equalsIgnoreCase;

/** Never null: the null string does not convert to numbers. */
inline String toString(std::string_view text) {
    return String(text.empty() ? "" : text.data(), text.size());
}

inline std::string_view view(const String& text) {
    return std::string_view(text.c_str(), text.length());
}

/** Calls the visitor with an object of the C++ type of a CIM type; false for a type without a text form. */
template <class Visitor>
bool visitType(CIMDataType::Type type, Visitor&& visitor) {
    // NOLINTBEGIN(bugprone-branch-clone): the types of the branches differ
    switch (type) {
    case CIMDataType::UINT8:
        return visitor(UInt8()), true;
    case CIMDataType::SINT8:
        return visitor(Int8()), true;
    case CIMDataType::UINT16:
        return visitor(UInt16()), true;
    case CIMDataType::SINT16:
        return visitor(Int16()), true;
    case CIMDataType::UINT32:
        return visitor(UInt32()), true;
    case CIMDataType::SINT32:
        return visitor(Int32()), true;
    case CIMDataType::UINT64:
        return visitor(UInt64()), true;
    case CIMDataType::SINT64:
        return visitor(Int64()), true;
    case CIMDataType::STRING:
        return visitor(String()), true;
    case CIMDataType::BOOLEAN:
        return visitor(Bool()), true;
    case CIMDataType::REAL32:
        return visitor(Real32()), true;
    case CIMDataType::REAL64:
        return visitor(Real64()), true;
    case CIMDataType::DATETIME:
        return visitor(CIMDateTime()), true;
    case CIMDataType::CHAR16:
        return visitor(Char16()), true;
    default:
        return false;
    }
    // NOLINTEND(bugprone-branch-clone)
}

} // namespace xml
} // namespace OpenWBEM
#endif
