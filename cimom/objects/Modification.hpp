#ifndef CIMOM_OBJECTS_MODIFICATION_HPP_INCLUDED
#define CIMOM_OBJECTS_MODIFICATION_HPP_INCLUDED
#include "OW_CIMInstance.hpp"
#include "objects/ObjectManager.hpp"
#include "objects/Provider.hpp"
#include "state/SiteValues.hpp"

namespace cimom {

/**
 * What a request to modify an instance writes, see ObjectManager::modifyInstance(): the values of the site's
 * properties, by the names that the class declares.
 *
 * @param listed the only properties of the request that count, all when null
 * @param present the instance as it is
 */
SiteValues::Values valuesToWrite(const OpenWBEM::CIMInstance& request, const PropertyList* listed,
                                 const OpenWBEM::CIMInstance& present, const ClassDeclaration& declaration);

} // namespace cimom
#endif
