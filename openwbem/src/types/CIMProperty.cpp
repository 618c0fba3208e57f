#include "OW_CIMProperty.hpp"

#include "OW_NULLValueException.hpp"
#include "ObjectData.hpp"
#include "ValueText.hpp"

namespace OpenWBEM {

CIMProperty::CIMProperty()
    : m_data(std::make_shared<Data>()) {}
CIMProperty::CIMProperty(CIMNULL_t) {}
CIMProperty::CIMProperty(const CIMName& name)
    : m_data(std::make_shared<Data>(Data{name, CIMDataType(), CIMValue(CIMNULL)})) {}
CIMProperty::CIMProperty(const char* name)
    : CIMProperty(CIMName(name)) {}
CIMProperty::CIMProperty(const CIMName& name, const CIMValue& value)
    : m_data(std::make_shared<Data>(Data{name, value.getCIMDataType(), value})) {}
CIMProperty::CIMProperty(const CIMName& name, const CIMDataType& type)
    : m_data(std::make_shared<Data>(Data{name, type, CIMValue(CIMNULL)})) {}

String CIMProperty::getName() const {
    return m_data->name.toString();
}

void CIMProperty::setName(const CIMName& name) {
    m_data.edit().name = name;
}

CIMValue CIMProperty::getValue() const {
    return m_data->value;
}

CIMValue CIMProperty::getValueT() const {
    if (!m_data->value)
        OW_THROW(NULLValueException, getName().c_str());
    return m_data->value;
}

CIMDataType CIMProperty::getDataType() const {
    return m_data->type;
}

void CIMProperty::setNull() {
    m_data.reset();
}

String CIMProperty::toString() const {
    const Data& data = m_data.read();
    return data.type.toString() + ":" + data.name.toString() + "=" +
           (data.value ? data.value.toString() : "null");
}

} // namespace OpenWBEM
