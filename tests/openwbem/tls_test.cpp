// Requests over TLS.
#include "OW_CIMInstance.hpp"

#include "TlsFixture.hpp"

#include <atomic>
#include <csignal>
#include <thread>
#include <vector>

namespace {

using support::TlsRelay;
using support::TlsRelayOptions;

using Tls = TlsFixture;

// A reply of many TLS records and many instances.
std::string longReply() {
    return wire::chunkedReply(wire::enumeration(std::vector<std::string>(20000, wire::instance("Foo", {}))));
}

TEST_F(Tls, CarriesRequestsAndRepliesOverAKeptConnection) {
    ScriptedPeer peer({Step::answer(longReply())}, Listening::ipv4);
    const TlsRelay relay(peer.port());
    CIMClient client(relay.url().c_str(), "root/cimv2");
    EXPECT_EQ(20000U, read(client));
    EXPECT_EQ(20000U, read(client));
    EXPECT_EQ(1U, peer.connections());
    EXPECT_EQ(0U, peer.requests().at(0).find("M-POST /cimom HTTP/1.1\r\n"));
}

// CTest runs each test in its own process, in which TLS is not loaded yet.
TEST_F(Tls, IsLoadedByTwoThreadsAtOnce) {
    const ScriptedPeer peer({Step::answer(good)}, Listening::ipv4);
    const TlsRelay relay(peer.port());
    std::atomic<int> waiting{2};
    std::string outcomes[2];
    std::vector<std::thread> threads;
    for (std::string& outcome : outcomes)
        threads.emplace_back([&] {
            for (--waiting; waiting > 0;) {
            }
            outcome = messageOfReadingFrom(relay.url());
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ("no exception", outcomes[0]);
    EXPECT_EQ("no exception", outcomes[1]);
}

TEST_F(Tls, IsUsedForEachSchemeThatEndsInS) {
    ScriptedPeer peer({Step::answer(wire::statusReply("500 Seen"))}, Listening::ipv4);
    const TlsRelay relay(peer.port());
    for (const char* scheme : {"https", "cimxml.wbems", "owbinary.wbems"})
        EXPECT_EQ("HTTPException: Unable to process request: Seen", messageOfReadingFrom(relay.url(scheme)));
}

TEST_F(Tls, SendsTheNameOfTheServerButNotAnAddress) {
    const std::pair<const char*, const char*> hosts[] = {{"localhost", "localhost"}, {"127.0.0.1", ""}};
    for (const auto& [host, name] : hosts) {
        const ScriptedPeer peer({Step::answer(good)}, Listening::ipv4);
        const TlsRelay relay(peer.port());
        EXPECT_EQ("no exception", messageOfReadingFrom(relay.url("owbinary.wbems", host)));
        EXPECT_EQ(name, relay.seen().serverName);
    }
}

TEST_F(Tls, HasVersion12Or13) {
    const std::pair<int, const char*> versions[] = {{TLS1_2_VERSION, "TLSv1.2"}, {0, "TLSv1.3"}};
    for (const auto& [highest, name] : versions) {
        const ScriptedPeer peer({Step::answer(good)}, Listening::ipv4);
        TlsRelayOptions options;
        options.highestVersion = highest;
        const TlsRelay relay(peer.port(), options);
        EXPECT_EQ("no exception", messageOfReadingFrom(relay.url()));
        EXPECT_EQ(name, relay.seen().version);
    }
}

TEST_F(Tls, ReconnectsIfTheServerHasClosedTheConnection) {
    for (const bool saysGoodbye : {true, false}) {
        ScriptedPeer peer({Step::answerAndClose(good)}, Listening::ipv4);
        TlsRelayOptions options;
        options.saysGoodbye = saysGoodbye;
        const TlsRelay relay(peer.port(), options);
        CIMClient client(relay.url().c_str(), "root/cimv2");
        EXPECT_EQ(1U, read(client));
        EXPECT_EQ(1U, read(client));
        EXPECT_EQ(2U, peer.connections());
    }
}

TEST_F(Tls, EndsWithAGoodbye) {
    ScriptedPeer peer({Step::answer(good)}, Listening::ipv4);
    const TlsRelay relay(peer.port());
    EXPECT_EQ("no exception", messageOfReadingFrom(relay.url()));
    peer.awaitEnds(1);
    while (!relay.seen().goodbye) // limited by CTest
        ::usleep(1000);
}

TEST_F(Tls, DoesNotRepeatAWriteIfAKeptConnectionEndsInsteadOfReplying) {
    const std::string done = wire::chunkedReply(std::string(1, '\0'));
    for (const Step& step : {Step::close(), Step::reset(), Step::answerAndClose("HTTP/1.1 2")})
        for (const bool saysGoodbye : {true, false}) {
            ScriptedPeer peer({Step::answer(done), step, Step::answer(done)}, Listening::ipv4);
            TlsRelayOptions options;
            options.saysGoodbye = saysGoodbye;
            const TlsRelay relay(peer.port(), options);
            CIMClient client(relay.url().c_str(), "root/cimv2");
            const auto write = [&] { client.modifyInstance(CIMInstance("Foo")); };
            EXPECT_EQ("no exception", failureOf(write));
            EXPECT_EQ("HTTPException: Unable to process request: ", failureOf(write));
            EXPECT_EQ(2U, peer.requests().size());
            EXPECT_EQ("no exception", failureOf(write));
        }
}

TEST_F(Tls, RepeatsAReadOnceIfAKeptConnectionEndsInsteadOfReplying) {
    ScriptedPeer peer({Step::answer(good), Step::close(), Step::answer(good)}, Listening::ipv4);
    const TlsRelay relay(peer.port());
    CIMClient client(relay.url().c_str(), "root/cimv2");
    EXPECT_EQ(1U, read(client));
    EXPECT_EQ(1U, read(client));
    EXPECT_EQ(3U, peer.requests().size());
}

TEST_F(Tls, SurvivesAServerThatAsksToRenegotiate) {
    const ScriptedPeer peer({Step::answer(good)}, Listening::ipv4);
    TlsRelayOptions options;
    options.highestVersion = TLS1_2_VERSION;
    options.beforeReply = [](SSL* ssl) {
        EXPECT_EQ(1, ::SSL_renegotiate(ssl));
        EXPECT_EQ(1, ::SSL_do_handshake(ssl));
    };
    const TlsRelay relay(peer.port(), options);
    EXPECT_EQ("no exception", messageOfReadingFrom(relay.url()));
}

TEST_F(Tls, FollowsAServerThatChangesItsKeys) {
    ScriptedPeer peer({Step::answer(longReply())}, Listening::ipv4);
    TlsRelayOptions options;
    options.beforeReply = [](SSL* ssl) { EXPECT_EQ(1, ::SSL_key_update(ssl, SSL_KEY_UPDATE_REQUESTED)); };
    const TlsRelay relay(peer.port(), options);
    CIMClient client(relay.url().c_str(), "root/cimv2");
    EXPECT_EQ(20000U, read(client));
    EXPECT_EQ(20000U, read(client));
    EXPECT_EQ(1U, peer.connections());
}

TEST_F(Tls, ChangesNoSignalDisposition) {
    const ScriptedPeer peer({Step::answerAndClose(good)}, Listening::ipv4);
    const TlsRelay relay(peer.port());
    EXPECT_EQ("no exception", messageOfReadingFrom(relay.url()));
    struct sigaction pipe {};
    ::sigaction(SIGPIPE, nullptr, &pipe);
    EXPECT_EQ(SIG_DFL, pipe.sa_handler);
}

TEST_F(Tls, ClientShowsItsCertificate) {
    for (const int highest : {TLS1_2_VERSION, 0}) {
        const ScriptedPeer peer({Step::answer(good)}, Listening::ipv4);
        TlsRelayOptions options;
        options.highestVersion = highest;
        options.demandsCertificate = true;
        const TlsRelay relay(peer.port(), options);
        set("OWB_TLS_CERT", support::certificate("agent.crt"));
        set("OWB_TLS_KEY", support::certificate("agent.key"));
        EXPECT_EQ("no exception", messageOfReadingFrom(relay.url()));
        EXPECT_EQ("agent", relay.seen().client);
        set("OWB_TLS_CERT", support::certificate("agent.pem")); // with its key
        set("OWB_TLS_KEY", "");
        EXPECT_EQ("no exception", messageOfReadingFrom(relay.url()));
        EXPECT_EQ("agent", relay.seen().client);
    }
}

} // namespace
