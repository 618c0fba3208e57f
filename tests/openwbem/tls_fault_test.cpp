// Peers that close, stall and send garbage, in the handshake and in replies.
#include "TlsFixture.hpp"
#include "support/TamperingRelay.hpp"

#include <algorithm>
#include <climits>
#include <map>
#include <set>
#include <sys/socket.h>

namespace {

using std::chrono::milliseconds;
using support::Relay;
using support::TamperingRelay;
using support::TlsRelay;
using support::TlsRelayOptions;
using Then = TamperingRelay::Then;

const std::string handshake = "SSLException: TLS handshake with localhost failed: ";
const std::string connection = "SSLException: TLS connection to localhost failed: ";
const std::string noReply = "HTTPException: Unable to process request: ";
const std::string truncated = "IOException: Failed reading data";
const std::string complete = "no exception";

/** A server with TLS of a version. */
class TlsFault : public TlsFixture, public testing::WithParamInterface<int> {
protected:
    TlsFault() {
        options.highestVersion = GetParam();
        options.saysGoodbye = false;
        m_relay = std::make_unique<TlsRelay>(m_peer.port(), options);
    }
    ~TlsFault() override { clientTimeouts() = ClientTimeouts(); }

    std::string outcome(std::size_t at, Then then) const {
        const TamperingRelay tampering(m_relay->port(), at, then);
        return messageOfReadingFrom(tampering.url());
    }

    // Bytes that the server sends for a read.
    std::size_t size() const {
        const TamperingRelay honest(m_relay->port(), UINT_MAX, Then::close);
        EXPECT_EQ(complete, messageOfReadingFrom(honest.url()));
        return honest.passed();
    }

    TlsRelayOptions options;

private:
    const ScriptedPeer m_peer{{Step::answer(good)}, Listening::ipv4};
    std::unique_ptr<TlsRelay> m_relay;
};

INSTANTIATE_TEST_SUITE_P(Version, TlsFault, testing::Values(TLS1_2_VERSION, TLS1_3_VERSION),
                         [](const auto& version) { return version.param == TLS1_2_VERSION ? "12" : "13"; });

TEST_P(TlsFault, EndOfTheConnectionAnywhereIsAnException) {
    const std::string handshakeEnd = handshake + "the peer closed the connection";
    std::set<std::string> seen;
    const std::size_t all = size();
    for (std::size_t at = 0; at + 8 < all; at += 7) {
        const std::string message = outcome(at, Then::close);
        seen.insert(message);
        EXPECT_TRUE(message == handshakeEnd || message == noReply) << at << ": " << message;
    }
    EXPECT_EQ(2U, seen.size());
}

TEST_P(TlsFault, StallIsLimitedByTheTimeouts) {
    const std::string inHandshake = "SocketException: Client connect timeout (0 seconds) expired.";
    const std::string inReply = noReply + "Client receive timeout (0 seconds) expired.";
    std::set<std::string> seen;
    const std::size_t all = size();
    clientTimeouts().receive = milliseconds(300);
    EXPECT_EQ(inReply, outcome(all - 8, Then::stall));
    clientTimeouts().connect = milliseconds(300);
    for (std::size_t at = 0; at + 8 < all; at += all / 9) {
        const std::string message = outcome(at, Then::stall);
        seen.insert(message);
        EXPECT_TRUE(message == inHandshake || message == inReply) << at << ": " << message;
    }
    EXPECT_EQ(1U, seen.count(inHandshake));
}

// A byte that carries no meaning, such as the version of a record, may change.
TEST_P(TlsFault, GarbageIsAnExceptionOrChangesNothing) {
    const std::string possible[] = {handshake, connection, noReply, complete,
                                    "SocketException: Client connect timeout (0 seconds) expired."};
    std::map<std::string, int> seen;
    const std::size_t all = size();
    clientTimeouts().connect = clientTimeouts().receive = milliseconds(300); // for the end of a longer record
    for (const Then then : {Then::invert, Then::insert})
        for (std::size_t at = 0; at < all; at += 37) {
            const std::string message = outcome(at, then);
            const auto* const kind =
                std::find_if(std::begin(possible), std::end(possible), [&](const std::string& each) {
                    return message.compare(0, each.size(), each) == 0;
                });
            ASSERT_NE(std::end(possible), kind) << message;
            ++seen[*kind];
        }
    EXPECT_LT(10, seen[handshake]);
    EXPECT_LT(1, seen[connection]);
}

using Tls = TlsFixture;

TEST_F(Tls, ReplyThatEndsWithoutAGoodbyeIsTruncatedUnlessItIsComplete) {
    const std::string body = wire::enumeration({wire::instance("Foo", {})});
    const std::pair<std::string, std::string> replies[] = {
        {wire::plainReply(body), complete},
        {good, complete},
        {"HTTP/1.1 2", noReply},
        {chunkedHead, truncated},
        {good.substr(0, good.size() - 5), truncated},
        {wire::plainReply(body).substr(0, wire::plainReply(body).size() - 1), truncated},
        // Its end would be the end of the connection.
        {"HTTP/1.1 200 Ok\r\n\r\n" + body, "HTTPException: HTTPClient: unable to understand server response. "
                                           "There may be no content in the reply."}};
    for (const bool saysGoodbye : {true, false})
        for (const auto& [reply, outcome] : replies) {
            const ScriptedPeer peer({Step::answerAndClose(reply)}, Listening::ipv4);
            TlsRelayOptions options;
            options.saysGoodbye = saysGoodbye;
            const TlsRelay relay(peer.port(), options);
            EXPECT_EQ(outcome, messageOfReadingFrom(relay.url())) << reply;
        }
}

TEST_F(Tls, WithAPeerWithoutTlsIsAnSslException) {
    const std::pair<const char*, const char*> greetings[] = {
        {"220 mail.example.org ESMTP\r\n", "wrong version number"},
        {"HTTP/1.1 400 Bad Request\r\n\r\n", "wrong version number"},
        {"", "the peer closed the connection"}};
    for (const auto& [greeting, reason] : greetings) {
        const Relay peer(0, [&text = greeting](int client, int) {
            ::send(client, text, std::strlen(text), MSG_NOSIGNAL);
            ::shutdown(client, SHUT_WR);
            char ignored[1024];
            while (::recv(client, ignored, sizeof ignored, 0) > 0) {
            }
        });
        EXPECT_EQ(handshake + reason, messageOfReadingFrom(peer.url("owbinary.wbems", "localhost")));
    }
}

TEST_F(Tls, HandshakeIsLimitedByTheConnectTimeout) {
    BusyListener listener(AF_INET);
    const support::TempDir directory;
    support::inChild(directory.path(), [&] {
        clientTimeouts().connect = milliseconds(100);
        const std::string url = listener.url();
        EXPECT_EQ("SocketException: Client connect timeout (0 seconds) expired.",
                  messageOfReadingFrom("owbinary.wbems" + url.substr(url.find("://"))));
    });
}

TEST_F(Tls, RequestThatThePeerDoesNotReadIsLimitedByTheSendTimeout) {
    const ScriptedPeer peer({Step::answer(good)}, Listening::ipv4);
    TlsRelayOptions options;
    options.isDeaf = true;
    const TlsRelay relay(peer.port(), options);
    CIMClient client(relay.url().c_str(), "root/cimv2");
    clientTimeouts().send = milliseconds(100);
    EXPECT_EQ(noReply + "Client send timeout (0 seconds) expired.", messageOfLongRequest(client));
    clientTimeouts() = ClientTimeouts();
}

} // namespace
