#include "client/HTTPConnection.hpp"

#include "OW_ClientTimeouts.hpp"
#include "OW_HTTPException.hpp"
#include "OW_IOException.hpp"
#include "OW_SocketException.hpp"

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

#include <cerrno>
#include <cstring>
#include <limits>
#include <optional>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

namespace OpenWBEM {
namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = boost::beast::http;
using boost::system::error_code;
using std::chrono::milliseconds;

const std::uint32_t headerLimit = 64 * 1024; // bytes of status line, headers and trailers
const std::size_t readSize = 64 * 1024;      // bytes asked for at a time

[[noreturn]] void throwConnectFailed(const std::string& path, int error) {
    const std::string reason =
        error == EAGAIN ? std::string("timed out") : std::to_string(error) + "(" + std::strerror(error) + ")";
    OW_THROW(SocketException, ("Failed to connect to: " + path + ": " + reason).c_str());
}

// Connects while the socket still blocks: a full backlog makes connect() wait here, and SO_SNDTIMEO bounds
// the wait (unix(7)), while on a non-blocking socket it would fail at once.
int connectedSocket(const std::string& path, milliseconds timeout) {
    const int fd = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (fd < 0)
        throwConnectFailed(path, errno);
    timeval bound{};
    bound.tv_sec = static_cast<time_t>(timeout.count() / 1000);
    bound.tv_usec = static_cast<suseconds_t>(timeout.count() % 1000 * 1000);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);

    int result = ::setsockopt(fd, SOL_SOCKET, SO_SNDTIMEO, &bound, sizeof bound);
    if (result == 0) {
        do
            result = ::connect(fd, reinterpret_cast<const sockaddr*>(&address), sizeof address);
        while (result != 0 && errno == EINTR);
    }
    if (result != 0) {
        const int error = errno;
        ::close(fd);
        throwConnectFailed(path, error);
    }
    return fd;
}

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

HTTPReply replyOf(Message&& message) {
    HTTPReply reply;
    reply.status = message.result_int();
    reply.reason = message.reason().to_string();
    for (const auto& field : message) {
        const beast::string_view name = field.name_string();
        if (beast::iequals(name, "CIMError"))
            reply.cimError = field.value().to_string();
        else if (isTrailer(name, "CIMError"))
            reply.trailerCimError = field.value().to_string();
        else if (isTrailer(name, "CIMStatusCode") || isTrailer(name, "CIMErrorCode"))
            reply.trailerStatusCode = field.value().to_string();
        else if (isTrailer(name, "CIMStatusDescription") || isTrailer(name, "CIMErrorDescription"))
            reply.trailerStatusDescription = field.value().to_string();
    }
    reply.body = std::move(message.body());
    return reply;
}

} // namespace

// A connected socket with the timed operations that an exchange is made of. Each runs its own event loop to
// the end.
class HTTPConnection::Stream {
public:
    explicit Stream(const std::string& path)
        : m_stream(m_io) {
        m_stream.socket().assign(asio::local::stream_protocol(),
                                 connectedSocket(path, clientTimeouts().connect));
        m_buffer.reserve(readSize);
    }

    error_code send(const std::string& request) {
        std::size_t sent = 0;
        while (sent < request.size()) {
            const error_code error = run(clientTimeouts().send, [&](auto done) {
                m_stream.async_write_some(asio::buffer(request) + sent,
                                          [&sent, done](error_code e, std::size_t n) {
                                              sent += n;
                                              done(e);
                                          });
            });
            if (error)
                return error;
        }
        return error_code();
    }

    // Reads until at least a part of the header, or all of the message, is there.
    error_code receiveSome(Parser& parser) {
        return run(clientTimeouts().receive, [&](auto done) {
            http::async_read_some(m_stream, m_buffer, parser, [done](error_code e, std::size_t) { done(e); });
        });
    }

    // Bytes behind the answer belong to no request; the connection is of no further use then.
    bool isInStep() const { return m_buffer.size() == 0; }

private:
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
    beast::flat_buffer m_buffer;
};

namespace {

bool isDrop(const error_code& error) {
    return error == http::error::end_of_stream || error == asio::error::eof ||
           error == asio::error::broken_pipe || error == asio::error::connection_reset;
}

[[noreturn]] void throwNoAnswer(const error_code& error, milliseconds timeout) {
    std::string reason;
    if (error == beast::error::timeout)
        reason = "Client receive timeout (" + std::to_string(timeout.count() / 1000) + " seconds) expired.";
    else if (!isDrop(error))
        reason = error.message();
    OW_THROW(HTTPException, ("Unable to process request: " + reason).c_str());
}

} // namespace

HTTPConnection::HTTPConnection(const std::string& socketPath)
    : m_path(socketPath) {}

HTTPConnection::~HTTPConnection() = default;

HTTPReply HTTPConnection::exchange(const std::string& request) {
    for (;;) {
        const bool isKept = m_stream && m_stream->isInStep();
        // Out of m_stream for the time of the exchange: whatever leaves this function early closes it.
        std::unique_ptr<Stream> stream = isKept ? std::move(m_stream) : std::make_unique<Stream>(m_path);
        m_stream.reset();

        error_code error = stream->send(request);
        std::optional<Parser> parser(std::in_place);
        parser->header_limit(headerLimit);
        parser->body_limit(std::numeric_limits<std::uint64_t>::max()); // bounded by memory alone
        while (!error && !parser->is_header_done())
            error = stream->receiveSome(*parser);
        const bool isIdleTimeout = !error && parser->get().result_int() == 408;
        if (isKept && (isIdleTimeout || (isDrop(error) && !parser->got_some())))
            continue;
        if (error)
            throwNoAnswer(error, clientTimeouts().receive);

        if (!parser->chunked() && !parser->content_length())
            OW_THROW(HTTPException,
                     "HTTPClient: unable to understand server response. There may be no content in "
                     "the reply.");
        while (!error && !parser->is_done())
            error = stream->receiveSome(*parser);
        if (error)
            OW_THROW(IOException, "Failed reading data");
        if (parser->keep_alive())
            m_stream = std::move(stream);
        return replyOf(parser->release());
    }
}

} // namespace OpenWBEM
