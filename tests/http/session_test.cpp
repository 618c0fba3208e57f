#include "Pages.hpp"
#include "http/Session.hpp"
#include "support/HttpClient.hpp"

#include <boost/asio/io_context.hpp>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace http;
using namespace std::chrono_literals;
using support::HttpClient;
using support::HttpReply;

namespace {

/** A session and its client in one thread: the client sends, the session runs to its end, the client reads.
 */
class SessionTest : public ::testing::Test {
protected:
    SessionTest() {
        ::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, m_ends);
        client = std::make_unique<HttpClient>(m_ends[0]);
    }

    void start(const Settings& settings) {
        sessions = std::make_shared<Sessions>(settings);
        Session::Socket socket(io, boost::asio::generic::stream_protocol(AF_UNIX, 0), m_ends[1]);
        std::make_shared<Session>(std::move(socket), sessions)->start();
    }
    /** Returns when the session has ended. */
    void run(const Settings& settings) {
        start(settings);
        io.run();
        EXPECT_EQ(0u, sessions->count());
    }
    /** Does all that can be done now. */
    void work() {
        while (io.poll() > 0) {
        }
    }

    std::string peer = "uid " + std::to_string(::geteuid());
    Pages pages;
    std::unique_ptr<HttpClient> client;
    boost::asio::io_context io{1};
    std::shared_ptr<Sessions> sessions;

private:
    int m_ends[2];
};

} // namespace

TEST_F(SessionTest, AnIdleConnectionGetsStatus408AndIsClosed) {
    run(pages.settings(10ms));
    const HttpReply reply = client->receive();
    EXPECT_EQ(0u, reply.bytes.find("HTTP/1.0 408 Request timeout: Timeout waiting for request.\r\n"));
    EXPECT_TRUE(reply.hasLine("Connection: close"));
    EXPECT_TRUE(client->isClosedByPeer());
    EXPECT_TRUE(pages.log.empty()) << "it is no failure";
    EXPECT_EQ(0u, sessions->counters.refused);
}

TEST_F(SessionTest, AConnectionThatIsIdleAfterARequestGetsStatus408InTheVersionOfTheRequest) {
    client->send(get("/"));
    run(pages.settings(10ms));
    EXPECT_EQ(200u, client->receive().status);
    EXPECT_EQ(0u, client->receive().bytes.find("HTTP/1.1 408 Request timeout"));
    EXPECT_TRUE(client->isClosedByPeer());
}

TEST_F(SessionTest, AHeadThatStopsHalfwayTimesOut) {
    client->send("GET / HTTP/1.1\r\nHost: local");
    run(pages.settings(60s, 10ms));
    EXPECT_EQ(408u, client->receive().status);
    EXPECT_TRUE(client->isClosedByPeer());
    EXPECT_EQ(1u, sessions->counters.refused);
}

TEST_F(SessionTest, ABodyThatStopsHalfwayTimesOut) {
    client->send(post("/", "a body").substr(0, post("/", "a body").size() - 1));
    run(pages.settings(60s, 10ms));
    EXPECT_EQ(408u, client->receive().status);
    EXPECT_TRUE(client->isClosedByPeer());
}

TEST_F(SessionTest, ARequestThatArrivesAtTheTimeLimitIsAnsweredBeforeTheEndOrNotAtAll) {
    client->send(get("/"));
    run(pages.settings(0ms));
    HttpReply last = client->receive();
    if (last.status == 200)
        last = client->receive();
    EXPECT_EQ(408u, last.status);
    EXPECT_TRUE(client->isClosedByPeer());
}

TEST_F(SessionTest, AReplyThatTheClientDoesNotReadTimesOut) {
    pages.parts = {std::string(4 * 1024 * 1024, 'x')};
    client->send(get("/"));
    run(pages.settings(60s, 500ms));
    EXPECT_THROW(client->receive(), std::runtime_error);
}

TEST_F(SessionTest, AClientThatClosesDuringTheReplyEndsItsSession) {
    pages.parts = {std::string(4 * 1024 * 1024, 'x')};
    client->send(get("/"));
    client.reset();
    run(pages.settings());
}

TEST_F(SessionTest, RequestsThatArriveTogetherAreAnsweredInTurn) {
    client->send(get("/one") + post("/two", "echo") + get("/three"));
    run(pages.settings(10ms));
    EXPECT_TRUE(client->receive().hasLine("X-Page: /one"));
    EXPECT_EQ("echo", client->receive().body);
    EXPECT_TRUE(client->receive().hasLine("X-Page: /three"));
    EXPECT_EQ(3u, sessions->counters.requests);
}

TEST_F(SessionTest, ALongReplyArrivesWholeInManyPieces) {
    pages.parts.assign(100, std::string(10000, 'x'));
    client->send(get("/"));
    start(pages.settings());
    std::string received;
    for (char bytes[65536]; received.size() < 1000000;) {
        work();
        const ssize_t size = ::recv(client->descriptor(), bytes, sizeof bytes, MSG_DONTWAIT);
        received.append(bytes, size > 0 ? static_cast<std::size_t>(size) : 0);
    }
    EXPECT_NE(std::string::npos, received.find("\r\nTransfer-Encoding: chunked\r\n"));
}

TEST_F(SessionTest, AFailedRequestIsLoggedAndCounted) {
    client->send(get("/broken") + get("/fine"));
    run(pages.settings(10ms));
    EXPECT_EQ(std::vector<std::string>{peer + ": page /broken: it is broken"}, pages.log);
    EXPECT_EQ(2u, sessions->counters.requests);
    EXPECT_EQ(1u, sessions->counters.failed);
}

TEST_F(SessionTest, AVerboseServerLogsEachRequest) {
    client->send(get("/fine"));
    Settings settings = pages.settings(10ms);
    settings.isVerbose = true;
    run(settings);
    EXPECT_EQ(std::vector<std::string>{peer + ": page /fine"}, pages.log);
}

TEST_F(SessionTest, ARequestWhoseHeadIsRejectedClosesTheConnection) {
    client->send(get("/missing") + get("/fine"));
    run(pages.settings());
    EXPECT_EQ(0u, client->receive().bytes.find("HTTP/1.1 404 Not found: /missing\r\n"));
    EXPECT_EQ(std::vector<std::string>{peer + ": refused: 404 Not found: /missing"}, pages.log);
    EXPECT_EQ(1u, sessions->counters.refused);
    EXPECT_EQ(0u, sessions->counters.requests);
}

TEST_F(SessionTest, ARequestThatIsNotAuthorizedClosesTheConnection) {
    pages.rejection =
        ErrorResponse{401, "Unauthorized", "log in", "WWW-Authenticate", "Basic realm=\"pages\""};
    client->send(get("/"));
    run(pages.settings());
    const HttpReply reply = client->receive();
    EXPECT_EQ(401u, reply.status);
    EXPECT_TRUE(reply.hasLine("WWW-Authenticate: Basic realm=\"pages\""));
    EXPECT_TRUE(client->isClosedByPeer());
}

TEST_F(SessionTest, AnAuthorizationThatTakesTooLongTimesOut) {
    std::vector<std::function<void()>> pending;
    pages.pending = &pending;
    client->send(get("/"));
    start(pages.settings(60s, 500ms));
    io.run();
    EXPECT_EQ(408u, client->receive().status);
    ASSERT_EQ(1u, pending.size());
    pending[0](); // has no effect
    EXPECT_EQ(1u, pending.size());
    EXPECT_TRUE(client->isClosedByPeer());
}

TEST_F(SessionTest, AnAnswerHasNoTimeLimit) {
    std::vector<std::function<void()>> pending;
    pages.pending = &pending;
    client->send(get("/late"));
    start(pages.settings(60s, 500ms));
    while (pending.empty())
        work();
    pending[0](); // authorizes
    io.run_for(50ms);
    ASSERT_EQ(2u, pending.size());
    pending[1](); // answers
    work();
    EXPECT_TRUE(client->receive().hasLine("X-Page: /late"));
}

TEST_F(SessionTest, AnExceptionOfAReplyPassesTheLoopAndEndsTheConnection) {
    pages.fault = "out of paper";
    client->send(get("/"));
    start(pages.settings());
    EXPECT_THROW(io.run(), std::runtime_error);
    EXPECT_EQ(0u, sessions->count());
    EXPECT_TRUE(client->isClosedByPeer());
}

TEST_F(SessionTest, AFinishedSessionStillSendsItsReply) {
    std::vector<std::function<void()>> pending;
    pages.pending = &pending;
    client->send(get("/last"));
    start(pages.settings());
    while (pending.empty())
        work();
    sessions->finish();
    pending[0]();
    pending[1]();
    pending.clear();
    io.run();
    EXPECT_TRUE(client->receive().hasLine("X-Page: /last"));
    EXPECT_TRUE(client->isClosedByPeer());
    EXPECT_EQ(0u, sessions->count());
}

TEST_F(SessionTest, AFinishedIdleSessionIsClosedAtOnce) {
    start(pages.settings());
    work();
    sessions->finish();
    io.run();
    EXPECT_TRUE(client->isClosedByPeer());
}
