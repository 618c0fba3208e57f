#include "providers/Association.hpp"

#include "objects/InstanceBuilder.hpp"

namespace cimom {

using namespace OpenWBEM;

namespace {

PropertyDeclaration reference(const AssociationEnd& end) {
    return {end.property, CIMDataType::REFERENCE, Role::key, false, end.referenceClass};
}

} // namespace

Association::Association(const char* className, AssociationEnd first, AssociationEnd second,
                         std::function<std::vector<References>()> references)
    : m_declaration{className, {reference(first), reference(second)}}
    , m_references(std::move(references)) {}

InstanceSource Association::instances() const {
    return eachOf(m_references(), [this](const References& each) {
        return InstanceBuilder(m_declaration)
            .set(m_declaration.properties[0].name, CIMValue(each.first))
            .set(m_declaration.properties[1].name, CIMValue(each.second))
            .build();
    });
}

} // namespace cimom
