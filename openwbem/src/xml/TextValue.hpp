#ifndef OPENWBEM_XML_TEXT_VALUE_HPP_INCLUDED
#define OPENWBEM_XML_TEXT_VALUE_HPP_INCLUDED
#include "OW_Bool.hpp"
#include "OW_CIMDataType.hpp"
#include "OW_CIMDateTime.hpp"
#include "OW_Char16.hpp"
#include "OW_String.hpp"

#include <string_view>

namespace OpenWBEM {
namespace xml {

/**
 * The value of one CIM type that a text stands for (DSP0201, VALUE). Integers are decimal over the whole
 * text, with white space and a sign in front of it; the empty text is 0. Booleans read "true" and "false" in
 * any case. A char16 is the first character, 0 in the empty text, 0xFFFF when it has no 16-bit code. Throws
 * CIMException INVALID_PARAMETER for a text that stands for no value or for one out of range, and
 * CIMDateTimeException for a datetime that is none.
 */
template <class T>
T fromText(std::string_view text);

/** Reads an integer as fromText() does; false when the text is none, the empty text included. */
bool parseInteger(std::string_view text, Int64& number);

/** Whether the text, in any case, says that a number has no value. */
bool isNullNumber(std::string_view text);

/** Whether two texts are the same but for the case of ASCII letters. */
bool equalsIgnoreCase(std::string_view a, std::string_view b);

// Empty, not null, where there is nothing: the null string is no number.
inline String toString(std::string_view text) {
    return String(text.empty() ? "" : text.data(), text.size());
}

inline std::string_view view(const String& text) {
    return std::string_view(text.c_str(), text.length());
}

/** Calls the visitor with an object of the C++ type of a CIM type that has a text form; false for others. */
template <class Visitor>
bool visitType(CIMDataType::Type type, Visitor&& visitor) {
    // NOLINTBEGIN(bugprone-branch-clone): each branch has a type of its own
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
