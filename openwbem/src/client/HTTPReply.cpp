#include "client/HTTPReply.hpp"

#include "OW_CIMErrorException.hpp"
#include "OW_CIMException.hpp"
#include "OW_HTTPException.hpp"
#include "OW_IOException.hpp"
#include "util/Ascii.hpp"

#include <charconv>
#include <initializer_list>

namespace OpenWBEM {
namespace {

// Bytes of a body after its decoded part.
const std::size_t restLimit = 1024 * 1024;

// The first trailer of several alternative names; "" if there is none.
std::string trailer(const HTTPMessage& message, std::initializer_list<const char*> names) {
    for (const char* const name : names) {
        std::string value = message.trailer(name);
        if (!value.empty())
            return value;
    }
    return std::string();
}

void throwTrailerError(const HTTPMessage& message) {
    const std::string protocolError = message.trailer("CIMError");
    if (!protocolError.empty())
        OW_THROW(CIMErrorException, protocolError.c_str());
    const std::string code = trailer(message, {"CIMStatusCode", "CIMErrorCode"});
    if (code.empty())
        return;
    int number = 0;
    const char* const end = code.data() + code.size();
    const auto parsed = std::from_chars(code.data(), end, number);
    if (parsed.ec != std::errc() || parsed.ptr != end)
        OW_THROW(StringConversionException, ("Unable to convert \"" + code + "\" into Int32").c_str());
    const std::string description =
        trailer(message, {"CIMStatusDescription", "CIMStatusCodeDescription", "CIMErrorDescription"});
    throw CIMException(__FILE__, __LINE__, static_cast<CIMException::ErrNoType>(number),
                       description.empty() ? nullptr : description.c_str());
}

} // namespace

HTTPReply::HTTPReply(std::unique_ptr<Stream> connection, std::unique_ptr<Stream>& kept)
    : m_connection(std::move(connection))
    , m_kept(kept)
    , m_message(*m_connection) {}

void HTTPReply::expectBody() {
    const std::string cimError = m_message.field("CIMError");
    const bool isGood = m_message.status() / 100 == 2 && !m_message.reason().empty();
    if (!isGood || !cimError.empty()) {
        const std::string detail = cimError.empty() ? std::string() : ":" + cimError;
        throwUnprocessed(m_message.reason() + detail);
    }
    if (!m_message.isFramed())
        OW_THROW(HTTPException,
                 "HTTPClient: unable to understand server response. There may be no content in the reply.");
    const std::string encoding = m_message.field("Content-Encoding");
    if (ascii::equalsIgnoreCase(encoding, "deflate"))
        m_inflater.emplace(m_message);
    else if (!encoding.empty() && !ascii::equalsIgnoreCase(encoding, "identity"))
        throwUnprocessed("unknown Content-Encoding " + encoding);
}

std::size_t HTTPReply::read(char* to, std::size_t size) {
    return m_inflater ? m_inflater->read(to, size) : m_message.read(to, size);
}

void HTTPReply::finish() {
    try {
        skip(*this);
    } catch (const IOException&) {
        throwReportedError();
        throw;
    }
    throwTrailerError(m_message);
}

void HTTPReply::throwReportedError() {
    try {
        skip(m_message);
    } catch (const IOException&) {
        return;
    }
    throwTrailerError(m_message);
}

// Reads the rest of the body, after which the connection can be reused.
void HTTPReply::skip(io::Source& rest) {
    char ignored[4096];
    std::size_t total = 0;
    for (std::size_t got = rest.read(ignored, sizeof ignored); got > 0;
         got = rest.read(ignored, sizeof ignored)) {
        total += got;
        if (total > restLimit)
            OW_THROW(IOException, "Failed reading data");
    }
    if (m_connection && m_message.leavesConnection())
        m_kept = std::move(m_connection);
}

} // namespace OpenWBEM
