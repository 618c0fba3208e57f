#ifndef OPENWBEM_BINARY_REQUEST_HPP_INCLUDED
#define OPENWBEM_BINARY_REQUEST_HPP_INCLUDED
#include "OW_CIMFwd.hpp"
#include "OW_WBEMFlags.hpp"
#include "types/ReadOptions.hpp"

#include <string>

namespace OpenWBEM {
namespace binary {

/**
 * Bodies of requests. The namespace is sent as given. A null path or instance throws an OpenWBEM::Exception.
 */
std::string enumerateInstances(const String& nameSpace, const String& className, WBEMFlags::EDeepFlag deep,
                               const ReadOptions& options = {});
std::string getInstance(const String& nameSpace, const CIMObjectPath& path, const ReadOptions& options = {});
/** A null property list means all properties of the instance. */
std::string modifyInstance(const String& nameSpace, const CIMInstance& instance,
                           WBEMFlags::EIncludeQualifiersFlag qualifiers, const StringArray* properties);

} // namespace binary
} // namespace OpenWBEM
#endif
