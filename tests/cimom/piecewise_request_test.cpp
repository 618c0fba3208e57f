// Recorded requests that arrive in pieces or in chunks get the same answers as in one piece.
#include "Chunked.hpp"
#include "Client.hpp"
#include "MutatedRequests.hpp"
#include "RecordedSchema.hpp"
#include "SessionRun.hpp"
#include "protocol/RequestHead.hpp"

#include <algorithm>
#include <gtest/gtest.h>

using namespace cimom;

namespace {

/** The reply to a request that arrives in these pieces, without its date. */
std::string replyTo(SessionRun& session, const std::vector<std::string_view>& pieces) {
    std::string reply = session.answerTo(pieces);
    const std::size_t date = reply.find("Date: ");
    if (date != std::string::npos)
        reply.erase(date, reply.find("\r\n", date) - date);
    return reply;
}

std::string replyTo(SessionRun& session, std::string_view request) {
    return replyTo(session, std::vector<std::string_view>{request});
}

const char* const extensions = R"(;a;b=c; d = "e\"f;g")";
const char* const trailers = "X-One: 1\r\nX-Folded: a\r\n b\r\nX-Empty:\r\n";

/** Sends each recorded request of a protocol split at each byte, and byte by byte. */
void splitEach(Protocol protocol) {
    ObjectManager objects = recordedManagerOfShortReplies();
    SessionRun session(objects);
    for (const std::string& request : recordedRequests()) {
        const bool isBinary =
            request.find("\r\nContent-Type: application/x-owbinary\r\n") != std::string::npos;
        if (isBinary != (protocol == Protocol::binary))
            continue;
        const std::string expected = replyTo(session, request);
        ASSERT_EQ(0u, expected.find("HTTP/1.1 200 Ok")) << request;
        const std::string_view whole = request;
        for (std::size_t at = 1; at < whole.size(); ++at)
            ASSERT_EQ(expected, replyTo(session, {whole.substr(0, at), whole.substr(at)}))
                << "split at " << at << " of " << request;
        ASSERT_EQ(expected, replyTo(session, piecesOf(whole, 1))) << request;
    }
}

} // namespace

TEST(PiecewiseRequests, ABinaryRequestMayBeSplitAtEachByte) {
    splitEach(Protocol::binary);
}

TEST(PiecewiseRequests, AnXmlRequestMayBeSplitAtEachByte) {
    splitEach(Protocol::xml);
}

TEST(PiecewiseRequests, ARequestMayBeChunkedInEveryWay) {
    ObjectManager objects = recordedManagerOfShortReplies();
    SessionRun session(objects);
    for (const std::string& request : recordedRequests()) {
        const std::string expected = replyTo(session, request);
        for (const std::string& chunks : {chunkedRequest(request, 1), chunkedRequest(request, 7, {"000"}),
                                          chunkedRequest(request, 100, {"0", extensions, trailers})}) {
            ASSERT_EQ(expected, replyTo(session, chunks)) << chunks;
            ASSERT_EQ(expected, replyTo(session, piecesOf(chunks, 1))) << "byte by byte: " << chunks;
        }
    }
}

// The chunk framing may be split at any byte when the server reads.
TEST(PiecewiseRequests, ChunksMayBeSplitAtEachByteOfTheirLines) {
    ObjectManager objects = recordedManagerOfShortReplies();
    SessionRun session(objects);
    for (const std::string& request : recordedRequests()) {
        const std::string expected = replyTo(session, request);
        const std::string chunks = chunkedRequest(request, request.size(), {"", extensions, trailers});
        const std::string_view whole = chunks;
        const std::size_t data = whole.find(extensions) + std::string_view(extensions).size() + 2;
        for (std::size_t at = whole.find("\r\n\r\n"); at < whole.size(); ++at) {
            if (at == data + 1) // splits within the data of a chunk are all alike
                at = whole.rfind(extensions) - 4;
            ASSERT_EQ(expected, replyTo(session, {whole.substr(0, at), whole.substr(at)}))
                << "split at " << at << " of " << chunks;
        }
    }
}

TEST(PiecewiseRequests, ABodyWithoutBytesIsRefusedHoweverItsLastChunkArrives) {
    ObjectManager objects = recordedManagerOfShortReplies();
    SessionRun session(objects);
    const std::string head =
        "POST / HTTP/1.1\r\nContent-Type: application/xml\r\nTransfer-Encoding: chunked\r\n\r\n";
    const std::string_view last = "0\r\n\r\n";
    for (std::size_t first = 1; first < last.size(); ++first) {
        for (std::size_t second = first; second < last.size(); ++second)
            EXPECT_EQ(0u, replyTo(session, {head, last.substr(0, first), last.substr(first, second - first),
                                            last.substr(second)})
                              .find("HTTP/1.1 400 Bad request: The request has no body"))
                << first << ", " << second;
    }
}

TEST(PiecewiseRequests, TrailersAddNothingToTheHead) {
    ObjectManager objects = recordedManagerOfShortReplies();
    SessionRun session(objects);
    const std::string request = xmlRequest("EnumerateClassNames", "");
    const std::string reply = replyTo(session, request);
    EXPECT_EQ(0u, reply.find("HTTP/1.1 200 Ok"));
    EXPECT_EQ(reply, replyTo(session, chunkedRequest(request, 100, {"", "", "TE: trailers\r\n"})));
}
