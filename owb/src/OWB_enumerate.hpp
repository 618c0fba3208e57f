#ifndef OWB_ENUMERATE_HPP
#define OWB_ENUMERATE_HPP
/* The one enumeration that reads and writes share, so that row n is the same instance for both. */
#include "OW_CIMClient.hpp"
#include "OW_CIMInstanceEnumeration.hpp"
#include "OW_WBEMFlags.hpp"

/* The instances of a class and of its subclasses, with all properties, without qualifiers and class origin.
 */
inline OpenWBEM::CIMInstanceEnumeration owbEnumerate(OpenWBEM::CIMClient& client, const char* className) {
    using namespace OpenWBEM;
    return client.enumInstancesE(className, WBEMFlags::E_DEEP, WBEMFlags::E_NOT_LOCAL_ONLY,
                                 WBEMFlags::E_EXCLUDE_QUALIFIERS, WBEMFlags::E_EXCLUDE_CLASS_ORIGIN, NULL);
}

#endif
