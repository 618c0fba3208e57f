#ifndef CIMOM_PROVIDERS_ASSOCIATION_HPP_INCLUDED
#define CIMOM_PROVIDERS_ASSOCIATION_HPP_INCLUDED
#include "OW_CIMObjectPath.hpp"
#include "objects/Provider.hpp"

#include <functional>
#include <utility>
#include <vector>

namespace cimom {

/** One of the two references of an association: its property, and the class that it leads to. */
struct AssociationEnd {
    const char* property;
    const char* referenceClass;
};

/** The values of the two references of an instance. */
using References = std::pair<OpenWBEM::CIMObjectPath, OpenWBEM::CIMObjectPath>;

/** A class whose instances are pairs of references, both of them keys. */
class Association : public Provider {
public:
    /** @param references all pairs, as they are at the moment of the call */
    Association(const char* className, AssociationEnd first, AssociationEnd second,
                std::function<std::vector<References>()> references);

    const ClassDeclaration& declaration() const override { return m_declaration; }
    InstanceSource instances() const override;

private:
    const ClassDeclaration m_declaration;
    const std::function<std::vector<References>()> m_references;
};

} // namespace cimom
#endif
