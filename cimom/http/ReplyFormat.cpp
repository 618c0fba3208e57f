#include "http/ReplyFormat.hpp"

#include "Text.hpp"

#include <algorithm>
#include <boost/asio/buffer.hpp>
#include <boost/beast/core/buffers_to_string.hpp>
#include <boost/beast/http/chunk_encode.hpp>
#include <boost/beast/http/empty_body.hpp>
#include <boost/beast/http/fields.hpp>
#include <boost/beast/http/message.hpp>
#include <boost/beast/http/write.hpp>
#include <ctime>
#include <sstream>

namespace cimom {

namespace asio = boost::asio;
namespace http = boost::beast::http;
using http::field;
using ReplyHead = http::response<http::empty_body>;

namespace {

const std::size_t chunkSize = 4096;
const char* const contentType = "application/x-owbinary; charset=\"utf-8\"";

/** The present moment in the form of RFC 9110, HTTP-date. */
std::string date() {
    const std::time_t now = std::time(nullptr);
    std::tm utc{};
    ::gmtime_r(&now, &utc);
    char text[32];
    return std::string(text, std::strftime(text, sizeof text, "%a, %d %b %Y %H:%M:%S GMT", &utc));
}

/** A head with what stands in every reply. */
ReplyHead replyHead(unsigned status, const std::string& reason) {
    ReplyHead head;
    head.result(status);
    head.reason(reason);
    head.set(field::date, date());
    head.set(field::cache_control, "no-cache");
    head.set(field::server, "owbcimomd/" OWBCIMOMD_VERSION " (CIMOM)");
    return head;
}

std::string text(const ReplyHead& head) {
    std::ostringstream out;
    out << head.base();
    return out.str();
}

http::fields trailers(const OperationReply& reply, const std::string& prefix) {
    http::fields fields;
    if (!reply.error)
        return fields;
    fields.set(prefix + "CIMStatusCode", std::to_string(reply.error->code));
    if (!reply.error->description.empty())
        fields.set(prefix + "CIMStatusDescription", onOneLine(reply.error->description));
    return fields;
}

std::string chunked(const std::string& body, const http::fields& trailers) {
    std::string result;
    for (std::size_t at = 0; at < body.size(); at += chunkSize) {
        const std::size_t size = std::min(chunkSize, body.size() - at);
        result +=
            boost::beast::buffers_to_string(http::make_chunk(asio::const_buffer(body.data() + at, size)));
    }
    return result + boost::beast::buffers_to_string(http::make_chunk_last(trailers));
}

} // namespace

std::string ReplyFormat::answer(const OperationReply& reply, const RequestHead& request) {
    m_nameSpaceNumber = (m_nameSpaceNumber + 1) % 100;
    const std::string number =
        std::to_string(m_nameSpaceNumber / 10) + std::to_string(m_nameSpaceNumber % 10);
    const std::string prefix = number + "-";

    ReplyHead head = replyHead(200, "Ok");
    head.set(field::content_type, contentType);
    if (request.isMPost)
        head.set("Ext", "");
    head.set("Man", "http://www.dmtf.org/cim/mapping/http/v1.0 ; ns=" + number);
    if (request.takesTrailers)
        head.set(field::transfer_encoding, "chunked");
    head.set(prefix + "CIMOperation", "MethodResponse");
    if (!request.takesTrailers) {
        head.set(field::content_length, std::to_string(reply.body.size()));
        return text(head) + reply.body;
    }
    head.set(field::trailer,
             prefix + "CIMError, " + prefix + "CIMStatusCode, " + prefix + "CIMStatusDescription");
    return text(head) + chunked(reply.error ? std::string() : reply.body, trailers(reply, prefix));
}

std::string ReplyFormat::refusal(const Refusal& refusal, bool isUnderstood) const {
    ReplyHead head =
        replyHead(refusal.status, std::string(refusal.reason) + ": " + onOneLine(refusal.detail));
    head.version(isUnderstood ? 11 : 10);
    head.set(field::connection, "close");
    head.set(field::content_length, "0");
    return text(head);
}

} // namespace cimom
