#include "OW_CIMInstance.hpp"

#include "OW_NoSuchPropertyException.hpp"
#include "ObjectData.hpp"
#include "ValueText.hpp"

#include <algorithm>

namespace OpenWBEM {

CIMInstance::CIMInstance()
    : m_data(new Data) {}
CIMInstance::CIMInstance(CIMNULL_t) {}
CIMInstance::CIMInstance(const CIMName& className)
    : CIMInstance() {
    m_data.edit().className = className;
}
CIMInstance::CIMInstance(const char* className)
    : CIMInstance(CIMName(className)) {}

String CIMInstance::getClassName() const {
    return m_data->className.toString();
}

CIMInstance& CIMInstance::setClassName(const CIMName& className) {
    m_data.edit().className = className;
    return *this;
}

String CIMInstance::getName() const {
    return getClassName();
}

void CIMInstance::setName(const CIMName& className) {
    setClassName(className);
}

CIMPropertyArray CIMInstance::getProperties(Int32 valueDataType) const {
    const CIMPropertyArray& all = m_data->properties;
    if (valueDataType == CIMDataType::INVALID)
        return all;
    CIMPropertyArray chosen;
    std::copy_if(all.begin(), all.end(), std::back_inserter(chosen),
                 [valueDataType](const CIMProperty& property) {
                     return ObjectAccess::declaration(property).type.getType() == valueDataType;
                 });
    return chosen;
}

CIMInstance& CIMInstance::setProperties(const CIMPropertyArray& properties) {
    m_data.edit().properties = properties;
    return *this;
}

CIMProperty CIMInstance::getProperty(const CIMName& name) const {
    const CIMPropertyArray& all = m_data->properties;
    const auto found = findByName(all, name);
    return found == all.end() ? CIMProperty(CIMNULL) : *found;
}

CIMValue CIMInstance::getPropertyValue(const CIMName& name) const {
    const CIMProperty property = getProperty(name);
    return property ? property.getValue() : CIMValue(CIMNULL);
}

CIMProperty CIMInstance::getPropertyT(const CIMName& name) const {
    CIMProperty property = getProperty(name);
    if (!property)
        OW_THROW_ERR(NoSuchPropertyException, name.toString().c_str(), E_INSTANCE_HAS_NO_SUCH_PROPERTY);
    return property;
}

bool CIMInstance::propertyHasValue(const CIMName& name) const {
    return static_cast<bool>(getPropertyValue(name));
}

CIMInstance& CIMInstance::setProperty(const CIMName& name, const CIMValue& value) {
    CIMProperty property = getProperty(name);
    if (property)
        property.setValue(value);
    else
        property = value ? CIMProperty(name, value) : CIMProperty(name);
    setProperty(property);
    CIMPropertyArray& keys = m_data.edit().keys;
    if (!keys.empty()) {
        const auto key = findByName(keys, name);
        if (key != keys.end())
            key->setValue(property.getValue());
    }
    return *this;
}

CIMInstance& CIMInstance::setProperty(const CIMProperty& property) {
    if (!property)
        return *this;
    CIMPropertyArray& all = m_data.edit().properties;
    const auto found = findByName(all, property.getName());
    if (found == all.end())
        all.push_back(property);
    else
        *found = property;
    return *this;
}

CIMInstance& CIMInstance::removeProperty(const CIMName& name) {
    CIMPropertyArray& all = m_data.edit().properties;
    const auto found = findByName(all, name);
    if (found != all.end())
        all.erase(found);
    return *this;
}

CIMPropertyArray CIMInstance::getKeyValuePairs() const {
    return m_data->keys;
}

CIMInstance& CIMInstance::setKeys(const CIMPropertyArray& keys) {
    m_data.edit().keys = keys;
    return *this;
}

String CIMInstance::getLanguage() const {
    return m_data->language;
}

void CIMInstance::setLanguage(const String& language) {
    m_data.edit().language = language;
}

void CIMInstance::setNull() {
    m_data.reset();
}

String CIMInstance::toString() const {
    std::string text;
    appendText(text, *this);
    return stringOf(text);
}

} // namespace OpenWBEM
