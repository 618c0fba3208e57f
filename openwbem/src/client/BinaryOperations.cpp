#include "binary/Reply.hpp"
#include "binary/Request.hpp"
#include "client/Operations.hpp"

#include <algorithm>
#include <string>

namespace OpenWBEM {
namespace {

const char contentType[] = "application/x-owbinary; charset=\"utf-8\"";

// The namespace as requests state it: slashes for backslashes, no leading ones.
std::string wireNameSpace(const String& nameSpace) {
    std::string text = nameSpace.c_str();
    std::replace(text.begin(), text.end(), '\\', '/');
    return text.substr(std::min(text.find_first_not_of('/'), text.size()));
}

class BinaryOperations : public Operations {
public:
    using Operations::Operations;

    CIMInstanceEnumeration enumerateInstances(const String& nameSpace, const String& className,
                                              WBEMFlags::EDeepFlag deep,
                                              const ReadOptions& options) override {
        const std::string space = wireNameSpace(nameSpace);
        return exchange({contentType, "EnumerateInstances", space, false,
                         binary::enumerateInstances(space.c_str(), className, deep, options), true},
                        binary::readInstances);
    }

    CIMInstance getInstance(const String& nameSpace, const CIMObjectPath& path,
                            const ReadOptions& options) override {
        const std::string space = wireNameSpace(nameSpace);
        return exchange({contentType, "GetInstance", space, false,
                         binary::getInstance(space.c_str(), path, options), true},
                        binary::readInstance);
    }

    void modifyInstance(const String& nameSpace, const CIMInstance& instance,
                        WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                        const StringArray* properties) override {
        const std::string space = wireNameSpace(nameSpace);
        exchange({contentType, "ModifyInstance", space, true,
                  binary::modifyInstance(space.c_str(), instance, includeQualifiers, properties), false},
                 binary::readDone);
    }
};

} // namespace

std::unique_ptr<Operations> binaryOperations(const URL& url, const ClientAuthCBIFCRef& callback) {
    return std::make_unique<BinaryOperations>(url, callback);
}

} // namespace OpenWBEM
