#include "schema/PropertyFilter.hpp"

namespace cimom {

using namespace OpenWBEM;

namespace {

/** The listed names that the class declares. A client may list far more names than a class has. */
std::set<CIMName> declaredNames(const PropertyList& listed, const ClassDeclaration& declaration) {
    std::set<CIMName> declared;
    for (const PropertyDeclaration& property : declaration.properties)
        declared.insert(property.name);
    std::set<CIMName> names;
    for (const CIMName& name : listed) {
        if (declared.count(name) > 0)
            names.insert(name);
    }
    return names;
}

} // namespace

PropertyFilter::PropertyFilter(const ClassDeclaration& declaration, const PropertyList* wanted,
                               ClassOrigin origin)
    : m_declaration(declaration)
    , m_origin(origin) {
    if (wanted)
        m_wanted = declaredNames(*wanted, declaration);
}

CIMPropertyArray PropertyFilter::wantedOf(const CIMPropertyArray& properties) const {
    if (!m_wanted)
        return properties;
    CIMPropertyArray kept;
    for (const CIMProperty& property : properties) {
        if (m_wanted->count(property.getName()) > 0)
            kept.push_back(property);
    }
    return kept;
}

void PropertyFilter::apply(CIMInstance& instance) const {
    if (!m_wanted && m_origin == ClassOrigin::excluded)
        return;
    CIMPropertyArray properties = wantedOf(instance.getProperties());
    if (m_origin == ClassOrigin::included) {
        for (CIMProperty& property : properties)
            property.setOriginClass(m_declaration.name);
    }
    instance.setProperties(properties);
}

} // namespace cimom
