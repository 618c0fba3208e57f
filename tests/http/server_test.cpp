#include "Pages.hpp"
#include "http/NetworkAddress.hpp"
#include "http/Server.hpp"
#include "http/UnixSocket.hpp"
#include "support/HttpClient.hpp"
#include "support/TempDir.hpp"

#include <boost/asio/io_context.hpp>
#include <gtest/gtest.h>
#include <netinet/in.h>

using namespace http;
using support::HttpClient;
using support::HttpReply;

namespace {

/** A server that takes two connections, in the thread of the test. */
class ServerTest : public ::testing::Test {
protected:
    ServerTest() { server.listen(m_socket.duplicate(), AF_UNIX); }

    /** Does all that can be done now. */
    void work() {
        while (io.poll() > 0) {
        }
    }
    std::unique_ptr<HttpClient> connect() {
        auto client = std::make_unique<HttpClient>(m_directory.file("socket"));
        work();
        return client;
    }
    unsigned statusOf(HttpClient& client) {
        client.send(get("/"));
        work();
        return client.receive().status;
    }

    static Settings twoConnections(Settings settings) {
        settings.limits.connections = 2;
        return settings;
    }

    Pages pages;
    boost::asio::io_context io{1};
    Server server{io, twoConnections(pages.settings())};

private:
    support::TempDir m_directory;
    const UnixSocket m_socket{m_directory.file("socket"), 0600};
};

} // namespace

TEST_F(ServerTest, ServesAsManyConnectionsAsAllowed) {
    const auto first = connect();
    const auto second = connect();
    EXPECT_EQ(200u, statusOf(*first));
    EXPECT_EQ(200u, statusOf(*second));
    EXPECT_EQ(2u, server.openConnections());
    EXPECT_EQ(2u, server.counters().requests);
}

TEST_F(ServerTest, AConnectionBeyondTheLimitGetsStatus503AndIsClosed) {
    const auto first = connect();
    const auto second = connect();
    const auto third = connect();
    const HttpReply reply = third->receive();
    EXPECT_EQ(0u, reply.bytes.find("HTTP/1.0 503 Service unavailable: connection queue full\r\n"));
    EXPECT_TRUE(reply.hasLine("Connection: close"));
    EXPECT_TRUE(reply.hasLine("Content-Length: 0"));
    EXPECT_TRUE(third->isClosedByPeer());
    EXPECT_EQ(200u, statusOf(*first));
    EXPECT_EQ(200u, statusOf(*second));
}

TEST_F(ServerTest, AConnectionThatEndsMakesRoomForAnother) {
    const auto first = connect();
    auto second = connect();
    second.reset();
    work();
    EXPECT_EQ(200u, statusOf(*connect()));
}

TEST_F(ServerTest, ARefusedConnectionTakesNoRoom) {
    const auto first = connect();
    auto second = connect();
    const auto refused = connect();
    second.reset();
    work();
    EXPECT_EQ(200u, statusOf(*connect()));
}

TEST_F(ServerTest, ServesSocketsOfTheNetworkToo) {
    const NetworkSocket network = listenOn(*networkAddress("127.0.0.1:0"));
    server.listen(network.descriptor, AF_INET);
    const auto port = ntohs(reinterpret_cast<const sockaddr_in&>(network.at.address).sin_port);
    HttpClient client(port);
    work();
    EXPECT_EQ(200u, statusOf(client));
}

TEST_F(ServerTest, AStoppedServerLeavesTheLoopNoWork) {
    const auto idle = connect();
    server.stop();
    io.run();
    EXPECT_TRUE(idle->isClosedByPeer());
    EXPECT_EQ(0u, server.openConnections());
}
