#include "schema/InstanceBuilder.hpp"

#include <cstring>
#include <stdexcept>

namespace cimom {

using namespace OpenWBEM;

InstanceBuilder::InstanceBuilder(const ClassDeclaration& declaration)
    : m_declaration(declaration) {
    m_properties.reserve(declaration.properties.size());
    for (const PropertyDeclaration& declared : declaration.properties)
        m_properties.emplace_back(CIMName(declared.name), declared.dataType());
}

InstanceBuilder& InstanceBuilder::set(const char* property, const CIMValue& value) {
    for (std::size_t i = 0; i < m_properties.size(); ++i) {
        const PropertyDeclaration& declared = m_declaration.properties[i];
        if (std::strcmp(declared.name, property) != 0)
            continue;
        if (!value)
            return *this;
        if (value.getType() != declared.type || value.isArray() != declared.isArray)
            throw std::logic_error(std::string(m_declaration.name) + "." + property +
                                   " is set to a value of another type");
        m_properties[i] = CIMProperty(declared.name, value);
        return *this;
    }
    throw std::logic_error(std::string(m_declaration.name) + " does not declare " + property);
}

InstanceBuilder& InstanceBuilder::set(const char* property, const std::optional<std::string>& value) {
    return set(property, value ? CIMValue(String(value->data(), value->size())) : CIMValue(CIMNULL));
}

CIMInstance InstanceBuilder::build() const {
    CIMPropertyArray keys;
    for (std::size_t i = 0; i < m_properties.size(); ++i) {
        if (m_declaration.properties[i].role == Role::key && m_properties[i].getValue())
            keys.push_back(m_properties[i]);
    }
    CIMInstance instance(m_declaration.name);
    instance.setKeys(keys);
    instance.setProperties(CIMPropertyArray(m_properties.begin(), m_properties.end()));
    return instance;
}

} // namespace cimom
