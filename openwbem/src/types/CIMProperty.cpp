#include "OW_CIMProperty.hpp"

#include "OW_CIMValueCast.hpp"
#include "OW_NULLValueException.hpp"
#include "ObjectData.hpp"

#include <algorithm>

namespace OpenWBEM {
namespace {

detail::Shared<Declaration> declare(const CIMName& name, const CIMDataType& type) {
    auto* const declaration = new Declaration;
    detail::Shared<Declaration> shared(declaration);
    declaration->name = name;
    declaration->type = type;
    return shared;
}

CIMValue cast(const CIMValue& value, const CIMDataType& type) {
    if (!type || !value || type.equals(value.getCIMDataType()))
        return value;
    const CIMDataType::Type own = value.getType();
    if (own == CIMDataType::EMBEDDEDCLASS || own == CIMDataType::EMBEDDEDINSTANCE)
        return value;
    return CIMValueCast::castValueToDataType(value, type);
}

} // namespace

bool isTrue(const Qualifier& qualifier, const CIMName& name) {
    return qualifier.name == name && qualifier.value == CIMValue(true);
}

bool isTrue(const QualifierArray& qualifiers, const CIMName& name) {
    return std::any_of(qualifiers.begin(), qualifiers.end(),
                       [&name](const Qualifier& qualifier) { return isTrue(qualifier, name); });
}

CIMProperty::CIMProperty()
    : CIMProperty(CIMName()) {}
CIMProperty::CIMProperty(CIMNULL_t)
    : m_value(CIMNULL) {}
CIMProperty::CIMProperty(const CIMName& name)
    : CIMProperty(name, CIMDataType()) {}
CIMProperty::CIMProperty(const char* name)
    : CIMProperty(CIMName(name)) {}
CIMProperty::CIMProperty(const CIMName& name, const CIMValue& value)
    : CIMProperty(declare(name, value.getCIMDataType()), value) {}
CIMProperty::CIMProperty(const CIMName& name, const CIMDataType& type)
    : CIMProperty(declare(name, type), CIMValue(CIMNULL)) {}

String CIMProperty::getName() const {
    return m_declaration->name.toString();
}

void CIMProperty::setName(const CIMName& name) {
    m_declaration.edit().name = name;
}

CIMValue CIMProperty::getValue() const {
    if (!m_declaration)
        detail::throwNullReference();
    return m_value;
}

CIMValue CIMProperty::getValueT() const {
    CIMValue value = getValue();
    if (!value)
        OW_THROW(NULLValueException, getName().c_str());
    return value;
}

CIMProperty& CIMProperty::setValue(const CIMValue& value) {
    m_value = cast(value, getDataType());
    return *this;
}

CIMDataType CIMProperty::getDataType() const {
    return m_declaration->type;
}

CIMProperty& CIMProperty::setDataType(const CIMDataType& type) {
    CIMValue own = cast(getValue(), type);
    m_declaration.edit().type = type;
    m_value = std::move(own);
    return *this;
}

Int32 CIMProperty::getSize() const {
    return m_declaration->arraySize;
}

String CIMProperty::getOriginClass() const {
    return m_declaration->originClass.toString();
}

CIMProperty& CIMProperty::setOriginClass(const CIMName& className) {
    m_declaration.edit().originClass = className;
    return *this;
}

bool CIMProperty::getPropagated() const {
    return m_declaration->propagated;
}

CIMProperty& CIMProperty::setPropagated(bool propagated) {
    m_declaration.edit().propagated = propagated;
    return *this;
}

bool CIMProperty::isReference() const {
    return m_declaration->type.isReferenceType();
}

bool CIMProperty::isKey() const {
    return isReference() || isTrue(m_declaration->qualifiers, "Key");
}

void CIMProperty::setNull() {
    m_declaration.reset();
    m_value.setNull();
}

String CIMProperty::toString() const {
    return getDataType().toString() + ":" + getName() + "=" + (m_value ? m_value.toString() : "null");
}

} // namespace OpenWBEM
