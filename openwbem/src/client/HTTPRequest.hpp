#ifndef OPENWBEM_CLIENT_HTTP_REQUEST_HPP_INCLUDED
#define OPENWBEM_CLIENT_HTTP_REQUEST_HPP_INCLUDED
#include <string>

namespace OpenWBEM {

/** A request for an operation (DSP0200), whatever the encoding of its body. */
struct HTTPRequest {
    const char* contentType;
    /** Name of the operation. */
    std::string cimMethod;
    /** The namespace, as it is; it is escaped on its way. */
    std::string cimObject;
    /** Whether the operation is one of protocol version 1.1, which the request then says. */
    bool isVersion11;
    std::string body;
    /** Whether it may be carried out twice. Only then is it sent again when it is not known what became of
     * it.
     */
    bool mayRepeat;
};

/**
 * The head of a request as it is sent. Extension headers have a prefix, new with every call in this process,
 * and the method is M-POST (RFC 2774), unless usesExtension is false.
 *
 * @param authorization value of the header Authorization, which is left out when empty
 * Throws HTTPException when a value holds control characters, which would end its line.
 */
std::string requestHead(const HTTPRequest& request, const std::string& host, const std::string& authorization,
                        bool usesExtension);

} // namespace OpenWBEM
#endif
