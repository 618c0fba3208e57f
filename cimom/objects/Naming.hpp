#ifndef CIMOM_OBJECTS_NAMING_HPP_INCLUDED
#define CIMOM_OBJECTS_NAMING_HPP_INCLUDED
#include "OW_CIMObjectPath.hpp"
#include "OW_CIMValue.hpp"
#include "objects/Provider.hpp"

namespace cimom {

/** The namespace that all classes live in. */
extern const char* const onlyNameSpace;

/**
 * A value as one of the type that its property is declared with. Throws CIMException TYPE_MISMATCH, with the
 * name of the property, when it is none.
 */
OpenWBEM::CIMValue converted(const OpenWBEM::CIMValue& value, const PropertyDeclaration& declared);

/**
 * The path of the instance that properties name: its keys are those of the class, as declared, with the
 * values that the properties of the same names have. Throws CIMException INVALID_PARAMETER when one has no
 * value.
 */
OpenWBEM::CIMObjectPath pathNamedBy(const OpenWBEM::CIMPropertyArray& properties,
                                    const ClassDeclaration& declaration);

/** The path of an instance that a provider made. */
OpenWBEM::CIMObjectPath pathOf(const OpenWBEM::CIMInstance& instance);

/** The property of a name, whatever the case of its letters; null when the class does not declare it. */
const PropertyDeclaration* find(const ClassDeclaration& declaration, const OpenWBEM::CIMName& name);

} // namespace cimom
#endif
