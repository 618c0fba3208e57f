#include "providers/Association.hpp"

#include "schema/InstanceBuilder.hpp"

namespace cimom {

using namespace OpenWBEM;

namespace {

PropertyDeclaration reference(const AssociationEnd& end) {
    return {end.property, CIMDataType::REFERENCE, Role::key, false, end.referenceClass};
}

} // namespace

ClassDeclaration associationClass(const char* name, const AssociationEnd& first,
                                  const AssociationEnd& second) {
    return {name, {reference(first), reference(second)}};
}

std::unique_ptr<InstanceSource> associations(const ClassDeclaration& association,
                                             std::vector<References> pairs) {
    return eachOf(std::move(pairs), [&association](const References& pair) {
        return InstanceBuilder(association)
            .set(association.properties[0].name, CIMValue(pair.first))
            .set(association.properties[1].name, CIMValue(pair.second))
            .build();
    });
}

} // namespace cimom
