#ifndef OPENWBEM_BINARY_REQUEST_HPP_INCLUDED
#define OPENWBEM_BINARY_REQUEST_HPP_INCLUDED
#include "OW_CIMFwd.hpp"
#include "OW_WBEMFlags.hpp"

#include <string>

namespace OpenWBEM {
namespace binary {

/**
 * Bodies of requests. The namespace goes as it is given; a null property list asks for all properties. A null
 * path or instance throws an OpenWBEM::Exception.
 */
std::string enumerateInstances(const String& nameSpace, const String& className, WBEMFlags::EDeepFlag deep,
                               WBEMFlags::ELocalOnlyFlag localOnly,
                               WBEMFlags::EIncludeQualifiersFlag qualifiers,
                               WBEMFlags::EIncludeClassOriginFlag classOrigin, const StringArray* properties);
std::string getInstance(const String& nameSpace, const CIMObjectPath& path,
                        WBEMFlags::ELocalOnlyFlag localOnly, WBEMFlags::EIncludeQualifiersFlag qualifiers,
                        WBEMFlags::EIncludeClassOriginFlag classOrigin, const StringArray* properties);
std::string modifyInstance(const String& nameSpace, const CIMInstance& instance,
                           WBEMFlags::EIncludeQualifiersFlag qualifiers, const StringArray* properties);

} // namespace binary
} // namespace OpenWBEM
#endif
