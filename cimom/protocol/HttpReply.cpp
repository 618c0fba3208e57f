#include "protocol/HttpReply.hpp"

#include "util/OneLine.hpp"

#include <exception>
#include <utility>

namespace cimom {

HttpReply::HttpReply(OperationReply reply, const RequestHead& request, const char* contentType,
                     std::string number)
    : m_reply(std::move(reply))
    , m_request(request)
    , m_contentType(contentType)
    , m_number(std::move(number)) {
    if (m_reply.error && m_request.takesTrailers && m_request.protocol == Protocol::binary) {
        m_reply.body.clear();
        m_hasErrorTrailers = true;
    }
}

http::ReplyHead HttpReply::head() const {
    http::ReplyHead head;
    head.fields.emplace_back("Content-Type", m_contentType);
    if (m_request.isMPost)
        head.fields.emplace_back("Ext", "");
    if (m_request.isExtended())
        head.fields.emplace_back("Man", "http://www.dmtf.org/cim/mapping/http/v1.0 ; ns=" + m_number);
    head.lastFields.emplace_back(prefix() + "CIMOperation", "MethodResponse");
    head.trailerNames =
        prefix() + "CIMError, " + prefix() + "CIMStatusCode, " + prefix() + "CIMStatusDescription";
    if (m_request.protocol == Protocol::xml)
        head.trailerNames += ", " + prefix() + "CIMStatusCodeDescription";
    return head;
}

bool HttpReply::append(std::string& piece) {
    piece += std::exchange(m_reply.body, std::string());
    try {
        return m_reply.more && m_reply.more->appendNext(piece);
    } catch (const std::exception& e) {
        m_reply.error = operationError(e);
        if (!m_request.takesTrailers)
            throw;
        m_hasErrorTrailers = true;
        piece.clear();
        return false;
    }
}

http::Fields HttpReply::trailers() const {
    if (!m_hasErrorTrailers)
        return {};
    const std::string description = util::onOneLine(m_reply.error->description);
    http::Fields trailers{{prefix() + "CIMStatusCode", std::to_string(m_reply.error->code)}};
    if (description.empty())
        return trailers;
    trailers.emplace_back(prefix() + "CIMStatusDescription",
                          description); // the name that OpenWBEM clients know
    if (m_request.protocol == Protocol::xml)
        trailers.emplace_back(prefix() + "CIMStatusCodeDescription", description); // the name of DSP0200
    return trailers;
}

std::optional<std::string> HttpReply::failure() const {
    if (!m_reply.error)
        return std::nullopt;
    return std::to_string(m_reply.error->code) + " " + m_reply.error->description;
}

} // namespace cimom
