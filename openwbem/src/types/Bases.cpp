// Out-of-line members of the smallest classes.
#include "OW_Bool.hpp"
#include "OW_CIMElement.hpp"
#include "OW_CIMName.hpp"
#include "OW_Char16.hpp"
#include "OW_ClientAuthCBIFC.hpp"
#include "OW_IntrusiveCountableBase.hpp"
#include "Utf8.hpp"
#include "ValueText.hpp"
#include "detail/OW_Shared.hpp"

namespace OpenWBEM {

IntrusiveCountableBase::~IntrusiveCountableBase() = default;
ClientAuthCBIFC::~ClientAuthCBIFC() = default;

String CIMElement::toString() const {
    return getName();
}

String Bool::toString() const {
    return m_value ? "true" : "false";
}

Char16::Char16(const String& text) {
    const char* at = text.c_str();
    const char32_t code = takeUtf8(at);
    const bool isMalformed = (code & ~char32_t{0xFF}) == malformedByte;
    m_value = isMalformed || code > 0xFFFF ? UInt16{0xFFFF} : static_cast<UInt16>(code);
}

String Char16::toString() const {
    std::string text;
    appendUtf8(text, m_value);
    return stringOf(text);
}

} // namespace OpenWBEM
