#ifndef CIMOM_SCHEMA_INSTANCE_BUILDER_HPP_INCLUDED
#define CIMOM_SCHEMA_INSTANCE_BUILDER_HPP_INCLUDED
#include "OW_CIMInstance.hpp"
#include "OW_CIMProperty.hpp"
#include "OW_CIMValue.hpp"
#include "schema/ClassDeclaration.hpp"

#include <optional>
#include <string>
#include <vector>

namespace cimom {

/**
 * Makes an instance of a declared class. It carries every declared property; a property is null until it is
 * set. Setting an undeclared property or a value of another type is an error in the program and throws
 * std::logic_error.
 */
class InstanceBuilder {
public:
    /** @param declaration must outlive the builder */
    explicit InstanceBuilder(const ClassDeclaration& declaration);

    /** Sets a value. A null or absent value leaves the property as it is. */
    InstanceBuilder& set(const char* property, const OpenWBEM::CIMValue& value);
    InstanceBuilder& set(const char* property, const std::optional<std::string>& value);
    template <class T>
    InstanceBuilder& set(const char* property, const std::optional<T>& value) {
        if (value)
            return set(property, OpenWBEM::CIMValue(*value));
        return set(property, OpenWBEM::CIMValue(OpenWBEM::CIMNULL));
    }

    /** The instance. Its keys are the key properties that are not null. */
    OpenWBEM::CIMInstance build() const;

private:
    const ClassDeclaration& m_declaration;
    std::vector<OpenWBEM::CIMProperty> m_properties; // in the order of the declaration
};

} // namespace cimom
#endif
