#ifndef OPENWBEM_XML_REQUEST_HPP_INCLUDED
#define OPENWBEM_XML_REQUEST_HPP_INCLUDED
#include "OW_CIMFwd.hpp"
#include "OW_CommonFwd.hpp"
#include "OW_Types.hpp"
#include "OW_WBEMFlags.hpp"
#include "types/ReadOptions.hpp"

#include <string>

namespace OpenWBEM {
namespace xml {

/** A request for one operation (DSP0200). */
struct Request {
    /** Name of the operation. */
    const char* method;
    /** "1.0", or "1.1" if the operation needs it; the HTTP head must then announce it, too. */
    const char* protocolVersion;
    /** The document. */
    std::string body;
};

// Arguments that equal their defaults are omitted. The reply repeats messageId. Slashes and backslashes
// separate the names in nameSpace; leading and trailing ones are ignored.

/** Throws CIMException NOT_FOUND for an empty class name. */
Request enumerateInstances(UInt32 messageId, const String& nameSpace, const String& className,
                           WBEMFlags::EDeepFlag deep, const ReadOptions& options = {});
/** Ignores host and namespace of the path. A null path throws an OpenWBEM::Exception. */
Request getInstance(UInt32 messageId, const String& nameSpace, const CIMObjectPath& path,
                    const ReadOptions& options = {});
/**
 * A null property list means all properties of the instance. Throws CIMException FAILED for a property
 * without a name; a null instance throws an OpenWBEM::Exception.
 */
Request modifyInstance(UInt32 messageId, const String& nameSpace, const CIMInstance& instance,
                       WBEMFlags::EIncludeQualifiersFlag includeQualifiers, const StringArray* properties);

} // namespace xml
} // namespace OpenWBEM
#endif
