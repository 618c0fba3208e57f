#include "http/ReplyHead.hpp"

#include "system/Text.hpp"

#include <boost/beast/http/empty_body.hpp>
#include <boost/beast/http/message.hpp>
#include <boost/beast/http/write.hpp>
#include <ctime>
#include <sstream>

namespace cimom {

namespace http = boost::beast::http;
using http::field;
using Head = http::response<http::empty_body>;

namespace {

/** The present moment in the form of RFC 9110, HTTP-date. */
std::string date() {
    const std::time_t now = std::time(nullptr);
    std::tm utc{};
    ::gmtime_r(&now, &utc);
    char text[32];
    return std::string(text, std::strftime(text, sizeof text, "%a, %d %b %Y %H:%M:%S GMT", &utc));
}

/** A head with what stands in every reply. */
Head head(unsigned status, const std::string& reason) {
    Head head;
    head.result(status);
    head.reason(reason);
    head.set(field::date, date());
    head.set(field::cache_control, "no-cache");
    head.set(field::server, "owbcimomd/" OWBCIMOMD_VERSION " (CIMOM)");
    return head;
}

/** The names of the trailers that a reply may have. */
std::string trailerNames(Protocol protocol, const std::string& prefix) {
    std::string names = prefix + "CIMError, " + prefix + "CIMStatusCode, " + prefix + "CIMStatusDescription";
    if (protocol == Protocol::xml)
        names += ", " + prefix + "CIMStatusCodeDescription";
    return names;
}

std::string text(const Head& head) {
    std::ostringstream out;
    out << head.base();
    return out.str();
}

} // namespace

std::string answerHead(const RequestHead& request, const char* contentType, Framing framing,
                       std::size_t length, const std::string& number) {
    const std::string prefix = request.isExtended() ? number + "-" : std::string();
    Head answer = head(200, "Ok");
    answer.set(field::content_type, contentType);
    if (request.isMPost)
        answer.set("Ext", "");
    if (request.isExtended())
        answer.set("Man", "http://www.dmtf.org/cim/mapping/http/v1.0 ; ns=" + number);
    if (framing == Framing::chunks || framing == Framing::chunksAndTrailers)
        answer.set(field::transfer_encoding, "chunked");
    answer.set(prefix + "CIMOperation", "MethodResponse");
    if (framing == Framing::length)
        answer.set(field::content_length, std::to_string(length));
    if (framing == Framing::chunksAndTrailers)
        answer.set(field::trailer, trailerNames(request.protocol, prefix));
    return text(answer);
}

std::string refusalHead(const Refusal& refusal, bool isUnderstood) {
    Head answer = head(refusal.status, std::string(refusal.reason) + ": " + onOneAsciiLine(refusal.detail));
    answer.version(isUnderstood ? 11 : 10);
    if (refusal.header)
        answer.set(refusal.header, refusal.value);
    answer.set(field::connection, "close");
    answer.set(field::content_length, "0");
    return text(answer);
}

} // namespace cimom
