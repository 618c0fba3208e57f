#include "OW_CIMClass.hpp"

#include "OW_CIMInstance.hpp"
#include "ObjectData.hpp"

namespace OpenWBEM {

CIMClass::CIMClass()
    : m_data(new Data) {}
CIMClass::CIMClass(CIMNULL_t) {}
CIMClass::CIMClass(const CIMName& name)
    : CIMClass() {
    CIMClass::setName(name);
}
CIMClass::CIMClass(const char* name)
    : CIMClass(CIMName(name)) {}

String CIMClass::getName() const {
    return m_data->name.toString();
}

void CIMClass::setName(const CIMName& name) {
    m_data.edit().name = name;
}

CIMName CIMClass::getSuperClass() const {
    return m_data->superClass;
}

CIMClass& CIMClass::setSuperClass(const CIMName& name) {
    m_data.edit().superClass = name;
    return *this;
}

bool CIMClass::isAssociation() const {
    return m_data->isAssociation;
}

CIMPropertyArray CIMClass::getAllProperties() const {
    return m_data->properties;
}

CIMClass& CIMClass::setProperties(const CIMPropertyArray& properties) {
    m_data.edit().properties = properties;
    return *this;
}

CIMInstance CIMClass::newInstance() const {
    CIMInstance instance(m_data->name);
    instance.setProperties(m_data->properties);
    return instance;
}

void CIMClass::setNull() {
    m_data.reset();
}

String CIMClass::toString() const {
    return toMOF();
}

} // namespace OpenWBEM
