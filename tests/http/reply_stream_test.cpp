#include "http/ReplyStream.hpp"

#include <algorithm>
#include <gtest/gtest.h>
#include <stdexcept>
#include <vector>

using namespace http;

namespace {

const ReplyForm oldClient{false, false, false};
const ReplyForm plainClient{true, false, true};
const ReplyForm trailerClient{true, true, true};

/** A reply of `count` parts of a size between "<" and ">". */
class Parts : public Reply {
public:
    Parts(std::size_t count, std::size_t size, std::string trailerNames = "")
        : m_count(count)
        , m_size(size)
        , m_trailerNames(std::move(trailerNames)) {}

    ReplyHead head() const override {
        return {{{"Content-Type", "text/x"}, {"Empty", ""}}, {{"Last", "1"}}, m_trailerNames};
    }
    bool append(std::string& piece) override {
        if (!m_isBegun)
            piece += "<";
        m_isBegun = true;
        if (m_count-- == 0) {
            piece += ">";
            return false;
        }
        piece.append(m_size, 'x');
        return true;
    }
    Fields trailers() const override { return {{"Sum", "7"}}; }
    std::string title() const override { return "parts"; }

private:
    std::size_t m_count;
    std::size_t m_size;
    std::string m_trailerNames;
    bool m_isBegun = false;
};

const std::string server = "test";

std::vector<std::string> pieces(Parts parts, const ReplyForm& client) {
    ReplyStream stream(std::make_unique<Parts>(std::move(parts)), client, server);
    std::vector<std::string> all;
    for (std::string piece = stream.next(); !piece.empty(); piece = stream.next())
        all.push_back(piece);
    EXPECT_EQ("", stream.next()) << "the end lasts";
    return all;
}

std::string headOf(const std::string& reply) {
    return reply.substr(0, reply.find("\r\n\r\n") + 4);
}

/** The head without its date. */
std::string undated(std::string head) {
    const std::size_t date = head.find("Date: ");
    return head.erase(date, head.find("\r\n", date) + 2 - date);
}

std::string bodyOf(const std::string& reply) {
    return reply.substr(reply.find("\r\n\r\n") + 4);
}

bool hasLine(const std::string& reply, const std::string& line) {
    return reply.find("\r\n" + line + "\r\n") != std::string::npos;
}

std::string endOf(const std::string& reply, std::size_t size) {
    return reply.substr(reply.size() - std::min(size, reply.size()));
}

} // namespace

TEST(ReplyStream, AShortReplyHasALength) {
    for (const ReplyForm& client : {oldClient, plainClient, trailerClient}) {
        const std::vector<std::string> all = pieces(Parts(2, 3), client);
        ASSERT_EQ(1u, all.size());
        EXPECT_EQ("HTTP/1.1 200 Ok\r\nCache-Control: no-cache\r\nServer: test\r\nContent-Type: "
                  "text/x\r\nEmpty: \r\n"
                  "Last: 1\r\nContent-Length: 8\r\n\r\n",
                  undated(headOf(all[0])));
        EXPECT_EQ("<xxxxxx>", bodyOf(all[0]));
    }
}

TEST(ReplyStream, AReplyWithTrailersIsChunkedForAClientThatReadsThem) {
    const std::vector<std::string> all = pieces(Parts(2, 3, "Sum"), trailerClient);
    ASSERT_EQ(1u, all.size());
    EXPECT_EQ(
        "HTTP/1.1 200 Ok\r\nCache-Control: no-cache\r\nServer: test\r\nContent-Type: text/x\r\nEmpty: \r\n"
        "Transfer-Encoding: chunked\r\nLast: 1\r\nTrailer: Sum\r\n\r\n",
        undated(headOf(all[0])));
    EXPECT_EQ("8\r\n<xxxxxx>\r\n0\r\nSum: 7\r\n\r\n", bodyOf(all[0]));
    EXPECT_TRUE(hasLine(pieces(Parts(2, 3, "Sum"), plainClient).at(0), "Content-Length: 8"));
}

TEST(ReplyStream, AnHttpDateIsInGmt) {
    const std::string head = headOf(pieces(Parts(0, 0), plainClient).at(0));
    const std::string date = head.substr(head.find("Date: ") + 6, 29);
    EXPECT_EQ(", ", date.substr(3, 2));
    EXPECT_EQ(" GMT", date.substr(25));
}

TEST(ReplyStream, ALongReplyIsMadePieceByPiece) {
    const std::vector<std::string> all = pieces(Parts(40, 10000), plainClient);
    ASSERT_EQ(6u, all.size());
    for (const std::string& piece : all)
        EXPECT_GT(ReplyStream::pieceSize + 10000 + 1000, piece.size());
    EXPECT_TRUE(hasLine(all[0], "Transfer-Encoding: chunked"));
    EXPECT_EQ(std::string::npos, headOf(all[0]).find("Content-Length"));
    EXPECT_EQ(0u, bodyOf(all[0]).find("1000\r\n<xxx"));
    EXPECT_EQ(0u, all[1].find("1000\r\nxxx"));
    EXPECT_EQ(">\r\n0\r\n\r\n", endOf(all[5], 8));
}

TEST(ReplyStream, ALongReplyToAnOldClientEndsWithTheConnection) {
    const std::vector<std::string> all = pieces(Parts(40, 10000), oldClient);
    ASSERT_EQ(6u, all.size());
    EXPECT_EQ(std::string::npos, headOf(all[0]).find("Transfer-Encoding"));
    EXPECT_EQ(std::string::npos, headOf(all[0]).find("Content-Length"));
    std::string body = bodyOf(all[0]);
    for (std::size_t i = 1; i < all.size(); ++i)
        body += all[i];
    EXPECT_EQ("<" + std::string(400000, 'x') + ">", body);
}

TEST(ReplyStream, ABodyOfOnePieceHasALengthAndALongerBodyIsChunked) {
    EXPECT_TRUE(hasLine(pieces(Parts(1, ReplyStream::pieceSize - 2), plainClient).at(0),
                        "Content-Length: " + std::to_string(ReplyStream::pieceSize)));
    EXPECT_TRUE(
        hasLine(pieces(Parts(1, ReplyStream::pieceSize), plainClient).at(0), "Transfer-Encoding: chunked"));
}

TEST(ErrorResponse, HasItsDetailInTheReasonPhraseAndNoBody) {
    const ErrorResponse error{429, "Too many requests", "sl\xc3\xb6w\r\ndown", "Retry-After", "60"};
    EXPECT_EQ(
        "HTTP/1.1 429 Too many requests: sl\\xc3\\xb6w  down\r\nCache-Control: no-cache\r\nServer: test\r\n"
        "Retry-After: 60\r\nConnection: close\r\nContent-Length: 0\r\n\r\n",
        undated(bytesOf(error, true, server)));
    EXPECT_EQ(0u, bytesOf(error, false, server).find("HTTP/1.0 429 "));
}
