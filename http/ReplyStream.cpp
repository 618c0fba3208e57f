#include "http/ReplyStream.hpp"

#include "system/Text.hpp"

#include <algorithm>
#include <boost/asio/buffer.hpp>
#include <boost/beast/core/buffers_to_string.hpp>
#include <boost/beast/http/chunk_encode.hpp>
#include <boost/beast/http/fields.hpp>
#include <utility>

namespace cimom {

namespace http = boost::beast::http;

namespace {

const std::size_t chunkSize = 4096;

std::string chunks(const std::string& content) {
    std::string result;
    for (std::size_t at = 0; at < content.size(); at += chunkSize) {
        const boost::asio::const_buffer chunk(content.data() + at, std::min(chunkSize, content.size() - at));
        result += boost::beast::buffers_to_string(http::make_chunk(chunk));
    }
    return result;
}

bool isChunked(Framing framing) {
    return framing == Framing::chunks || framing == Framing::chunksAndTrailers;
}

} // namespace

ReplyStream::ReplyStream(OperationReply reply, const RequestHead& request, const char* contentType,
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

std::string ReplyStream::next() {
    if (m_isDone)
        return std::string();
    std::string bytes = content();
    m_isDone = !m_reply.more;
    const std::size_t length = bytes.size();
    if (!m_isBegun)
        m_framing = framing();
    if (isChunked(m_framing))
        bytes = chunks(bytes);
    if (!std::exchange(m_isBegun, true))
        bytes.insert(0, answerHead(m_request, m_contentType, m_framing, length, m_number));
    if (m_isDone)
        bytes += ended();
    return bytes;
}

/** Of a body whose first piece is made. */
Framing ReplyStream::framing() const {
    if (m_request.takesTrailers)
        return Framing::chunksAndTrailers;
    if (m_isDone)
        return Framing::length;
    return m_request.takesChunks ? Framing::chunks : Framing::connection;
}

/** The next piece of the body. */
std::string ReplyStream::content() {
    std::string piece = std::exchange(m_reply.body, std::string());
    try {
        while (m_reply.more && piece.size() < pieceSize) {
            if (!m_reply.more(piece))
                m_reply.more = nullptr;
        }
    } catch (const std::exception& e) {
        m_reply.error = operationError(e);
        if (!m_request.takesTrailers)
            throw;
        m_reply.more = nullptr;
        m_hasErrorTrailers = true;
        piece.clear();
    }
    return piece;
}

/** What follows the body. */
std::string ReplyStream::ended() const {
    if (!isChunked(m_framing))
        return std::string();
    return boost::beast::buffers_to_string(http::make_chunk_last(trailers()));
}

boost::beast::http::fields ReplyStream::trailers() const {
    http::fields trailers;
    if (!m_hasErrorTrailers)
        return trailers;
    const std::string prefix = m_request.isExtended() ? m_number + "-" : std::string();
    const std::string description = onOneLine(m_reply.error->description);
    trailers.set(prefix + "CIMStatusCode", std::to_string(m_reply.error->code));
    if (description.empty())
        return trailers;
    trailers.set(prefix + "CIMStatusDescription", description); // the name that OpenWBEM clients know
    if (m_request.protocol == Protocol::xml)
        trailers.set(prefix + "CIMStatusCodeDescription", description); // the name of DSP0200
    return trailers;
}

} // namespace cimom
