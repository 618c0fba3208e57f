#include "Pages.hpp"
#include "http/RequestRules.hpp"

#include <boost/asio/buffer.hpp>
#include <boost/beast/http/error.hpp>
#include <gtest/gtest.h>

using namespace http;

namespace {

/** The status with which a server of GET and POST answers a head; 200 if it reads on. */
unsigned statusOf(const std::string& head, const std::string& methods = "GET, POST") {
    RequestParser parser;
    boost::system::error_code error;
    parser.put(boost::asio::buffer(head), error);
    EXPECT_TRUE(parser.is_header_done()) << head;
    const std::optional<ErrorResponse> response = headError(parser, methods);
    return response ? response->status : 200;
}

ReplyForm formFor(const std::string& head) {
    RequestParser parser;
    boost::system::error_code error;
    parser.put(boost::asio::buffer(head), error);
    return replyForm(parser.get());
}

} // namespace

TEST(RequestRules, OnlyTheMethodsOfTheServerAreAllowed) {
    EXPECT_EQ(200u, statusOf(get("/")));
    EXPECT_EQ(405u, statusOf(get("/"), "POST, M-POST"));
    EXPECT_EQ(405u, statusOf("POS / HTTP/1.1\r\nContent-Length: 1\r\n\r\n"));
    EXPECT_EQ(405u, statusOf("post / HTTP/1.1\r\nContent-Length: 1\r\n\r\n")) << "methods are case-sensitive";
    EXPECT_EQ(200u, statusOf("M-POST / HTTP/1.1\r\nContent-Length: 1\r\n\r\n", "POST, M-POST"));
}

TEST(RequestRules, ABodyMustHaveALengthOrChunks) {
    EXPECT_EQ(411u, statusOf("POST / HTTP/1.1\r\n\r\n"));
    EXPECT_EQ(200u, statusOf("POST / HTTP/1.1\r\nTransfer-Encoding: chunked\r\n\r\n"));
    EXPECT_EQ(200u, statusOf("POST / HTTP/1.1\r\nTransfer-Encoding: Chunked\r\n\r\n"));
}

TEST(RequestRules, OtherCodingsAreNotSupported) {
    EXPECT_EQ(501u, statusOf("POST / HTTP/1.1\r\nTransfer-Encoding: gzip, chunked\r\n\r\n"));
    EXPECT_EQ(406u, statusOf(get("/", "Content-Encoding: deflate\r\n")));
    EXPECT_EQ(200u, statusOf(get("/", "Content-Encoding: Identity\r\n")));
}

TEST(RequestRules, TheVersionAndTheHeadSayWhatTheClientReads) {
    const ReplyForm old = formFor("GET / HTTP/1.0\r\nTE: trailers\r\nConnection: keep-alive\r\n\r\n");
    EXPECT_FALSE(old.mayHaveChunks || old.mayHaveTrailers || old.keepsAlive);
    const ReplyForm plain = formFor(get("/"));
    EXPECT_TRUE(plain.mayHaveChunks && plain.keepsAlive);
    EXPECT_FALSE(plain.mayHaveTrailers);
    EXPECT_TRUE(formFor(get("/", "TE: deflate, trailers\r\n")).mayHaveTrailers);
    EXPECT_FALSE(formFor(get("/", "Connection: close\r\n")).keepsAlive);
}

TEST(RequestRules, AConnectionThatEndsGetsNoErrorResponse) {
    const Limits limits;
    EXPECT_FALSE(readError(boost::beast::http::error::end_of_stream, limits));
    EXPECT_FALSE(
        readError(boost::system::errc::make_error_code(boost::system::errc::connection_reset), limits));
    EXPECT_EQ(413u, readError(boost::beast::http::error::body_limit, limits)->status);
    EXPECT_EQ(431u, readError(boost::beast::http::error::header_limit, limits)->status);
}
