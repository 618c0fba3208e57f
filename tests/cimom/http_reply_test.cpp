// HTTP replies to operations.
#include "http/ReplyStream.hpp"
#include "protocol/HttpReply.hpp"

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>

using namespace cimom;

namespace {

struct ClientOf {
    RequestHead head;
    http::ReplyForm form;
};

const ClientOf oldClient{{Protocol::binary, false, false}, {false, false, false}};
const ClientOf plainClient{{Protocol::binary, false, false}, {true, false, true}};
const ClientOf xmlClient{{Protocol::xml, false, true}, {true, true, true}};
const ClientOf extendedXmlClient{{Protocol::xml, true, true}, {true, true, true}};
const ClientOf trailerClient{{Protocol::binary, true, true}, {true, true, true}};

/** A source of the pieces that a function returns. */
class Pieces : public ReplyPieces {
public:
    explicit Pieces(std::function<bool(std::string&)> appendNext)
        : m_appendNext(std::move(appendNext)) {}

    bool appendNext(std::string& body) override { return m_appendNext(body); }

private:
    std::function<bool(std::string&)> m_appendNext;
};

/** A reply of `count` elements of a size between "<" and ">". */
OperationReply elements(std::size_t count, std::size_t size) {
    OperationReply reply;
    reply.body = "<";
    reply.more = std::make_unique<Pieces>([count, size](std::string& body) mutable {
        if (count == 0) {
            body += ">";
            return false;
        }
        --count;
        body.append(size, 'x');
        return true;
    });
    return reply;
}

/** A reply that fails after some elements. */
OperationReply failing(std::size_t count, std::size_t size) {
    OperationReply reply;
    reply.more = std::make_unique<Pieces>([count, size](std::string& body) mutable {
        if (count-- == 0)
            throw std::runtime_error("the lamp is broken");
        body.append(size, 'x');
        return true;
    });
    return reply;
}

OperationReply failed() {
    OperationReply reply;
    reply.body = "error in the body";
    reply.error = OperationError{5, "QAV_Nope"};
    return reply;
}

const std::string server = "owbcimomd";

http::ReplyStream streamOf(OperationReply reply, const ClientOf& client) {
    return {std::make_unique<HttpReply>(std::move(reply), client.head, "text/x", "07"), client.form, server};
}

std::vector<std::string> pieces(OperationReply reply, const ClientOf& client) {
    http::ReplyStream stream = streamOf(std::move(reply), client);
    std::vector<std::string> all;
    for (std::string piece = stream.next(); !piece.empty(); piece = stream.next())
        all.push_back(piece);
    EXPECT_EQ("", stream.next()) << "the end is final";
    return all;
}

std::string bodyOf(const std::string& reply) {
    return reply.substr(reply.find("\r\n\r\n") + 4);
}

bool hasLine(const std::string& reply, const std::string& line) {
    return reply.find("\r\n" + line + "\r\n") != std::string::npos;
}

std::string ended(const std::string& reply, std::size_t size) {
    return reply.substr(reply.size() - std::min(size, reply.size()));
}

} // namespace

TEST(HttpReply, AShortReplyHasALength) {
    for (const ClientOf& client : {oldClient, plainClient}) {
        const std::vector<std::string> all = pieces(elements(2, 3), client);
        ASSERT_EQ(1u, all.size());
        EXPECT_TRUE(hasLine(all[0], "Content-Length: 8"));
        EXPECT_TRUE(hasLine(all[0], "Content-Type: text/x"));
        EXPECT_TRUE(hasLine(all[0], "07-CIMOperation: MethodResponse"));
        EXPECT_EQ("<xxxxxx>", bodyOf(all[0]));
    }
}

TEST(HttpReply, AReplyIsChunkedForAClientThatReadsTrailers) {
    const std::vector<std::string> all = pieces(elements(2, 3), trailerClient);
    ASSERT_EQ(1u, all.size());
    EXPECT_TRUE(hasLine(all[0], "Transfer-Encoding: chunked"));
    EXPECT_TRUE(hasLine(all[0], "Trailer: 07-CIMError, 07-CIMStatusCode, 07-CIMStatusDescription"));
    EXPECT_EQ(std::string::npos, all[0].find("Content-Length"));
    EXPECT_EQ("8\r\n<xxxxxx>\r\n0\r\n\r\n", bodyOf(all[0]));
}

TEST(HttpReply, ALongReplyIsChunkedWithoutTrailersForAClientThatReadsNone) {
    const std::vector<std::string> all = pieces(elements(40, 10000), plainClient);
    ASSERT_EQ(6u, all.size());
    EXPECT_TRUE(hasLine(all[0], "Transfer-Encoding: chunked"));
    EXPECT_EQ(std::string::npos, all[0].find("Trailer"));
    EXPECT_EQ(std::string::npos, all[0].find("Content-Length"));
    EXPECT_EQ(">\r\n0\r\n\r\n", ended(all[5], 8));
}

TEST(HttpReply, TrailersOrTheBodyReportAFailure) {
    const std::string trailers = pieces(failed(), trailerClient).at(0);
    EXPECT_EQ("0\r\n07-CIMStatusCode: 5\r\n07-CIMStatusDescription: QAV_Nope\r\n\r\n", bodyOf(trailers));
    EXPECT_EQ("error in the body", bodyOf(pieces(failed(), plainClient).at(0)));
    EXPECT_TRUE(hasLine(pieces(failed(), oldClient).at(0), "Content-Length: 17"));
}

TEST(HttpReply, ALongFailureHasNoTrailersForAClientThatReadsNone) {
    OperationReply reply = failed();
    reply.body = std::string(2 * http::ReplyStream::pieceSize, 'x');
    const std::string whole = pieces(std::move(reply), plainClient).at(0);
    EXPECT_EQ(std::string::npos, whole.find("CIMStatusCode"));
}

TEST(HttpReply, AFailureWithoutADescriptionHasNone) {
    OperationReply reply = failed();
    reply.error->description.clear();
    EXPECT_EQ("0\r\n07-CIMStatusCode: 5\r\n\r\n", bodyOf(pieces(std::move(reply), trailerClient).at(0)));
}

TEST(HttpReply, TrailersReportAFailureInMidReply) {
    const std::vector<std::string> all = pieces(failing(10, 10000), trailerClient);
    ASSERT_EQ(2u, all.size());
    EXPECT_EQ("0\r\n07-CIMStatusCode: 1\r\n07-CIMStatusDescription: the lamp is broken\r\n\r\n", all[1]);
}

TEST(HttpReply, OnlyTheBodyReportsAFailureInXml) {
    for (const ClientOf& client : {xmlClient, extendedXmlClient}) {
        const std::string whole = pieces(failed(), client).at(0);
        EXPECT_EQ("11\r\nerror in the body\r\n0\r\n\r\n", bodyOf(whole));
    }
}

TEST(HttpReply, AFailureInMidReplyInXmlHasTheTrailerNamesOfBothKindsOfClients) {
    const std::vector<std::string> plain = pieces(failing(10, 10000), xmlClient);
    EXPECT_TRUE(hasLine(plain.at(0), "Trailer: CIMError, CIMStatusCode, CIMStatusDescription, "
                                     "CIMStatusCodeDescription"));
    EXPECT_EQ("0\r\nCIMStatusCode: 1\r\nCIMStatusDescription: the lamp is broken\r\n"
              "CIMStatusCodeDescription: the lamp is broken\r\n\r\n",
              plain.at(1));
    EXPECT_EQ("0\r\n07-CIMStatusCode: 1\r\n07-CIMStatusDescription: the lamp is broken\r\n"
              "07-CIMStatusCodeDescription: the lamp is broken\r\n\r\n",
              pieces(failing(10, 10000), extendedXmlClient).at(1));
}

TEST(HttpReply, OnlyAReplyToMPostOrInTheBinaryProtocolHasPrefixes) {
    EXPECT_TRUE(hasLine(pieces(elements(1, 1), xmlClient).at(0), "CIMOperation: MethodResponse"));
    EXPECT_EQ(std::string::npos, pieces(elements(1, 1), xmlClient).at(0).find("Man: "));
    const std::string man = "Man: http://www.dmtf.org/cim/mapping/http/v1.0 ; ns=07";
    for (const ClientOf& client : {extendedXmlClient, plainClient}) {
        EXPECT_TRUE(hasLine(pieces(elements(1, 1), client).at(0), man));
        EXPECT_TRUE(hasLine(pieces(elements(1, 1), client).at(0), "07-CIMOperation: MethodResponse"));
    }
}

TEST(HttpReply, AFailureInMidReplyThrowsForAClientThatReadsNoTrailers) {
    for (const ClientOf& client : {oldClient, plainClient}) {
        http::ReplyStream late = streamOf(failing(10, 10000), client);
        EXPECT_FALSE(late.next().empty());
        EXPECT_THROW(late.next(), std::runtime_error);
        EXPECT_EQ("1 the lamp is broken", late.reply().failure());
    }
}
