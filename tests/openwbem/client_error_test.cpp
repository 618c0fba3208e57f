#include "Clients.hpp"

#include <csignal>
#include <fcntl.h>

namespace {

TEST(ClientError, OfTheTransportReportsTheReason) {
    EXPECT_EQ("HTTPException: Unable to process request: Unauthorized: ",
              messageOfReply("HTTP/1.1 401 Unauthorized: \r\nContent-Length: 0\r\n\r\n"));
    EXPECT_EQ("HTTPException: Unable to process request: Bad request:request-not-well-formed",
              messageOfReply(wire::statusReply("400 Bad request", {"CIMError: request-not-well-formed"})));
    EXPECT_EQ("HTTPException: Unable to process request: Ok:even with a good status",
              messageOfReply(wire::statusReply("200 Ok", {"CIMError: even with a good status"})));
    EXPECT_EQ("HTTPException: HTTPClient: unable to understand server response. There may be no content in "
              "the reply.",
              messageOfReply("HTTP/1.1 200 Ok\r\n\r\n"));
}

TEST(ClientError, OfTheObjectManagerMayBeInTrailersOrInTheBody) {
    EXPECT_EQ("CIMException: requested object could not be found",
              messageOfReply(wire::chunkedReply("", {"01-CIMStatusCode: 6"})));
    EXPECT_EQ("CIMException: general error (general)", messageOfReply(wire::cimErrorReply(1, "general")));
    EXPECT_EQ("CIMException: general error: repeated",
              messageOfReply(wire::cimErrorReply(1, "general error: repeated")));
    EXPECT_EQ("CIMException: unknown error (x)", messageOfReply(wire::cimErrorReply(99, "x")));
    EXPECT_EQ("CIMErrorException: protocol",
              messageOfReply(wire::chunkedReply("", {"01-CIMError: protocol"})));
    EXPECT_EQ("StringConversionException: Unable to convert \"abc\" into Int32",
              messageOfReply(wire::chunkedReply("", {"01-CIMStatusCode: abc"})));
    EXPECT_EQ("IOException: Unexpected value received from server.",
              messageOfReply(wire::plainReply("\x03")));
    EXPECT_EQ("IOException: Failed reading data", messageOfReply(wire::plainReply("")));
}

TEST(ClientError, IsThrownForAMalformedEnumeration) {
    EXPECT_EQ("IOException: Received invalid signature. Got: 110 Expected: 111",
              messageOfReply(wire::plainReply(std::string("\0n\x98\x98", 4))));
    EXPECT_EQ("IOException: Received invalid signature. Got: 151 Expected: 152",
              messageOfReply(wire::plainReply(std::string("\0o\x98\x97", 4))));
    EXPECT_EQ("IOException: Failed reading data",
              messageOfReply(wire::plainReply(std::string("\0o\x98", 3))));
}

TEST(ClientError, AfterAReplyTruncatedAtAnyByteTheNextReadSucceeds) {
    for (std::size_t length = 0; length < good.size(); ++length) {
        ScriptedPeer peer({Step::answerAndClose(good.substr(0, length)), Step::answer(good)});
        CIMClient client(peer.url().c_str(), "root/cimv2");
        EXPECT_THROW(read(client), Exception) << length;
        EXPECT_EQ(1U, read(client)) << length;
    }
}

TEST(ClientError, OfAnErrorResponseReportsTheReasonDespiteItsBody) {
    EXPECT_EQ("HTTPException: Unable to process request: Not found",
              messageOfReply("HTTP/1.1 404 Not found\r\n\r\n"));
    EXPECT_EQ("HTTPException: Unable to process request: Continue",
              messageOfReply("HTTP/1.1 100 Continue\r\n\r\n"));
    ScriptedPeer peer(
        {Step::answerAndClose("HTTP/1.1 503 Busy\r\nContent-Length: 10\r\n\r\nx"), Step::answer(good)});
    CIMClient client(peer.url().c_str(), "root/cimv2");
    EXPECT_EQ("HTTPException: Unable to process request: Busy", messageOfReading(client));
    EXPECT_EQ(1U, read(client));
}

TEST(ClientError, IsNotReportedByAHeaderWithTheNameOfATrailer) {
    const std::string body = wire::enumeration({});
    EXPECT_EQ("no exception", messageOfReply("HTTP/1.1 200 Ok\r\n07-CIMStatusCode: 5\r\nContent-Length: " +
                                             std::to_string(body.size()) + "\r\n\r\n" + body));
}

TEST(ClientError, OfNestedArraysAllocatesNothingForAnnouncedSizes) {
    const std::string property = wire::arrayProperty("x", wire::EMBEDDEDINSTANCE, {});
    const std::string opening = property.substr(0, property.size() - 1) + wire::number(100000);
    std::string body("\0o", 2);
    for (int depth = 0; depth < 60; ++depth)
        body += "i\x01" + wire::text("Foo") + wire::number(0) + wire::number(1) + opening;
    body += std::string(2000000, '\0');
    const support::TempDir directory;
    ScriptedPeer peer({Step::answer(wire::plainReply(body))});
    support::inChild(directory.path(), [&] {
        limitMemory(300UL << 20);
        CIMClient client(peer.url().c_str(), "root/cimv2");
        EXPECT_EQ("IOException: ", messageOfReading(client).substr(0, 13));
    });
}

TEST(ClientError, WithoutFreeDescriptorsIsASocketException) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer needs file descriptors";
#endif
    ScriptedPeer peer({Step::answer(good)});
    const support::TempDir directory;
    support::inChild(directory.path(), [&] {
        CIMClient client(peer.url().c_str(), "root/cimv2");
        std::vector<int> taken;
        for (int fd = ::open("/dev/null", O_RDONLY); fd >= 0 && fd < 60; fd = ::open("/dev/null", O_RDONLY))
            taken.push_back(fd);
        const rlimit few = {64, 64};
        ::setrlimit(RLIMIT_NOFILE, &few);
        for (int fd = ::open("/dev/null", O_RDONLY); fd >= 0; fd = ::open("/dev/null", O_RDONLY))
            taken.push_back(fd);
        while (taken.size() > 1) { // frees one descriptor after the other
            const std::string message = messageOfReading(client);
            if (message == "no exception")
                return;
            EXPECT_EQ("SocketException: ", message.substr(0, 17)) << message;
            ::close(taken.back());
            taken.pop_back();
        }
        ADD_FAILURE() << "never enough descriptors";
    });
}

TEST(ClientError, OfATruncatedTextAllocatesNothingForItsLength) {
    const std::string begin("\0o", 2);
    for (const char* length : {"4294967290", "18446744073709551615"}) {
        ScriptedPeer peer({Step::answerAndClose(std::string("HTTP/1.1 200 Ok\r\nContent-Length: ") + length +
                                                "\r\n\r\n" + begin)});
        CIMClient client(peer.url().c_str(), "root/cimv2");
        EXPECT_EQ("IOException: Failed reading data", messageOfReading(client)) << length;
    }
}

TEST(ClientError, OfAMalformedHeaderReportsTheStatusLine) {
    const std::string junk = "HTTPException: Received junk from server statusline = HTTP/1.1 200 Ok";
    EXPECT_EQ(junk, messageOfReply("HTTP/1.1 200 Ok\r\nno header\r\n\r\n"));
    EXPECT_EQ(junk, messageOfReply("HTTP/1.1 200 Ok\r\n: no name\r\n\r\n"));
    EXPECT_EQ(junk, messageOfReply("HTTP/1.1 200 Ok\r\nContent-Length: many\r\n\r\n"));
    EXPECT_EQ(junk, messageOfReply("HTTP/1.1 200 Ok\r\nControl: \x01\r\n\r\n"));
}

TEST(ClientError, OfAMalformedStatusLineHasNoReason) {
    for (const char* line : {"HTTP/1.1 200", "HTTP/1.1 200 ", "HTTP/1.1 20 Ok", "HTTP/1.1 2000 Ok",
                             "HTTP/3 200 Ok", "SSH-2.0-server", "\x16\x03\x01"}) {
        const std::string reply = std::string(line) + "\r\nContent-Length: 0\r\n\r\n";
        ScriptedPeer peer({Step::answerAndClose(reply)});
        CIMClient client(peer.url().c_str(), "root/cimv2");
        EXPECT_EQ("HTTPException: Unable to process request: ", messageOfReading(client)) << line;
        EXPECT_EQ(1U, peer.requests().size()) << line;
    }
}

TEST(ClientError, InTrailersTakesPrecedenceOverTheBody) {
    const std::string body = wire::enumeration({});
    EXPECT_EQ("CIMException: requested object could not be found",
              messageOfReply(wire::chunkedReply(body, {"07-CIMStatusCode: 6"})));
    EXPECT_EQ("CIMException: requested object could not be found",
              messageOfReply(wire::chunkedReply(body.substr(0, 3), {"07-CIMErrorCode: 6"})));
    EXPECT_EQ("CIMException: requested object could not be found (gone)",
              messageOfReply(
                  wire::chunkedReply("nonsense", {"07-CIMErrorCode: 6", "07-CIMErrorDescription: gone"})));
}

TEST(ClientError, InTrailersOfAReplyToPostHasNoPrefix) {
    const std::string body = wire::enumeration({});
    EXPECT_EQ(
        "CIMException: requested object could not be found (gone)",
        messageOfReply(wire::chunkedReply(body, {"CIMStatusCode: 6", "CIMStatusCodeDescription: gone"})));
    EXPECT_EQ("CIMException: requested object could not be found (gone)",
              messageOfReply(
                  wire::chunkedReply(body, {"07-CIMStatusCode: 6", "07-CIMStatusCodeDescription: gone"})));
}

TEST(ClientError, IsThrownForAMalformedOrLongEndOfTheBody) {
    const std::string body = wire::enumeration({});
    EXPECT_EQ("no exception", messageOfReply(wire::chunkedReply(body + std::string(1000000, 'x'))));
    EXPECT_EQ("IOException: Failed reading data",
              messageOfReply(wire::chunkedReply(body + std::string(1200000, 'x'))));
    EXPECT_EQ("IOException: Failed reading data",
              messageOfReply(chunkedHead + "4\r\n" + body + "\r\nno chunk\r\n"));
    EXPECT_EQ("IOException: Failed reading data",
              messageOfReply(chunkedHead + "4\r\n" + body + "\r\n0\r\nno trailer\r\n\r\n"));
}

TEST(ClientError, OfTheObjectManagerLeavesTheConnectionOpen) {
    ScriptedPeer peer({Step::answer(wire::cimErrorReply(5, "Foo")), Step::answer(good)});
    CIMClient client(peer.url().c_str(), "root/cimv2");
    EXPECT_EQ("CIMException: class does not exist (Foo)", messageOfReading(client));
    EXPECT_EQ(1U, read(client));
    EXPECT_EQ(1U, peer.connections());
}

TEST(ClientError, AfterARecordedReplyTruncatedAtAnyByteTheNextReadSucceeds) {
    const std::string reply = support::readFile(TEST_DATA "/captures/ow-uds-anon/enum_badclass/s2c.bin");
    for (std::size_t length = 0; length < reply.size(); ++length) {
        ScriptedPeer peer({Step::answerAndClose(reply.substr(0, length)), Step::answer(good)});
        CIMClient client(peer.url().c_str(), "root/cimv2");
        EXPECT_NE("CIMException", messageOfReading(client).substr(0, 12)) << length;
        EXPECT_EQ(1U, read(client)) << length;
    }
}

TEST(ClientError, OfAMissingPeerIsASocketException) {
    CIMClient missing("owbinary.wbem://localhost:missing-socket", "root/cimv2");
    EXPECT_EQ("SocketException: Failed to connect to: missing-socket: 2(No such file or directory)",
              messageOfReading(missing));
    const support::TempDir directory;
    const std::string path = directory.write("file", "");
    CIMClient closed(support::urlOf(path).c_str(), "root/cimv2");
    EXPECT_EQ("SocketException: Failed to connect to: " + path + ": 111(Connection refused)",
              messageOfReading(closed));
}

TEST(ClientError, OfAnInvalidUrlIsThrownByTheConstructor) {
    const std::pair<const char*, const char*> examples[] = {
        {"owbinary.wbem://", "Invalid URL: owbinary.wbem://"},
        {"", "Invalid URL: "},
        {"owbinary.wbem://:%2ftmp%2fx", "Invalid URL: owbinary.wbem://:%2ftmp%2fx"},
        {"owbinary.wbem://local\r\nhost:%2ftmp%2fx", "Invalid URL: owbinary.wbem://local\r\nhost:%2ftmp%2fx"},
    };
    for (const auto& [url, message] : examples) {
        try {
            CIMClient client(url, "root/cimv2");
            ADD_FAILURE() << "no exception for " << url;
        } catch (const MalformedURLException& e) {
            EXPECT_STREQ(message, e.getMessage());
        }
    }
    for (const char* escape : {"%zz", "%2", "%"}) {
        try {
            CIMClient client((std::string("owbinary.wbem://localhost:") + escape).c_str(), "root/cimv2");
            ADD_FAILURE() << "no exception for " << escape;
        } catch (const UnescapeCharForURLException& e) {
            EXPECT_EQ(std::string("Invalid escape: ") + escape, e.getMessage());
        }
    }
}

} // namespace
