#ifndef OPENWBEM_XML_REQUEST_HPP_INCLUDED
#define OPENWBEM_XML_REQUEST_HPP_INCLUDED
#include "OW_CIMFwd.hpp"
#include "OW_CommonFwd.hpp"
#include "OW_Types.hpp"
#include "OW_WBEMFlags.hpp"

#include <string>

namespace OpenWBEM {
namespace xml {

/** A request of the client for one operation (DSP0200). */
struct Request {
    /** Name of the operation. */
    const char* method;
    /** "1.0"; "1.1" when the operation needs it, which the head of the request must then say as well. */
    const char* protocolVersion;
    /** The document. */
    std::string body;
};

// Requests for the operations of the same names; arguments that equal their defaults are left out. messageId
// is a number that the reply repeats; nameSpace holds names parted by slashes or backslashes, of which any
// number may stand at either end; properties names the properties wanted, null all.

/** CIMException NOT_FOUND for an empty class name. */
Request enumerateInstances(UInt32 messageId, const String& nameSpace, const String& className,
                           WBEMFlags::EDeepFlag deep, WBEMFlags::ELocalOnlyFlag localOnly,
                           WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                           WBEMFlags::EIncludeClassOriginFlag includeClassOrigin,
                           const StringArray* properties);
/** Host and namespace of the path do not matter. An exception for a null path. */
Request getInstance(UInt32 messageId, const String& nameSpace, const CIMObjectPath& path,
                    WBEMFlags::ELocalOnlyFlag localOnly, WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                    WBEMFlags::EIncludeClassOriginFlag includeClassOrigin, const StringArray* properties);
/** CIMException FAILED for a property without a name; an exception for a null instance. */
Request modifyInstance(UInt32 messageId, const String& nameSpace, const CIMInstance& instance,
                       WBEMFlags::EIncludeQualifiersFlag includeQualifiers, const StringArray* properties);

} // namespace xml
} // namespace OpenWBEM
#endif
