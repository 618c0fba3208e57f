#include "binary/Request.hpp"

#include "binary/ObjectWriter.hpp"
#include "binary/Protocol.hpp"

namespace OpenWBEM {
namespace binary {
namespace {

// What all requests start with.
Writer request(Operation operation, const String& nameSpace) {
    Writer body;
    body.u32(version);
    body.u8(static_cast<UInt8>(operation));
    body.stringArgument(nameSpace);
    return body;
}

} // namespace

std::string enumerateInstances(const String& nameSpace, const String& className, WBEMFlags::EDeepFlag deep,
                               WBEMFlags::ELocalOnlyFlag localOnly,
                               WBEMFlags::EIncludeQualifiersFlag qualifiers,
                               WBEMFlags::EIncludeClassOriginFlag classOrigin,
                               const StringArray* properties) {
    Writer body = request(Operation::enumerateInstances, nameSpace);
    body.stringArgument(className);
    body.booleanArgument(deep);
    body.booleanArgument(localOnly);
    body.booleanArgument(qualifiers);
    body.booleanArgument(classOrigin);
    body.stringListArgument(properties);
    return body.release();
}

std::string getInstance(const String& nameSpace, const CIMObjectPath& path,
                        WBEMFlags::ELocalOnlyFlag localOnly, WBEMFlags::EIncludeQualifiersFlag qualifiers,
                        WBEMFlags::EIncludeClassOriginFlag classOrigin, const StringArray* properties) {
    Writer body = request(Operation::getInstance, nameSpace);
    write(body, path);
    body.booleanArgument(localOnly);
    body.booleanArgument(qualifiers);
    body.booleanArgument(classOrigin);
    body.stringListArgument(properties);
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
