// Anchors of the small classes: their destructors and the few members that need no file of their own.
#include "OW_Bool.hpp"
#include "OW_CIMElement.hpp"
#include "OW_CIMName.hpp"
#include "OW_Char16.hpp"
#include "OW_ClientAuthCBIFC.hpp"
#include "OW_IntrusiveCountableBase.hpp"
#include "ValueText.hpp"

namespace OpenWBEM {

CIMBase::~CIMBase() = default;
IntrusiveCountableBase::~IntrusiveCountableBase() = default;
ClientAuthCBIFC::~ClientAuthCBIFC() = default;

String CIMElement::toString() const {
    return getName();
}

String Bool::toString() const {
    return m_value ? "true" : "false";
}

String Char16::toString() const {
    std::string text;
    appendUtf8(text, m_value);
    return String(text.data(), text.size());
}

} // namespace OpenWBEM
