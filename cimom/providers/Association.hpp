#ifndef CIMOM_PROVIDERS_ASSOCIATION_HPP_INCLUDED
#define CIMOM_PROVIDERS_ASSOCIATION_HPP_INCLUDED
#include "OW_CIMObjectPath.hpp"
#include "schema/ClassDeclaration.hpp"
#include "schema/InstanceSource.hpp"

#include <memory>
#include <utility>
#include <vector>

namespace cimom {

/** One of the two references of an association: its property, and the class that it leads to. */
struct AssociationEnd {
    const char* property;
    const char* referenceClass;
};

/** A class of two properties, which are references and keys. */
ClassDeclaration associationClass(const char* name, const AssociationEnd& first,
                                  const AssociationEnd& second);

/** The values of the two references of an instance, in declared order. */
using References = std::pair<OpenWBEM::CIMObjectPath, OpenWBEM::CIMObjectPath>;

/**
 * The instances of an association.
 *
 * @param association declared by associationClass(); must outlive the source
 */
std::unique_ptr<InstanceSource> associations(const ClassDeclaration& association,
                                             std::vector<References> pairs);

} // namespace cimom
#endif
