#include "OW_CIMInstance.hpp"

#include "ObjectData.hpp"
#include "ValueText.hpp"

#include <algorithm>

namespace OpenWBEM {
namespace {

// Works for the property array of an instance and for its const form.
template <class Properties>
auto find(Properties& properties, const CIMName& name) {
    return std::find_if(properties.begin(), properties.end(), [&name](const CIMProperty& property) {
        return property && ObjectAccess::data(property).name == name;
    });
}

} // namespace

CIMInstance::CIMInstance()
    : m_data(std::make_shared<Data>()) {}
CIMInstance::CIMInstance(CIMNULL_t) {}
CIMInstance::CIMInstance(const CIMName& className)
    : m_data(std::make_shared<Data>(Data{className, {}, {}})) {}
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
                     return ObjectAccess::data(property).type.getType() == valueDataType;
                 });
    return chosen;
}

CIMInstance& CIMInstance::setProperties(const CIMPropertyArray& properties) {
    m_data.edit().properties = properties;
    return *this;
}

CIMProperty CIMInstance::getProperty(const CIMName& name) const {
    const CIMPropertyArray& all = m_data->properties;
    const auto found = find(all, name);
    return found == all.end() ? CIMProperty(CIMNULL) : *found;
}

CIMValue CIMInstance::getPropertyValue(const CIMName& name) const {
    const CIMProperty property = getProperty(name);
    return property ? property.getValue() : CIMValue(CIMNULL);
}

CIMInstance& CIMInstance::setProperty(const CIMProperty& property) {
    if (!property)
        return *this;
    CIMPropertyArray& all = m_data.edit().properties;
    const auto found = find(all, property.getName());
    if (found == all.end())
        all.push_back(property);
    else
        *found = property;
    return *this;
}

CIMPropertyArray CIMInstance::getKeyValuePairs() const {
    return m_data->keys;
}

CIMInstance& CIMInstance::setKeys(const CIMPropertyArray& keys) {
    m_data.edit().keys = keys;
    return *this;
}

void CIMInstance::setNull() {
    m_data.reset();
}

String CIMInstance::toString() const {
    std::string text;
    appendText(text, *this);
    return String(text.data(), text.size());
}

} // namespace OpenWBEM
