#include "Clients.hpp"

#include <csignal>
#include <dirent.h>
#include <fcntl.h>

namespace {

TEST(Client, DoesNotConnectBeforeTheFirstRequest) {
    ScriptedPeer peer({Step::answer(good)});
    CIMClient client(peer.url().c_str(), "root/cimv2");
    EXPECT_EQ(0U, peer.connections());
    EXPECT_EQ(1U, read(client));
    EXPECT_EQ(1U, peer.connections());
}

TEST(Client, KeepsItsConnectionAndItsCopiesShareIt) {
    ScriptedPeer peer({Step::answer(good)});
    CIMClient client(peer.url().c_str(), "root/cimv2");
    read(client);
    CIMClient copy = client;
    read(copy);
    read(client);
    EXPECT_EQ(1U, peer.connections());
}

TEST(Client, ReadsAReplyWithAContentLength) {
    EXPECT_EQ("no exception", messageOfReply(wire::plainReply(wire::enumeration({}))));
}

TEST(Client, ReadsAReplyAfterWhichTheServerCloses) {
    const std::string body = wire::enumeration({wire::instance("Foo", {})});
    const std::string reply =
        "HTTP/1.1 200 Ok\r\nConnection: close\r\nContent-Length: " + std::to_string(body.size()) +
        "\r\n\r\n" + body;
    ScriptedPeer peer({Step::answerAndClose(reply), Step::answerAndClose(reply)});
    CIMClient client(peer.url().c_str(), "root/cimv2");
    EXPECT_EQ(1U, read(client));
    EXPECT_EQ(1U, read(client));
    EXPECT_EQ(2U, peer.requests().size()) << "nothing was sent on the closed connection";
}

TEST(Client, RepeatsAReadIfAKeptConnectionWasClosed) {
    ScriptedPeer peer({Step::answerAndClose(good), Step::answer(good)});
    CIMClient client(peer.url().c_str(), "root/cimv2");
    EXPECT_EQ(1U, read(client));
    EXPECT_EQ(1U, read(client));
}

TEST(Client, RepeatsAReadIfAKeptConnectionIsClosedOnTheRequest) {
    ScriptedPeer peer({Step::answer(good), Step::close(), Step::answer(good)});
    CIMClient client(peer.url().c_str(), "root/cimv2");
    read(client);
    EXPECT_EQ(1U, read(client));
    EXPECT_EQ(3U, peer.requests().size());
}

TEST(Client, DoesNotRepeatAReadOnANewConnection) {
    ScriptedPeer peer({Step::close()});
    CIMClient client(peer.url().c_str(), "root/cimv2");
    EXPECT_EQ("HTTPException: Unable to process request: ", messageOfReading(client));
    EXPECT_EQ(1U, peer.requests().size());
}

TEST(Client, RepeatsAReadIfAKeptConnectionRepliesWithATimeout) {
    const std::string timedOut = wire::statusReply("408 Request timeout: Timeout waiting for request.");
    ScriptedPeer peer({Step::answer(good), Step::answerAndClose(timedOut), Step::answer(good)});
    CIMClient client(peer.url().c_str(), "root/cimv2");
    read(client);
    EXPECT_EQ(1U, read(client));
}

TEST(Client, FallsBackToPostForGoodIfTheServerRejectsMPost) {
    for (const char* status : {"405 Method not allowed", "501 Not implemented", "510 Not Extended"}) {
        ScriptedPeer peer({Step::answer(wire::statusReply(status)), Step::answer(good)});
        CIMClient client(peer.url().c_str(), "root/cimv2");
        EXPECT_EQ(1U, read(client)) << status;
        EXPECT_EQ(1U, read(client)) << status;
        const auto requests = peer.requests();
        ASSERT_EQ(3U, requests.size());
        EXPECT_EQ(0U, requests[0].find("M-POST /cimom HTTP/1.1\r\n"));
        EXPECT_EQ(0U, requests[1].find("POST /cimom HTTP/1.1\r\n"));
        EXPECT_EQ(std::string::npos, requests[1].find("\r\nMan:"));
        EXPECT_NE(std::string::npos, requests[1].find("\r\nCIMMethod: EnumerateInstances\r\n"));
        EXPECT_EQ(0U, requests[2].find("POST "));
    }
}

TEST(Client, RepeatsAReadIfAKeptConnectionIsResetOnTheRequest) {
    ScriptedPeer peer({Step::answer(good), Step::reset(), Step::answer(good)}, Listening::ipv4);
    CIMClient client(peer.url().c_str(), "root/cimv2");
    read(client);
    EXPECT_EQ(1U, read(client));
    EXPECT_EQ(3U, peer.requests().size());
}

TEST(Client, DoesNotRepeatAReadAfterPartOfAReply) {
    ScriptedPeer peer({Step::answer(good), Step::answerAndClose("HTTP/1.1 2"), Step::answer(good)});
    CIMClient client(peer.url().c_str(), "root/cimv2");
    read(client);
    EXPECT_EQ("HTTPException: Unable to process request: ", messageOfReading(client));
    EXPECT_EQ(2U, peer.requests().size());
    EXPECT_EQ(1U, read(client));
}

TEST(Client, RequestsCompressionAndTrailers) {
    ScriptedPeer peer({Step::answer(good)});
    CIMClient client(peer.url().c_str(), "root/cimv2");
    read(client);
    EXPECT_NE(std::string::npos,
              peer.requests().at(0).find("\r\nTE: trailers\r\nAccept-Encoding: deflate\r\n"));
}

TEST(Client, RequestsOnlyListedProperties) {
    ScriptedPeer peer({Step::answer(good)});
    CIMClient client(peer.url().c_str(), "root/cimv2");
    StringArray names;
    names.push_back("Name");
    names.push_back("Size");
    client.enumInstancesE("Foo", WBEMFlags::E_SHALLOW, WBEMFlags::E_LOCAL_ONLY,
                          WBEMFlags::E_INCLUDE_QUALIFIERS, WBEMFlags::E_INCLUDE_CLASS_ORIGIN, &names);
    const std::string expected = std::string("j\x03"
                                             "Fooh\0h\1h\1h\1h\0k\2\4Name\4Size",
                                             27);
    const std::string request = peer.requests().at(0);
    EXPECT_EQ(expected, request.substr(request.size() - expected.size()));
}

TEST(Client, DoesNotMistakeUnsolicitedBytesForTheNextReply) {
    const std::string unasked = wire::chunkedReply(wire::enumeration({}));
    ScriptedPeer peer({Step::answer(good + unasked), Step::answer(good)});
    CIMClient client(peer.url().c_str(), "root/cimv2");
    EXPECT_EQ(1U, read(client));
    EXPECT_EQ(1U, read(client));
    EXPECT_EQ(2U, peer.connections());
}

// The descriptors that child processes inherit.
std::size_t inheritableDescriptors() {
    std::size_t count = 0;
    DIR* const directory = ::opendir("/proc/self/fd");
    while (const dirent* entry = ::readdir(directory)) {
        const int flags = ::fcntl(std::atoi(entry->d_name), F_GETFD);
        if (entry->d_name[0] != '.' && flags >= 0 && !(flags & FD_CLOEXEC))
            ++count;
    }
    ::closedir(directory);
    return count;
}

TEST(Client, LeaksNoDescriptorToChildrenAndChangesNoSignal) {
    ScriptedPeer peer({Step::answer(good)});
    const std::size_t before = inheritableDescriptors();
    CIMClient client(peer.url().c_str(), "root/cimv2");
    read(client);
    EXPECT_EQ(before, inheritableDescriptors());
    struct sigaction action;
    ::sigaction(SIGPIPE, nullptr, &action);
    EXPECT_EQ(SIG_DFL, action.sa_handler);
}

TEST(Client, IsNotKilledByWritingToAClosedConnection) {
    ScriptedPeer peer({Step::answerAndClose(good)});
    CIMClient client(peer.url().c_str(), "root/cimv2");
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(1U, read(client));
}

} // namespace
