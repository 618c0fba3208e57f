#include "client/Operations.hpp"
#include "xml/Reply.hpp"
#include "xml/Request.hpp"

#include <cstring>
#include <string>

namespace OpenWBEM {
namespace {

const char contentType[] = "application/xml; charset=\"utf-8\"";

class XmlOperations : public Operations {
public:
    using Operations::Operations;

    CIMInstanceEnumeration enumerateInstances(const String& nameSpace, const String& className,
                                              WBEMFlags::EDeepFlag deep,
                                              const ReadOptions& options) override {
        const UInt32 id = nextId();
        CIMInstanceEnumeration all;
        const auto collect = [&all](xml::Reply& reply) {
            CIMInstance instance(CIMNULL);
            while (reply.next(instance))
                all.addElement(std::move(instance));
        };
        exchange(nameSpace, id, true, xml::enumerateInstances(id, nameSpace, className, deep, options),
                 collect);
        return all;
    }

    // Null if the reply has no return value.
    CIMInstance getInstance(const String& nameSpace, const CIMObjectPath& path,
                            const ReadOptions& options) override {
        const UInt32 id = nextId();
        CIMInstance instance(CIMNULL);
        exchange(nameSpace, id, true, xml::getInstance(id, nameSpace, path, options),
                 [&instance](xml::Reply& reply) { instance = reply.instance(); });
        return instance;
    }

    void modifyInstance(const String& nameSpace, const CIMInstance& instance,
                        WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                        const StringArray* properties) override {
        const UInt32 id = nextId();
        exchange(nameSpace, id, false,
                 xml::modifyInstance(id, nameSpace, instance, includeQualifiers, properties),
                 [](xml::Reply&) {});
    }

private:
    template <class Read>
    void exchange(const String& nameSpace, UInt32 id, bool mayRepeat, xml::Request&& request, Read read) {
        const bool isVersion11 = std::strcmp(request.protocolVersion, "1.0") != 0;
        Operations::exchange(
            {contentType, request.method, nameSpace.c_str(), isVersion11, std::move(request.body), mayRepeat},
            [&](io::Source& body) {
                io::Window window(body);
                xml::Reply reply(window, id, request.method);
                read(reply);
                reply.finish();
            });
    }

    UInt32 nextId() { return m_lastId = m_lastId % 65535 + 1; }

    UInt32 m_lastId = 0;
};

} // namespace

std::unique_ptr<Operations> xmlOperations(const URL& url, const ClientAuthCBIFCRef& callback) {
    return std::make_unique<XmlOperations>(url, callback);
}

} // namespace OpenWBEM
