#ifndef CIMOM_OBJECTS_INSTANCE_BUILDER_HPP_INCLUDED
#define CIMOM_OBJECTS_INSTANCE_BUILDER_HPP_INCLUDED
#include "OW_CIMValue.hpp"
#include "objects/Provider.hpp"

#include <optional>
#include <string>
#include <vector>

namespace cimom {

/**
 * Makes an instance that agrees with the declaration of its class. Every declared property is there, null
 * until it is set. Setting a property that the class does not declare, or a value of another type, is a
 * mistake of the provider and throws std::logic_error.
 */
class InstanceBuilder {
public:
    /** @param declaration must outlive the builder */
    explicit InstanceBuilder(const ClassDeclaration& declaration);

    /** Sets a value. The null value and an absent one leave the property null. */
    InstanceBuilder& set(const char* property, const OpenWBEM::CIMValue& value);
    InstanceBuilder& set(const char* property, const std::optional<std::string>& value);
    template <class T>
    InstanceBuilder& set(const char* property, const std::optional<T>& value) {
        if (value)
            return set(property, OpenWBEM::CIMValue(*value));
        return set(property, OpenWBEM::CIMValue(OpenWBEM::CIMNULL));
    }

    /** The instance. Key properties that are not null are its keys. */
    OpenWBEM::CIMInstance build() const;

private:
    const ClassDeclaration& m_declaration;
    std::vector<OpenWBEM::CIMProperty> m_properties; // in the order of the declaration
};

} // namespace cimom
#endif
