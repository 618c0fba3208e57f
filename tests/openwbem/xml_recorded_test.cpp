// Recorded replies: complete, in pieces, and truncated.
#include "OW_CIMInstance.hpp"

#include "Record.hpp"
#include "Xml.hpp"
#include "io/Window.hpp"
#include "support/Pattern.hpp"
#include "xml/Reply.hpp"

#include <algorithm>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

namespace {

using namespace OpenWBEM;
using record::Conversation;

// Recorded replies with a document, and the result of the recorded client.
std::vector<Conversation> recordedReplies() {
    std::vector<Conversation> chosen;
    for (const Conversation& conversation : record::conversations()) {
        const bool isXml = conversation.directory.compare(0, 4, "xml-") == 0 ||
                           conversation.directory.compare(0, 5, "http-") == 0;
        const std::string received = conversation.received();
        if (isXml && received.find("Content-Encoding") == std::string::npos &&
            received.find("<IRETURNVALUE>") != std::string::npos &&
            conversation.result().find("THREW") == std::string::npos)
            chosen.push_back(conversation);
    }
    return chosen;
}

// The last reply with a result, and the recorded result.
struct Recorded {
    explicit Recorded(const Conversation& conversation) {
        const std::vector<std::string> replies = record::splitReplies(conversation.received());
        for (std::size_t i = 0; i < replies.size(); ++i) {
            const std::string candidate = record::bodyOf(replies[i]);
            if (candidate.find("<IRETURNVALUE>") == std::string::npos)
                continue;
            body = candidate;
            messageId = messageIdOf(record::splitReplies(conversation.sent()).at(i));
        }
        method = body.find("\"GetInstance\"") == std::string::npos ? "EnumerateInstances" : "GetInstance";
        expected = support::replacedAll(conversation.result(), "(MODIFY OK|COUNT .*|rc=0)\n", "");
    }
    static UInt32 messageIdOf(const std::string& request) {
        const std::string before = "<MESSAGE ID=\"";
        return static_cast<UInt32>(std::stoul(request.substr(request.find(before) + before.size())));
    }

    std::string body;
    std::string expected;
    UInt32 messageId = 0;
    const char* method;
};

// The return value of a reply, in the form of the recording.
std::string understood(io::Window& window, const Recorded& recorded) {
    xml::Reply reply(window, recorded.messageId, recorded.method);
    std::ostringstream out;
    CIMInstance instance(CIMNULL);
    while (reply.next(instance))
        record::print(out, instance);
    reply.finish();
    return out.str();
}

std::string understood(const std::string& body, const Recorded& recorded) {
    io::Window window(body.data(), body.size());
    return understood(window, recorded);
}

class RecordedReply : public testing::TestWithParam<Conversation> {};

TEST_P(RecordedReply, IsDecodedAsByTheRecordedClient) {
    const Recorded recorded(GetParam());
    EXPECT_EQ(recorded.expected, understood(recorded.body, recorded));
}

TEST_P(RecordedReply, IsDecodedTheSameForAnySizeOfReads) {
    const Recorded recorded(GetParam());
    for (const std::size_t pieceSize : {1, 7, 4096}) {
        PieceSource source(recorded.body, pieceSize);
        io::Window window(source);
        EXPECT_EQ(recorded.expected, understood(window, recorded)) << pieceSize;
    }
}

std::string testName(const testing::TestParamInfo<Conversation>& info) {
    std::string result = info.param.directory;
    std::replace_if(
        result.begin(), result.end(), [](char c) { return c == '-' || c == '/'; }, '_');
    return result;
}

INSTANTIATE_TEST_SUITE_P(Conversations, RecordedReply, testing::ValuesIn(recordedReplies()), testName);

TEST(RecordedReplies, AreComplete) {
    EXPECT_EQ(20U, recordedReplies().size());
}

TEST(RecordedReplies, AreRejectedIfTruncatedAtAnyByte) {
    for (const char* directory : {"xml-tcp-anon/enum_K70Chassis", "xml-tcp-anon/enum_AllArrays"}) {
        const Recorded recorded(Conversation{directory});
        const std::size_t end = recorded.body.rfind('>') + 1;
        for (std::size_t size = 0; size < end; ++size) {
            const std::string part = recorded.body.substr(0, size);
            EXPECT_NE("no exception", failureOf([&] { understood(part, recorded); }))
                << directory << ' ' << size;
        }
    }
}

} // namespace
