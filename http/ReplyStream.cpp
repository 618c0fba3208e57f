#include "http/ReplyStream.hpp"

#include "util/OneLine.hpp"

#include <algorithm>
#include <charconv>
#include <ctime>
#include <string_view>
#include <utility>

namespace http {
namespace {

const std::size_t chunkSize = 4096;

/** The present time in the form of RFC 9110, HTTP-date. */
std::string date() {
    const std::time_t now = std::time(nullptr);
    std::tm utc{};
    ::gmtime_r(&now, &utc);
    char text[32];
    return std::string(text, std::strftime(text, sizeof text, "%a, %d %b %Y %H:%M:%S GMT", &utc));
}

std::string line(const std::string& name, const std::string& value) {
    return name + ": " + value + "\r\n";
}

std::string lines(const Fields& fields) {
    std::string text;
    for (const auto& [name, value] : fields)
        text += line(name, value);
    return text;
}

/** The status line and the fields that every response has. */
std::string beginning(const std::string& status, const std::string& server) {
    return status + "\r\n" + line("Date", date()) + line("Cache-Control", "no-cache") +
           line("Server", server);
}

std::string chunks(std::string_view content) {
    std::string result;
    while (!content.empty()) {
        const std::string_view chunk = content.substr(0, chunkSize);
        char size[16];
        result.append(size, std::to_chars(std::begin(size), std::end(size), chunk.size(), 16).ptr);
        result.append("\r\n").append(chunk).append("\r\n");
        content.remove_prefix(chunk.size());
    }
    return result;
}

} // namespace

ReplyStream::ReplyStream(std::unique_ptr<Reply> reply, const ReplyForm& form, const std::string& server)
    : m_reply(std::move(reply))
    , m_form(form)
    , m_server(server) {}

std::string ReplyStream::next() {
    if (m_isDone)
        return std::string();
    const std::string body = piece();
    const std::string head = m_framing ? std::string() : headOf(body.size());
    if (m_framing == Framing::length || m_framing == Framing::connection)
        return head + body;
    return head + chunks(body) + end();
}

/** The next piece of the body. */
std::string ReplyStream::piece() {
    std::string piece;
    while (!m_isDone && piece.size() < pieceSize)
        m_isDone = !m_reply->append(piece);
    return piece;
}

/** Makes the head of a reply whose first piece has a length, and decides how the body ends. */
std::string ReplyStream::headOf(std::size_t length) {
    const ReplyHead head = m_reply->head();
    m_framing = framing(head);
    std::string text = beginning("HTTP/1.1 200 Ok", m_server) + lines(head.fields);
    if (m_framing == Framing::chunks || m_framing == Framing::chunksAndTrailers)
        text += line("Transfer-Encoding", "chunked");
    text += lines(head.lastFields);
    if (m_framing == Framing::length)
        text += line("Content-Length", std::to_string(length));
    if (m_framing == Framing::chunksAndTrailers)
        text += line("Trailer", head.trailerNames);
    return text + "\r\n";
}

ReplyStream::Framing ReplyStream::framing(const ReplyHead& head) const {
    if (m_form.mayHaveTrailers && !head.trailerNames.empty())
        return Framing::chunksAndTrailers;
    if (m_isDone)
        return Framing::length;
    return m_form.mayHaveChunks ? Framing::chunks : Framing::connection;
}

/** What follows the chunks of a piece: the last chunk after the last piece. */
std::string ReplyStream::end() const {
    if (!m_isDone)
        return std::string();
    const bool hasTrailers = m_framing == Framing::chunksAndTrailers;
    return "0\r\n" + (hasTrailers ? lines(m_reply->trailers()) : std::string()) + "\r\n";
}

std::string bytesOf(const ErrorResponse& error, bool isHeadRead, const std::string& server) {
    const std::string status = std::string(isHeadRead ? "HTTP/1.1 " : "HTTP/1.0 ") +
                               std::to_string(error.status) + " " + error.reason + ": " +
                               util::onOneAsciiLine(error.detail);
    return beginning(status, server) + (error.field ? line(error.field, error.value) : std::string()) +
           line("Connection", "close") + line("Content-Length", "0") + "\r\n";
}

} // namespace http
