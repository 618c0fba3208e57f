#ifndef CIMOM_OBJECTS_MODIFICATION_HPP_INCLUDED
#define CIMOM_OBJECTS_MODIFICATION_HPP_INCLUDED
#include "OW_CIMInstance.hpp"
#include "schema/ClassDeclaration.hpp"
#include "schema/PropertyFilter.hpp"
#include "state/SiteValues.hpp"

namespace cimom {

/**
 * The values that a request to modify an instance writes, by the declared names of their properties. Throws
 * CIMException as ObjectManager::modifyInstance() does.
 *
 * @param listed the properties of the request to consider; null for all
 * @param present the present instance
 */
SiteValues::Values valuesToWrite(const OpenWBEM::CIMInstance& request, const PropertyList* listed,
                                 const OpenWBEM::CIMInstance& present, const ClassDeclaration& declaration);

} // namespace cimom
#endif
