#include "ValueText.hpp"

#include "ObjectData.hpp"

#include <charconv>
#include <cmath>

namespace OpenWBEM {
namespace {

template <class T>
void appendInteger(std::string& text, T value) {
    char digits[24]; // fits a sign and the 20 digits of 2^64 - 1
    const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    text.append(digits, end);
}

} // namespace

void appendText(std::string& text, Bool value) {
    text += value ? "true" : "false";
}
void appendText(std::string& text, Int8 value) {
    appendInteger(text, static_cast<int>(value));
}
void appendText(std::string& text, UInt8 value) {
    appendInteger(text, static_cast<unsigned>(value));
}
void appendText(std::string& text, Int16 value) {
    appendInteger(text, value);
}
void appendText(std::string& text, UInt16 value) {
    appendInteger(text, value);
}
void appendText(std::string& text, Int32 value) {
    appendInteger(text, value);
}
void appendText(std::string& text, UInt32 value) {
    appendInteger(text, value);
}
void appendText(std::string& text, Int64 value) {
    appendInteger(text, value);
}
void appendText(std::string& text, UInt64 value) {
    appendInteger(text, value);
}

void appendText(std::string& text, Real32 value) {
    appendText(text, static_cast<Real64>(value));
}

void appendText(std::string& text, Real64 value) {
    char digits[32]; // fits a sign, six digits, a point and a three-digit exponent
    const auto end = std::to_chars(digits, digits + sizeof digits, value, std::chars_format::general, 6).ptr;
    text.append(digits, end);
}

void appendText(std::string& text, const Char16& value) {
    const char low = static_cast<char>(value.getValue() & 0xFF);
    if (low)
        text += low;
}

void appendElementText(std::string& text, const Char16& value) {
    appendUtf8(text, value.getValue());
}

void appendText(std::string& text, const String& value) {
    text.append(value.c_str(), value.length());
}

void appendText(std::string& text, const CIMDateTime& value) {
    text += value.toString().c_str();
}

void appendText(std::string& text, const CIMObjectPath& value) {
    appendText(text, value.toString());
}

void appendText(std::string& text, const CIMClass& value) {
    appendText(text, value.toMOF());
}

void appendText(std::string& text, const CIMInstance& value) {
    const CIMInstance::Data& data = ObjectAccess::data(value);
    text += "instance of ";
    appendText(text, data.className.toString());
    text += " {\n";
    for (const CIMProperty& property : std::as_const(data.properties)) {
        const Declaration& declaration = ObjectAccess::declaration(property);
        if (isTrue(declaration.qualifiers, "Invisible"))
            continue;
        const CIMValue& content = ObjectAccess::value(property);
        appendText(text, declaration.name.toString());
        text += " = ";
        appendText(text, content ? content.toString() : String("null"));
        text += ";\n";
    }
    text += "}\n";
}

const char* numberStart(const char* first, const char* last) {
    while (first != last && (*first == ' ' || (*first >= '\t' && *first <= '\r')))
        ++first;
    return last - first > 1 && *first == '+' && first[1] != '-' ? first + 1 : first;
}

bool parseReal(const char* text, std::size_t length, Real64& value) {
    const char* const last = text + length;
    const auto result = std::from_chars(numberStart(text, last), last, value);
    return result.ec == std::errc() && result.ptr == last && !std::isinf(value);
}

} // namespace OpenWBEM
