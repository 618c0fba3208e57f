#include "client/HTTPConnection.hpp"

#include "OW_ClientTimeouts.hpp"
#include "OW_HTTPException.hpp"
#include "OW_IOException.hpp"
#include "OW_SocketException.hpp"
#include "client/UnixSocket.hpp"

#include <boost/asio/buffer.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/local/stream_protocol.hpp>
#include <boost/beast/core/basic_stream.hpp>
#include <boost/beast/core/buffers_range.hpp>
#include <boost/beast/core/error.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/message.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/read.hpp>
#include <boost/optional.hpp>
#include <boost/system/system_error.hpp>

#include <cerrno>
#include <chrono>
#include <iterator>
#include <limits>
#include <stdexcept>
#include <sys/socket.h>

namespace OpenWBEM {
namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = boost::beast::http;
using boost::system::error_code;
using std::chrono::milliseconds;

const std::uint32_t headerLimit = 64 * 1024; // bytes of status line and headers
const std::size_t readSize = 64 * 1024;      // bytes asked for at a time

// A body that takes memory for what has arrived. Beast's own takes it for what the peer announces.
struct ArrivedBody {
    using value_type = std::string;

    class reader {
    public:
        template <bool isRequest, class Fields>
        reader(http::header<isRequest, Fields>&, std::string& body)
            : m_body(body) {}

        void init(const boost::optional<std::uint64_t>&, error_code& error) { error = {}; }

        template <class Buffers>
        std::size_t put(const Buffers& buffers, error_code& error) {
            const std::size_t before = m_body.size();
            for (const asio::const_buffer buffer : beast::buffers_range_ref(buffers))
                m_body.append(static_cast<const char*>(buffer.data()), buffer.size());
            error = {};
            return m_body.size() - before;
        }

        void finish(error_code& error) { error = {}; }

    private:
        std::string& m_body;
    };
};

using Message = http::response<ArrivedBody>;
using Parser = http::response_parser<ArrivedBody>;

// Trailer names carry a prefix of two digits and a hyphen.
bool isTrailer(beast::string_view name, beast::string_view wanted) {
    return name.size() == wanted.size() + 3 && beast::iequals(name.substr(3), wanted);
}

// What a reply says before its body. Only what follows the body is a trailer, whatever its name.
HTTPReply replyOf(const Message& head) {
    HTTPReply reply;
    reply.status = head.result_int();
    reply.reason = head.reason().to_string();
    reply.cimError = head["CIMError"].to_string();
    return reply;
}

void addTrailers(const Message& message, std::size_t headFields, HTTPReply& reply) {
    auto field = std::next(message.begin(), static_cast<std::ptrdiff_t>(headFields));
    for (; field != message.end(); ++field) {
        const beast::string_view name = field->name_string();
        if (isTrailer(name, "CIMError"))
            reply.trailerCimError = field->value().to_string();
        else if (isTrailer(name, "CIMStatusCode") || isTrailer(name, "CIMErrorCode"))
            reply.trailerStatusCode = field->value().to_string();
        else if (isTrailer(name, "CIMStatusDescription") || isTrailer(name, "CIMErrorDescription"))
            reply.trailerStatusDescription = field->value().to_string();
    }
}

bool isGood(const HTTPReply& reply) {
    return reply.status / 100 == 2;
}

bool isDrop(const error_code& error) {
    return error == http::error::end_of_stream || error == asio::error::eof ||
           error == asio::error::broken_pipe || error == asio::error::connection_reset;
}

[[noreturn]] void throwNoAnswer(const std::string& reason) {
    OW_THROW(HTTPException, ("Unable to process request: " + reason).c_str());
}

[[noreturn]] void throwTimedOut(const char* action, milliseconds timeout) {
    throwNoAnswer(std::string("Client ") + action + " timeout (" + std::to_string(timeout.count() / 1000) +
                  " seconds) expired.");
}

} // namespace

// A connected socket with the timed operations that an exchange is made of. Each runs its own event loop to
// the end.
class HTTPConnection::Stream {
public:
    explicit Stream(const std::string& path)
        : m_stream(m_io) {
        UnixSocket socket(path, clientTimeouts().connect);
        m_stream.socket().assign(asio::local::stream_protocol(), socket.number());
        socket.release();
        m_buffer.reserve(readSize);
    }

    // Nothing has come since the last answer, neither bytes nor the end, so that what comes next answers the
    // next request.
    bool isInStep() {
        char byte;
        return m_buffer.size() == 0 &&
               ::recv(m_stream.socket().native_handle(), &byte, 1, MSG_PEEK | MSG_DONTWAIT) < 0 &&
               errno == EAGAIN;
    }

    // A peer that stops reading may still have answered, so that its going away is left to the reader.
    void send(const std::string& request) {
        std::size_t sent = 0;
        while (sent < request.size()) {
            const error_code error = run(clientTimeouts().send, [&](auto done) {
                m_stream.async_write_some(asio::buffer(request) + sent,
                                          [&sent, done](error_code e, std::size_t n) {
                                              sent += n;
                                              done(e);
                                          });
            });
            if (error == beast::error::timeout)
                throwTimedOut("send", clientTimeouts().send);
            if (isDrop(error))
                return;
            if (error)
                throwNoAnswer(error.message());
        }
    }

    // Reads the head whole, or as far as it comes.
    error_code receiveHead(Parser& parser) {
        error_code error;
        while (!error && !parser.is_header_done())
            error = receiveSome(parser);
        return error;
    }

    error_code receiveBody(Parser& parser) {
        error_code error;
        while (!error && !parser.is_done())
            error = receiveSome(parser);
        return error;
    }

private:
    error_code receiveSome(Parser& parser) {
        return run(clientTimeouts().receive, [&](auto done) {
            http::async_read_some(m_stream, m_buffer, parser, [done](error_code e, std::size_t) { done(e); });
        });
    }

    template <class Start>
    error_code run(milliseconds timeout, Start start) {
        error_code result;
        m_stream.expires_after(timeout);
        start([&result](error_code e) { result = e; });
        m_io.restart();
        m_io.run();
        return result;
    }

    asio::io_context m_io{1};
    beast::basic_stream<asio::local::stream_protocol> m_stream;
    // Body bytes leave it as they arrive; what else a peer sends without end, chunk extensions or trailers,
    // fills it.
    beast::flat_buffer m_buffer{readSize + headerLimit};
};

HTTPConnection::HTTPConnection(const std::string& socketPath)
    : m_path(socketPath) {}

HTTPConnection::~HTTPConnection() = default;

HTTPReply HTTPConnection::exchange(const std::string& request) {
    try {
        const bool isKept = m_stream && m_stream->isInStep();
        if (isKept)
            if (std::optional<HTTPReply> reply = tryExchange(request, std::move(m_stream), true))
                return std::move(*reply);
        m_stream.reset();
        return *tryExchange(request, std::make_unique<Stream>(m_path), false);
    } catch (const boost::system::system_error& e) {
        OW_THROW(SocketException, (m_path + ": " + e.what()).c_str()); // no descriptors left, most likely
    } catch (const std::length_error&) {
        OW_THROW(IOException, "Failed reading data: a field of the reply is too long");
    }
}

std::optional<HTTPReply> HTTPConnection::tryExchange(const std::string& request,
                                                     std::unique_ptr<Stream> stream, bool isKept) {
    Parser parser;
    parser.header_limit(headerLimit);
    parser.body_limit(std::numeric_limits<std::uint64_t>::max()); // bounded by memory alone
    stream->send(request);
    const error_code headError = stream->receiveHead(parser);
    const bool isDropped = isDrop(headError) && !parser.got_some();
    const bool isIdleTimeout = !headError && parser.get().result_int() == 408;
    if (isKept && (isDropped || isIdleTimeout))
        return std::nullopt;
    if (headError == beast::error::timeout)
        throwTimedOut("receive", clientTimeouts().receive);
    if (headError)
        throwNoAnswer(isDrop(headError) ? std::string() : headError.message());

    HTTPReply reply = replyOf(parser.get());
    const auto headFields = static_cast<std::size_t>(std::distance(parser.get().begin(), parser.get().end()));
    const bool isFramed = parser.chunked() || parser.content_length();
    if (!isFramed && isGood(reply))
        OW_THROW(HTTPException,
                 "HTTPClient: unable to understand server response. There may be no content in the reply.");
    const bool isWhole = isFramed && !stream->receiveBody(parser);
    if (!isWhole && isGood(reply))
        OW_THROW(IOException, "Failed reading data");
    if (isWhole) {
        addTrailers(parser.get(), headFields, reply);
        reply.body = std::move(parser.get().body());
        if (parser.keep_alive())
            m_stream = std::move(stream);
    }
    return reply;
}

} // namespace OpenWBEM
