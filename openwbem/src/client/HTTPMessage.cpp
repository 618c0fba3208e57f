#include "client/HTTPMessage.hpp"

#include "OW_ClientTimeouts.hpp"
#include "OW_HTTPException.hpp"
#include "OW_IOException.hpp"
#include "OW_Socket.hpp"
#include "util/Ascii.hpp"

#include <algorithm>
#include <boost/beast/http/basic_parser.hpp>
#include <limits>
#include <utility>

namespace OpenWBEM {
namespace {

namespace http = boost::beast::http;
using ascii::equalsIgnoreCase;
using boost::beast::string_view;
using boost::system::error_code;

// Bytes of a head.
const std::size_t headLimit = 64 * 1024;
// Bytes not parsed yet: a chunk header with its extensions, or all trailers, which Beast does not limit.
const std::size_t unparsedLimit = 64 * 1024;

// Bytes received per byte of body, plus an allowance. Framing alone must not keep the reader busy.
const std::uint64_t framingLimit = 64;
const std::uint64_t framingAllowance = 1024ULL * 1024;

const std::size_t prefixSize = 3; // of a trailer name in a reply to M-POST: two digits and a hyphen

using Field = std::pair<std::string, std::string>;

std::string joined(const std::vector<std::string>& values) {
    std::string all;
    for (const std::string& value : values)
        all += (all.empty() ? "" : ", ") + value;
    return all;
}

} // namespace

void throwUnprocessed(const std::string& reason) {
    OW_THROW(HTTPException, ("Unable to process request: " + reason).c_str());
}

// Stores the parts that Beast parses.
class HTTPMessage::Parser final : public http::basic_parser<false> {
public:
    Parser() {
        eager(true);
        header_limit(headLimit);
        body_limit(std::numeric_limits<std::uint64_t>::max()); // decoders limit it
    }

    // Moves bytes from the front of the body to a buffer.
    std::size_t takeBody(char* to, std::size_t size) {
        const std::size_t taken = m_body.copy(to, size, m_taken);
        m_taken += taken;
        if (m_taken == m_body.size()) {
            m_body.clear();
            m_taken = 0;
        }
        return taken;
    }

    unsigned m_status = 0;
    std::string m_statusLine; // empty until parsed
    std::string m_reason;
    std::vector<Field> m_head;
    std::vector<Field> m_trailers;
    std::string m_body;           // bytes received and not all read yet
    std::size_t m_taken = 0;      // bytes of m_body already read
    std::uint64_t m_bodySize = 0; // all bytes of the body so far

private:
    void on_request_impl(http::verb, string_view, string_view, int, error_code&) override {}

    void on_response_impl(int code, string_view reason, int version, error_code&) override {
        m_status = static_cast<unsigned>(code);
        m_reason = reason.to_string();
        m_statusLine = "HTTP/" + std::to_string(version / 10) + "." + std::to_string(version % 10) + " " +
                       std::to_string(code) + " " + m_reason;
    }

    void on_field_impl(http::field, string_view name, string_view value, error_code&) override {
        (is_header_done() ? m_trailers : m_head).emplace_back(name.to_string(), value.to_string());
    }

    void on_header_impl(error_code&) override {}
    void on_body_init_impl(const boost::optional<std::uint64_t>&, error_code&) override {}

    std::size_t on_body_impl(string_view bytes, error_code&) override {
        m_body.append(bytes.data(), bytes.size());
        m_bodySize += bytes.size();
        return bytes.size();
    }

    void on_chunk_header_impl(std::uint64_t, string_view, error_code&) override {}

    std::size_t on_chunk_body_impl(std::uint64_t, string_view bytes, error_code& error) override {
        return on_body_impl(bytes, error);
    }

    void on_finish_impl(error_code&) override {}
};

HTTPMessage::HTTPMessage(Stream& stream)
    : m_stream(stream)
    , m_parser(std::make_unique<Parser>())
    , m_input(unparsedLimit) {}

HTTPMessage::~HTTPMessage() = default;

bool HTTPMessage::readHead() {
    const Deadline deadline("receive", clientTimeouts().receive);
    std::size_t total = 0;
    while (!m_parser->is_header_done()) {
        if (total >= headLimit)
            throwUnprocessed("The head of the reply is too long");
        if (m_isBroken)
            throwMalformed();
        const std::size_t received = receive(deadline);
        if (received == 0 && total == 0)
            return false;
        if (received == 0)
            throwUnprocessed("");
        total += received;
    }
    return true;
}

void HTTPMessage::throwMalformed() const {
    if (m_parser->m_statusLine.empty())
        throwUnprocessed("");
    OW_THROW(HTTPException, ("Received junk from server statusline = " + m_parser->m_statusLine).c_str());
}

// Receives and parses some bytes; returns 0 at the end of the connection.
std::size_t HTTPMessage::receive(const Deadline& deadline) {
    const std::size_t received =
        m_stream.receive(m_input.data() + m_unparsed, m_input.size() - m_unparsed, deadline);
    m_unparsed += received;
    m_received += received;
    if (received > 0)
        parse();
    if (m_received > m_parser->m_bodySize * framingLimit + framingAllowance)
        m_isBroken = true;
    return received;
}

void HTTPMessage::parse() {
    const char* const first = m_input.data();
    const char* next = first;
    const char* const end = first + m_unparsed;
    if (!m_parser->got_some()) // ignore blank lines before the status line
        next = std::find_if(next, end, [](char c) { return c != '\r' && c != '\n'; });
    error_code error;
    next += m_parser->put({next, static_cast<std::size_t>(end - next)}, error);
    m_unparsed = static_cast<std::size_t>(std::copy(next, end, m_input.data()) - first);
    m_isBroken = (error && error != http::error::need_more) || m_unparsed == m_input.size();
}

unsigned HTTPMessage::status() const {
    return m_parser->m_status;
}

const std::string& HTTPMessage::reason() const {
    return m_parser->m_reason;
}

std::vector<std::string> HTTPMessage::fields(const char* name) const {
    std::vector<std::string> values;
    for (const auto& [fieldName, value] : m_parser->m_head)
        if (equalsIgnoreCase(fieldName, name))
            values.push_back(value);
    return values;
}

std::string HTTPMessage::field(const char* name) const {
    return joined(fields(name));
}

bool HTTPMessage::isFramed() const {
    return m_parser->chunked() || m_parser->content_length();
}

std::size_t HTTPMessage::read(char* to, std::size_t size) {
    const Deadline deadline("receive", clientTimeouts().receive);
    while (m_parser->m_body.empty() && !m_parser->is_done()) {
        if (m_isBroken)
            OW_THROW(IOException, "Failed reading data");
        tryReceive(deadline);
    }
    return m_parser->takeBody(to, size);
}

// Receives some bytes, or marks the reply as broken.
void HTTPMessage::tryReceive(const Deadline& deadline) {
    try {
        if (receive(deadline) == 0)
            m_isBroken = true;
    } catch (const SocketTimeoutException&) {
        m_isBroken = true;
    }
}

std::string HTTPMessage::trailer(const char* name) const {
    std::vector<std::string> values;
    for (const auto& [fieldName, value] : m_parser->m_trailers)
        if (equalsIgnoreCase(fieldName, name) ||
            (fieldName.size() > prefixSize &&
             equalsIgnoreCase(std::string_view(fieldName).substr(prefixSize), name)))
            values.push_back(value);
    return joined(values);
}

bool HTTPMessage::leavesConnection() const {
    return m_parser->is_done() && m_parser->keep_alive() && m_unparsed == 0 && m_parser->m_body.empty();
}

} // namespace OpenWBEM
