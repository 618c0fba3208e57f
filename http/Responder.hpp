#ifndef HTTP_RESPONDER_HPP_INCLUDED
#define HTTP_RESPONDER_HPP_INCLUDED
#include <boost/beast/http/message.hpp>
#include <boost/beast/http/string_body.hpp>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace http {

/** A request: its head and, once that has arrived, its body. */
using Request = boost::beast::http::request<boost::beast::http::string_body>;

/** Names and values of header fields, in the order in which they are sent. */
using Fields = std::vector<std::pair<std::string, std::string>>;

/** An error response, `<status> <reason>: <detail>`. It has no body, and the connection is closed after it.
 */
struct ErrorResponse {
    unsigned status;
    const char* reason;
    /** May hold what a client sent: it is sent and logged as util::onOneAsciiLine() gives it. */
    std::string detail;
    /** A field of the head; null for none. */
    const char* field = nullptr;
    std::string value{};
};

/** The head of a reply. The server adds Date, Cache-Control, Server and the fields that frame the body. */
struct ReplyHead {
    /** Sent before Transfer-Encoding. */
    Fields fields{};
    /** Sent after Transfer-Encoding, before Content-Length and Trailer. */
    Fields lastFields{};
    /** Value of the field Trailer; empty for a reply without trailers. */
    std::string trailerNames{};
};

/** A reply of status 200, whose body is made while it is sent. */
class Reply {
public:
    virtual ~Reply() = default;

    virtual ReplyHead head() const = 0;
    /**
     * Appends the next part of the body. Returns false for the last part. The server has not sent `piece`
     * yet: a reply that fails may clear it. An exception closes the connection.
     */
    virtual bool append(std::string& piece) = 0;
    /** Fields after the body, for a client that reads trailers. Called after the last part. */
    virtual Fields trailers() const { return {}; }
    /** What was requested, for the log. */
    virtual std::string title() const = 0;
    /** Why the request failed, for the log; nothing if it did not. Called after the last part. */
    virtual std::optional<std::string> failure() const { return std::nullopt; }
};

using Answer = std::variant<ErrorResponse, std::unique_ptr<Reply>>;

/**
 * Answers the requests of one connection, one after the other. Each passes check(), authorize() and answer(),
 * in this order; an error response ends the connection. An exception ends the connection and passes through
 * the io_context. The server destroys the responder after the connection.
 */
class Responder {
public:
    using Authorized = std::function<void(std::optional<ErrorResponse>)>;
    using Answered = std::function<void(Answer)>;

    virtual ~Responder() = default;

    /** Checks the head of a request before the body is read. Nothing if the request is acceptable. */
    virtual std::optional<ErrorResponse> check(const Request& request) = 0;
    /**
     * Decides whether the client may make a request. Calls `done` once, now or later: with nothing if it may.
     * After Limits::request the client gets status 408, and a call of `done` has no effect.
     *
     * @param request valid until `done` is called or destroyed
     */
    virtual void authorize(const Request& request, Authorized done);
    /**
     * Answers a request. Calls `done` once, now or later, with a reply that does not refer to the request.
     * There is no time limit.
     *
     * @param request valid until `done` is called or destroyed
     */
    virtual void answer(const Request& request, Answered done) = 0;
};

inline void Responder::authorize(const Request&, Authorized done) {
    done(std::nullopt);
}

} // namespace http
#endif
