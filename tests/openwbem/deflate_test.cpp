// Compressed replies.
#include "Clients.hpp"

#include <zlib.h>

namespace {

const std::string body = wire::enumeration({wire::instance("Foo", {wire::stringProperty("Name", "value")})});
const char failedReading[] = "IOException: Failed reading data";

std::string deflated(const std::string& bytes) {
    uLongf size = ::compressBound(static_cast<uLong>(bytes.size()));
    std::string result(size, '\0');
    EXPECT_EQ(Z_OK, ::compress2(reinterpret_cast<Bytef*>(result.data()), &size,
                                reinterpret_cast<const Bytef*>(bytes.data()),
                                static_cast<uLong>(bytes.size()), Z_BEST_COMPRESSION));
    result.resize(size);
    return result;
}

std::string marked(const std::string& reply, const std::string& encoding = "deflate") {
    const std::size_t at = reply.find("\r\n") + 2;
    return reply.substr(0, at) + "Content-Encoding: " + encoding + "\r\n" + reply.substr(at);
}

std::string messageOfBody(const std::string& bytes, const std::vector<std::string>& trailers = {}) {
    return messageOfReply(marked(wire::chunkedReply(bytes, trailers)));
}

// An enumeration of one instance with about this number of bytes.
std::string longBody(std::size_t size) {
    return wire::enumeration({wire::instance("Foo", {wire::stringProperty("Name", std::string(size, 'x'))})});
}

TEST(Deflate, IsDecodedInEitherFraming) {
    EXPECT_EQ("no exception", messageOfBody(deflated(body)));
    EXPECT_EQ("no exception", messageOfReply(marked(wire::plainReply(deflated(body)), "Deflate")));
    EXPECT_EQ("no exception", messageOfReply(marked(wire::plainReply(body), "identity")));
}

TEST(Deflate, LeavesTheConnectionOpen) {
    ScriptedPeer peer({Step::answer(marked(wire::chunkedReply(deflated(body))))});
    CIMClient client(peer.url().c_str(), "root/cimv2");
    EXPECT_EQ(1U, read(client));
    EXPECT_EQ(1U, read(client));
    EXPECT_EQ(1U, peer.connections());
}

TEST(Deflate, IsDecodedForAnySizeOfReads) {
    ScriptedPeer peer({Step::answerByteByByte(marked(wire::chunkedReply(deflated(body))))});
    CIMClient client(peer.url().c_str(), "root/cimv2");
    EXPECT_EQ(1U, read(client));
}

TEST(Deflate, TruncatedAtAnyByteIsAnError) {
    const std::string whole = deflated(body);
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_EQ(failedReading, messageOfBody(whole.substr(0, length))) << length;
}

TEST(Deflate, CorruptedAtAnyByteIsAnError) {
    const std::string whole = deflated(body);
    for (std::size_t at = 0; at < whole.size(); ++at) {
        std::string spoilt = whole;
        spoilt[at] = static_cast<char>(~spoilt[at]);
        EXPECT_NE("no exception", messageOfBody(spoilt)) << at;
    }
}

TEST(Deflate, FollowedByOtherBytesIsAnError) {
    EXPECT_EQ(failedReading, messageOfBody(deflated(body) + "x"));
    EXPECT_EQ(failedReading, messageOfBody(deflated(body) + deflated(body)));
}

TEST(Deflate, OfAnEmptyOrTruncatedBodyReportsTheErrorInTheTrailers) {
    const std::vector<std::string> trailers = {"07-CIMStatusCode: 5"};
    for (const std::string& bytes : {std::string(), deflated(""), deflated(body), deflated(body.substr(0, 9)),
                                     deflated(body).substr(0, 9), deflated(body) + "x", std::string("x")})
        EXPECT_EQ("CIMException: class does not exist", messageOfBody(bytes, trailers));
}

TEST(Deflate, ThatExpandsTooFarIsRejected) {
    const std::string fair = longBody(1000000);
    const std::string bomb = longBody(15 << 20);
    EXPECT_EQ("no exception", messageOfBody(deflated(fair)));
    EXPECT_EQ("no exception", messageOfReply(wire::plainReply(bomb)));
    EXPECT_EQ(failedReading, messageOfBody(deflated(bomb)));
}

TEST(Deflate, ThatIsAnEndlessSeriesOfEmptyBlocksIsRejected) {
    const std::string emptyBlock("\0\0\0\xff\xff", 5); // RFC 1951, stored, no bytes
    const std::string head = marked(chunkedHead);
    ScriptedPeer peer({Step::answerWithoutEnd(head + "2\r\n\x78\x01\r\n", "5\r\n" + emptyBlock + "\r\n")});
    CIMClient client(peer.url().c_str(), "root/cimv2");
    EXPECT_EQ(failedReading, messageOfReading(client));
}

TEST(Deflate, IsTheOnlySupportedEncoding) {
    EXPECT_EQ("HTTPException: Unable to process request: unknown Content-Encoding gzip",
              messageOfReply(marked(wire::plainReply(body), "gzip")));
}

} // namespace
