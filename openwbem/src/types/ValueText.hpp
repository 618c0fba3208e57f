#ifndef OPENWBEM_VALUE_TEXT_HPP_INCLUDED
#define OPENWBEM_VALUE_TEXT_HPP_INCLUDED
#include "OW_CIMFwd.hpp"
#include "OW_String.hpp"
#include "OW_Types.hpp"
#include "Utf8.hpp"

#include <string>

namespace OpenWBEM {

/** Appends the text of one value, in the form of CIMValue::toString(). Independent of the locale. */
void appendText(std::string& text, Bool value);
void appendText(std::string& text, Int8 value);
void appendText(std::string& text, UInt8 value);
void appendText(std::string& text, Int16 value);
void appendText(std::string& text, UInt16 value);
void appendText(std::string& text, Int32 value);
void appendText(std::string& text, UInt32 value);
void appendText(std::string& text, Int64 value);
void appendText(std::string& text, UInt64 value);
/** Six significant digits. */
void appendText(std::string& text, Real32 value);
void appendText(std::string& text, Real64 value);
/** One byte: the low half of the code. Nothing if that is 0. */
void appendText(std::string& text, const Char16& value);
void appendText(std::string& text, const String& value);
void appendText(std::string& text, const CIMDateTime& value);
void appendText(std::string& text, const CIMObjectPath& value);
/** The declaration in the Managed Object Format. */
void appendText(std::string& text, const CIMClass& value);
void appendText(std::string& text, const CIMInstance& value);

/** Appends one element of an array: like a single value, but a char16 in UTF-8. */
void appendElementText(std::string& text, const Char16& value);
template <class T>
void appendElementText(std::string& text, const T& value) {
    appendText(text, value);
}

inline String stringOf(const std::string& text) {
    return String(text.data(), text.size());
}

/** The start of the number for from_chars(): skips white space and a plus sign, which from_chars() rejects.
 */
const char* numberStart(const char* first, const char* last);

/** Parses a decimal real; false if the text is not one or is out of range. Independent of the locale. */
bool parseReal(const char* text, std::size_t length, Real64& value);

} // namespace OpenWBEM
#endif
