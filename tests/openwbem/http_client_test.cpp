// Requests that must not run twice, replies that are not read completely, and the host of an endpoint. The
// public client exposes none of them.
#include "Clients.hpp"
#include "Failure.hpp"
#include "client/Endpoint.hpp"
#include "client/HTTPClient.hpp"

namespace {

HTTPRequest request(bool mayRepeat) {
    return {
        "application/x-owbinary; charset=\"utf-8\"", "ModifyInstance", "root/cimv2", true, "body", mayRepeat};
}

class Http : public testing::Test {
protected:
    // The outcome of a request whose reply is read completely.
    static std::string messageOf(HTTPClient& client, bool mayRepeat) {
        return failureOf([&] { client.exchange(request(mayRepeat))->finish(); });
    }

    static URL urlOf(const ScriptedPeer& peer) { return URL(peer.url().c_str()); }
};

using HttpWrite = Http;

TEST_F(HttpWrite, IsNotRepeatedIfAKeptConnectionEndsInsteadOfReplying) {
    const std::pair<Step, const char*> examples[] = {
        {Step::close(), "HTTPException: Unable to process request: "},
        {Step::reset(), "HTTPException: Unable to process request: "},
        {Step::answerAndClose("HTTP/1.1 2"), "HTTPException: Unable to process request: "},
        {Step::answerAndClose(wire::statusReply("408 Request timeout: idle")),
         "HTTPException: Unable to process request: Request timeout: idle"}};
    for (const auto& [step, message] : examples) {
        ScriptedPeer peer({Step::answer(good), step, Step::answer(good)}, Listening::ipv4);
        HTTPClient client(urlOf(peer), ClientAuthCBIFCRef());
        EXPECT_EQ("no exception", messageOf(client, false));
        EXPECT_EQ(message, messageOf(client, false));
        EXPECT_EQ(2U, peer.requests().size());
        EXPECT_EQ("no exception", messageOf(client, false));
    }
}

TEST_F(HttpWrite, ReconnectsIfTheKeptConnectionHasEnded) {
    const std::string idle = wire::statusReply("408 Request timeout: idle");
    for (const std::string& unasked : {std::string(), idle}) {
        ScriptedPeer peer({Step::answerAndClose(good + unasked), Step::answer(good)});
        HTTPClient client(urlOf(peer), ClientAuthCBIFCRef());
        EXPECT_EQ("no exception", messageOf(client, false));
        peer.awaitEnds(1);
        EXPECT_EQ("no exception", messageOf(client, false));
        EXPECT_EQ(2U, peer.requests().size());
    }
}

TEST_F(HttpWrite, IsRepeatedAfterAnErrorResponse) {
    const std::string challenge = wire::statusReply("401 Unauthorized", {"WWW-Authenticate: Basic"});
    ScriptedPeer peer({Step::answer(wire::statusReply("501 Not implemented")), Step::answer(challenge),
                       Step::answer(good)});
    HTTPClient client(URL(peer.url("owbinary.wbem", "a:b@localhost").c_str()), ClientAuthCBIFCRef());
    EXPECT_EQ("no exception", messageOf(client, false));
    EXPECT_EQ(3U, peer.requests().size());
}

TEST_F(Http, RepeatsAReadOnce) {
    ScriptedPeer peer({Step::answer(good), Step::close(), Step::close(), Step::answer(good)});
    HTTPClient client(urlOf(peer), ClientAuthCBIFCRef());
    EXPECT_EQ("no exception", messageOf(client, true));
    EXPECT_EQ("HTTPException: Unable to process request: ", messageOf(client, true));
    EXPECT_EQ(3U, peer.requests().size());
}

TEST_F(Http, UsesANewPrefixForEveryRequest) {
    ScriptedPeer peer({Step::answer(wire::statusReply("401 Unauthorized")), Step::answer(good)});
    HTTPClient client(urlOf(peer), ClientAuthCBIFCRef());
    EXPECT_EQ("no exception", messageOf(client, false));
    const auto requests = peer.requests();
    const auto numberOf = [](const std::string& text) { return text.substr(text.find("; ns=") + 5, 2); };
    EXPECT_EQ((std::stoi(numberOf(requests.at(0))) + 1) % 100, std::stoi(numberOf(requests.at(1))));
    for (const std::string& each : requests)
        EXPECT_NE(std::string::npos, each.find("\r\n" + numberOf(each) + "-CIMMethod: ModifyInstance\r\n"));
}

TEST_F(Http, AnnouncesProtocolVersion11) {
    ScriptedPeer peer({Step::answer(good)});
    HTTPClient client(urlOf(peer), ClientAuthCBIFCRef());
    messageOf(client, false);
    EXPECT_NE(std::string::npos,
              peer.requests().at(0).find(
                  "\r\nAccept-Encoding: deflate\r\nCIMProtocolVersion: 1.1\r\nAuthorization: "));
}

TEST_F(Http, ClosesTheConnectionOfAReplyThatWasNotReadCompletely) {
    ScriptedPeer peer({Step::answer(good)});
    HTTPClient client(urlOf(peer), ClientAuthCBIFCRef());
    char byte;
    EXPECT_EQ(1U, client.exchange(request(false))->read(&byte, 1));
    EXPECT_EQ("no exception", messageOf(client, false));
    EXPECT_EQ("no exception", messageOf(client, false));
    EXPECT_EQ(2U, peer.connections());
}

TEST_F(Http, ReadsNothingAfterTheEndOfABody) {
    ScriptedPeer peer({Step::answer(wire::plainReply("abc"))});
    HTTPClient client(urlOf(peer), ClientAuthCBIFCRef());
    const auto reply = client.exchange(request(false));
    char bytes[8];
    EXPECT_EQ(3U, reply->read(bytes, sizeof bytes));
    EXPECT_EQ(0U, reply->read(bytes, sizeof bytes));
    reply->finish();
    reply->finish();
    EXPECT_EQ(0U, reply->read(bytes, sizeof bytes));
    EXPECT_EQ("no exception", messageOf(client, false));
    EXPECT_EQ(1U, peer.connections());
}

TEST_F(Http, FailsAgainAtOnceAfterATruncatedBody) {
    ScriptedPeer peer({Step::answerAndClose("HTTP/1.1 200 Ok\r\nContent-Length: 9\r\n\r\nabc")});
    HTTPClient client(urlOf(peer), ClientAuthCBIFCRef());
    const auto reply = client.exchange(request(false));
    char bytes[8];
    EXPECT_EQ(3U, reply->read(bytes, sizeof bytes));
    EXPECT_THROW(reply->read(bytes, sizeof bytes), IOException);
    EXPECT_THROW(reply->read(bytes, sizeof bytes), IOException);
    EXPECT_NO_THROW(reply->throwReportedError());
    EXPECT_THROW(reply->finish(), IOException);
}

TEST(Endpoint, HostOfTheCertificateIsAnAddressWithoutItsZone) {
    const Endpoint endpoint = endpointOf(URL("https://[fe80::1%251]"));
    EXPECT_EQ("fe80::1", endpoint.host);
    EXPECT_TRUE(endpoint.hostIsAddress);
}

} // namespace
