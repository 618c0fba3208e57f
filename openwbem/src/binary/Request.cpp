#include "binary/Request.hpp"

#include "binary/ObjectWriter.hpp"
#include "binary/Protocol.hpp"

namespace OpenWBEM {
namespace binary {
namespace {

// The start of any request.
Writer request(Operation operation, const String& nameSpace) {
    Writer body;
    body.u32(version);
    body.u8(static_cast<UInt8>(operation));
    body.stringArgument(nameSpace);
    return body;
}

void append(Writer& body, const ReadOptions& options) {
    body.booleanArgument(options.localOnly);
    body.booleanArgument(options.includeQualifiers);
    body.booleanArgument(options.includeClassOrigin);
    body.stringListArgument(options.properties);
}

} // namespace

std::string enumerateInstances(const String& nameSpace, const String& className, WBEMFlags::EDeepFlag deep,
                               const ReadOptions& options) {
    Writer body = request(Operation::enumerateInstances, nameSpace);
    body.stringArgument(className);
    body.booleanArgument(deep);
    append(body, options);
    return body.release();
}

std::string getInstance(const String& nameSpace, const CIMObjectPath& path, const ReadOptions& options) {
    Writer body = request(Operation::getInstance, nameSpace);
    write(body, path);
    append(body, options);
    return body.release();
}

std::string modifyInstance(const String& nameSpace, const CIMInstance& instance,
                           WBEMFlags::EIncludeQualifiersFlag qualifiers, const StringArray* properties) {
    Writer body = request(Operation::modifyInstance, nameSpace);
    write(body, instance);
    body.booleanArgument(qualifiers);
    body.stringListArgument(properties);
    return body.release();
}

} // namespace binary
} // namespace OpenWBEM
