#include "Client.hpp"
#include "LampProvider.hpp"
#include "http/ListeningSocket.hpp"
#include "http/Server.hpp"
#include "protocol/BinaryHandler.hpp"
#include "protocol/XmlHandler.hpp"
#include "support/TempDir.hpp"

#include <boost/asio/io_context.hpp>
#include <gtest/gtest.h>

using namespace cimom;

namespace {

/** A server that takes two connections, in the thread of the test: it works while it is told to. */
class ServerTest : public ::testing::Test {
protected:
    ServerTest() { m_server.listen(m_socket.duplicate(), AF_UNIX); }

    /** Does all that the clients have given cause to. */
    void work() {
        while (m_io.poll() > 0) {
        }
    }
    std::unique_ptr<Client> connect() {
        auto client = std::make_unique<Client>(m_folder.file("socket"));
        work();
        return client;
    }
    unsigned statusOf(Client& client) {
        client.send(httpRequest(enumerateBody("QAV_Lamp")));
        work();
        return client.receive().status;
    }

private:
    static Limits twoConnections() {
        Limits limits;
        limits.connections = 2;
        return limits;
    }

    support::TempDir m_folder;
    ObjectManager m_manager = lampManager({"red"});
    const BinaryHandler m_binary{m_manager};
    const XmlHandler m_xml{m_manager};
    const SessionSettings m_settings{m_binary, m_xml, twoConnections()};
    Counters m_counters;
    Sessions m_sessions;
    boost::asio::io_context m_io{1};
    const ListeningSocket m_socket{m_folder.file("socket"), 0600};
    Server m_server{m_io, m_settings, m_counters, m_sessions};
};

} // namespace

TEST_F(ServerTest, AsManyConnectionsAsAllowedAreServed) {
    const auto first = connect();
    const auto second = connect();
    EXPECT_EQ(200u, statusOf(*first));
    EXPECT_EQ(200u, statusOf(*second));
}

TEST_F(ServerTest, AConnectionBeyondTheLimitIsToldSoAndClosed) {
    const auto first = connect();
    const auto second = connect();
    const auto third = connect();
    const Reply reply = third->receive();
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

TEST_F(ServerTest, ARefusedConnectionTakesNobodysPlace) {
    const auto first = connect();
    auto second = connect();
    const auto refused = connect();
    second.reset();
    work();
    EXPECT_EQ(200u, statusOf(*connect()));
}
