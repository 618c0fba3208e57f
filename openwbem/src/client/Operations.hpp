#ifndef OPENWBEM_CLIENT_OPERATIONS_HPP_INCLUDED
#define OPENWBEM_CLIENT_OPERATIONS_HPP_INCLUDED
#include "OW_CIMInstance.hpp"
#include "OW_CIMInstanceEnumeration.hpp"
#include "OW_CIMObjectPath.hpp"
#include "OW_WBEMFlags.hpp"
#include "client/HTTPClient.hpp"
#include "types/ReadOptions.hpp"

#include <memory>
#include <type_traits>

namespace OpenWBEM {

/**
 * The operations of one object manager (DSP0200) in one of the protocols. Whatever the peer does, an
 * operation throws nothing but an OpenWBEM::Exception, or std::bad_alloc or std::length_error when out of
 * memory, and the next operation works.
 */
class Operations {
public:
    Operations(const URL& url, const ClientAuthCBIFCRef& callback)
        : m_http(url, callback) {}
    virtual ~Operations() = default;
    virtual CIMInstanceEnumeration enumerateInstances(const String& nameSpace, const String& className,
                                                      WBEMFlags::EDeepFlag deep,
                                                      const ReadOptions& options) = 0;
    virtual CIMInstance getInstance(const String& nameSpace, const CIMObjectPath& path,
                                    const ReadOptions& options) = 0;
    virtual void modifyInstance(const String& nameSpace, const CIMInstance& instance,
                                WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                                const StringArray* properties) = 0;

protected:
    /** Sends a request and returns the result of decode(body of the reply). */
    template <class Decode>
    auto exchange(const HTTPRequest& request, Decode decode);

private:
    HTTPClient m_http;
};

/** The operations in the binary protocol and in CIM-XML. Throw what the constructor of HTTPClient throws. */
std::unique_ptr<Operations> binaryOperations(const URL& url, const ClientAuthCBIFCRef& callback);
std::unique_ptr<Operations> xmlOperations(const URL& url, const ClientAuthCBIFCRef& callback);

template <class Decode>
auto Operations::exchange(const HTTPRequest& request, Decode decode) {
    const std::unique_ptr<HTTPReply> reply = m_http.exchange(request);
    try {
        if constexpr (std::is_void_v<decltype(decode(*reply))>) {
            decode(*reply);
            reply->finish();
        } else {
            auto result = decode(*reply);
            reply->finish();
            return result;
        }
    } catch (const Exception&) {
        reply->throwReportedError(); // says more than the decoding error
        throw;
    }
}

} // namespace OpenWBEM
#endif
