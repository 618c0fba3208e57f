#include "OW_CIMClient.hpp"

#include "OW_CIMErrorException.hpp"
#include "OW_CIMException.hpp"
#include "OW_CIMInstanceEnumeration.hpp"
#include "OW_HTTPException.hpp"
#include "OW_IOException.hpp"
#include "OW_URL.hpp"
#include "binary/ObjectReader.hpp"
#include "binary/Protocol.hpp"
#include "binary/Reader.hpp"
#include "binary/Writer.hpp"
#include "client/Endpoint.hpp"
#include "client/HTTPConnection.hpp"

#include <algorithm>
#include <atomic>
#include <charconv>
#include <string>
#include <unistd.h>

namespace OpenWBEM {
namespace {

// As it stands in requests: slashes, none of them leading.
std::string wireNameSpace(const String& nameSpace) {
    std::string text = nameSpace.c_str();
    std::replace(text.begin(), text.end(), '\\', '/');
    return text.substr(std::min(text.find_first_not_of('/'), text.size()));
}

// The extension headers of a request and of its answer carry a common number (RFC 2774), new for each
// request.
std::string nextPrefix() {
    static std::atomic<unsigned> requests{0};
    const unsigned number = ++requests % 100;
    return {static_cast<char>('0' + number / 10), static_cast<char>('0' + number % 10)};
}

std::string percentEncoded(const std::string& text) {
    static const char digits[] = "0123456789ABCDEF";
    static const std::string literal = "-_.!~*'()";
    std::string encoded;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        const bool isAlphanumeric =
            (byte >= '0' && byte <= '9') || ((byte | 0x20) >= 'a' && (byte | 0x20) <= 'z');
        if (isAlphanumeric || literal.find(c) != std::string::npos) {
            encoded += c;
        } else {
            encoded += '%';
            encoded += digits[byte >> 4];
            encoded += digits[byte & 0xF];
        }
    }
    return encoded;
}

// Errors that the object manager reports behind the body.
void throwTrailerError(const HTTPReply& reply) {
    if (!reply.trailerCimError.empty())
        OW_THROW(CIMErrorException, reply.trailerCimError.c_str());
    if (reply.trailerStatusCode.empty())
        return;
    int code = 0;
    const char* const end = reply.trailerStatusCode.data() + reply.trailerStatusCode.size();
    const auto parsed = std::from_chars(reply.trailerStatusCode.data(), end, code);
    if (parsed.ec != std::errc() || parsed.ptr != end)
        OW_THROW(StringConversionException,
                 ("Unable to convert \"" + reply.trailerStatusCode + "\" into Int32").c_str());
    const std::string& description = reply.trailerStatusDescription;
    throw CIMException(__FILE__, __LINE__, static_cast<CIMException::ErrNoType>(code),
                       description.empty() ? nullptr : description.c_str());
}

// Consumes the first byte of the body and throws the error that it announces, if any.
void checkResult(binary::Reader& in) {
    switch (static_cast<binary::Result>(in.u8())) {
    case binary::Result::ok:
        return;
    case binary::Result::error:
        OW_THROW(IOException, in.string().c_str());
    case binary::Result::exception: {
        const UInt16 code = in.u16();
        throw CIMException(__FILE__, __LINE__, static_cast<CIMException::ErrNoType>(code),
                           in.string().c_str());
    }
    }
    OW_THROW(IOException, "Unexpected value received from server.");
}

CIMInstanceEnumeration readEnumeration(binary::Reader& in) {
    CIMInstanceEnumeration instances;
    binary::ObjectReader objects(in);
    in.expect(binary::sig::instanceEnumeration);
    while (in.peek() != binary::sig::endOfInstances)
        instances.addElement(objects.instance());
    in.expect(binary::sig::endOfInstances);
    in.expect(binary::sig::endOfInstances);
    return instances;
}

} // namespace

class CIMClient::Impl {
public:
    Impl(const URL& url, const String& ns)
        : nameSpace(ns)
        , m_url(url)
        , m_connection(socketPath(url)) {}

    // Starts the body of a request with what all operations have in common.
    binary::Writer request(binary::Operation operation) const {
        binary::Writer body;
        body.u32(binary::version);
        body.u8(static_cast<UInt8>(operation));
        body.stringArgument(wireNameSpace(nameSpace).c_str());
        return body;
    }

    // Sends a request and returns the body of a good answer.
    std::string exchange(const char* operation, const std::string& body) {
        HTTPReply reply = m_connection.exchange(head(operation, body.size()) + body);
        if (m_usesExtension && (reply.status == 405 || reply.status == 501 || reply.status == 510)) {
            m_usesExtension = false;
            reply = m_connection.exchange(head(operation, body.size()) + body);
        }
        if (reply.status / 100 != 2 || !reply.cimError.empty()) {
            const std::string detail = reply.cimError.empty() ? std::string() : ":" + reply.cimError;
            OW_THROW(HTTPException, ("Unable to process request: " + reply.reason + detail).c_str());
        }
        throwTrailerError(reply);
        return std::move(reply.body);
    }

    String nameSpace;

private:
    std::string head(const char* operation, std::size_t bodySize) const {
        const std::string prefix = nextPrefix();
        const std::string extension = m_usesExtension ? prefix + "-" : "";
        std::string text = m_usesExtension ? "M-POST" : "POST";
        text += " /cimom HTTP/1.1\r\nHost: " + std::string(m_url.host.c_str());
        text += "\r\nUser-Agent: " OW_PACKAGE "/" OW_VERSION;
        text += "\r\nContent-Type: application/x-owbinary; charset=\"utf-8\"";
        text += "\r\nContent-Length: " + std::to_string(bodySize);
        text += "\r\nTE: trailers\r\n";
        if (isLocalHost(m_url) && m_url.principal.empty() && m_url.credential.empty())
            text += "Authorization: OWLocal uid=\"" + std::to_string(::geteuid()) + "\"\r\n";
        if (m_usesExtension)
            text += "Man: http://www.dmtf.org/cim/mapping/http/v1.0; ns=" + prefix + "\r\n";
        text += extension + "CIMOperation: MethodCall\r\n";
        text += extension + "CIMMethod: " + operation + "\r\n";
        text += extension + "CIMObject: " + percentEncoded(wireNameSpace(nameSpace)) + "\r\n\r\n";
        return text;
    }

    const URL m_url;
    HTTPConnection m_connection;
    bool m_usesExtension = true; // M-POST, until a server refuses it
};

CIMClient::CIMClient(const String& url, const String& ns, const ClientAuthCBIFCRef&)
    : m_impl(std::make_shared<Impl>(URL(url), ns)) {}

void CIMClient::setNameSpace(const String& ns) {
    m_impl->nameSpace = ns;
}

String CIMClient::getNameSpace() const {
    return m_impl->nameSpace;
}

CIMInstanceEnumeration CIMClient::enumInstancesE(const String& className, WBEMFlags::EDeepFlag deep,
                                                 WBEMFlags::ELocalOnlyFlag localOnly,
                                                 WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                                                 WBEMFlags::EIncludeClassOriginFlag includeClassOrigin,
                                                 const StringArray* propertyList) {
    binary::Writer body = m_impl->request(binary::Operation::enumerateInstances);
    body.stringArgument(className);
    body.booleanArgument(deep);
    body.booleanArgument(localOnly);
    body.booleanArgument(includeQualifiers);
    body.booleanArgument(includeClassOrigin);
    body.stringListArgument(propertyList);
    const std::string reply = m_impl->exchange("EnumerateInstances", body.bytes());
    binary::Reader in(reply.data(), reply.size());
    checkResult(in);
    return readEnumeration(in);
}

} // namespace OpenWBEM
