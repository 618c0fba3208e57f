#ifndef CIMOM_SCHEMA_PROPERTY_FILTER_HPP_INCLUDED
#define CIMOM_SCHEMA_PROPERTY_FILTER_HPP_INCLUDED
#include "OW_CIMInstance.hpp"
#include "OW_CIMProperty.hpp"
#include "schema/ClassDeclaration.hpp"

#include <optional>
#include <set>
#include <vector>

namespace cimom {

/** Names of the properties that a client wants. */
using PropertyList = std::vector<OpenWBEM::CIMName>;

/** A property list as the object manager takes it. Valid as long as the list. */
inline const PropertyList* orNull(const std::optional<PropertyList>& list) {
    return list ? &*list : nullptr;
}

/** Whether properties of instances name the class that declares them. */
enum class ClassOrigin { excluded, included };

/** Reduces what a class or an instance carries to what a client wants to see. */
class PropertyFilter {
public:
    /**
     * @param declaration must outlive the filter
     * @param wanted null for all properties; names that the class does not declare are ignored
     */
    PropertyFilter(const ClassDeclaration& declaration, const PropertyList* wanted,
                   ClassOrigin origin = ClassOrigin::excluded);

    OpenWBEM::CIMPropertyArray wantedOf(const OpenWBEM::CIMPropertyArray& properties) const;
    /** Leaves an instance its wanted properties and all keys. */
    void apply(OpenWBEM::CIMInstance& instance) const;

private:
    const ClassDeclaration& m_declaration;
    std::optional<std::set<OpenWBEM::CIMName>> m_wanted; // nothing: all
    ClassOrigin m_origin;
};

} // namespace cimom
#endif
