#include "Client.hpp"
#include "LampProvider.hpp"
#include "http/Session.hpp"
#include "protocol/BinaryHandler.hpp"
#include "protocol/XmlHandler.hpp"

#include <boost/asio/io_context.hpp>
#include <gtest/gtest.h>
#include <sys/socket.h>

using namespace cimom;
using namespace std::chrono_literals;

namespace {

/** A session and its client in one thread: the client sends, the session is run to its end, the client reads.
 */
class SessionTest : public ::testing::Test {
protected:
    SessionTest() {
        ::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, m_ends);
        client = std::make_unique<Client>(m_ends[0]);
    }

    /** Returns when the session has ended. */
    void run(const Limits& limits) {
        ObjectManager manager = lampManager(colours);
        const BinaryHandler binary(manager);
        const XmlHandler xml(manager);
        const SessionSettings settings{binary, xml, limits};
        Counters counters;
        Sessions sessions;
        boost::asio::io_context io(1);
        Session::Socket socket(io, boost::asio::generic::stream_protocol(AF_UNIX, 0), m_ends[1]);
        std::make_shared<Session>(std::move(socket), settings, counters, sessions)->start();
        io.run();
        EXPECT_EQ(0u, sessions.count());
    }

    std::vector<std::string> colours = {"red"};
    std::unique_ptr<Client> client;

private:
    int m_ends[2];
};

Limits limits(std::chrono::milliseconds idle, std::chrono::milliseconds request) {
    Limits result;
    result.idle = idle;
    result.request = request;
    return result;
}

const Limits shortIdle = limits(10ms, 60s);
const Limits shortRequest = limits(60s, 10ms);

} // namespace

TEST_F(SessionTest, AnIdleConnectionIsToldSoAndClosed) {
    run(shortIdle);
    const Reply reply = client->receive();
    EXPECT_EQ(0u, reply.bytes.find("HTTP/1.0 408 Request timeout: Timeout waiting for request.\r\n"));
    EXPECT_TRUE(reply.hasLine("Connection: close"));
    EXPECT_TRUE(client->isClosedByPeer());
}

TEST_F(SessionTest, AConnectionThatIsIdleAfterARequestIsToldSoInItsVersion) {
    client->send(httpRequest(enumerateBody("QAV_Lamp")));
    run(shortIdle);
    EXPECT_EQ(200u, client->receive().status);
    EXPECT_EQ(0u, client->receive().bytes.find("HTTP/1.1 408 Request timeout"));
    EXPECT_TRUE(client->isClosedByPeer());
}

TEST_F(SessionTest, AHeadThatStopsHalfwayTimesOut) {
    client->send("M-POST /cimom HTTP/1.1\r\nHost: local");
    run(shortRequest);
    EXPECT_EQ(408u, client->receive().status);
    EXPECT_TRUE(client->isClosedByPeer());
}

TEST_F(SessionTest, ABodyThatStopsHalfwayTimesOut) {
    const std::string request = httpRequest(enumerateBody("QAV_Lamp"));
    client->send(request.substr(0, request.size() - 1));
    run(shortRequest);
    EXPECT_EQ(408u, client->receive().status);
    EXPECT_TRUE(client->isClosedByPeer());
}

TEST_F(SessionTest, ARequestThatComesWhenItsTimeIsUpIsAnsweredBeforeTheEndOrNotAtAll) {
    client->send(httpRequest(enumerateBody("QAV_Lamp")));
    run(limits(0ms, 60s));
    Reply last = client->receive();
    if (last.status == 200)
        last = client->receive();
    EXPECT_EQ(408u, last.status);
    EXPECT_TRUE(client->isClosedByPeer());
}

TEST_F(SessionTest, AReplyThatNobodyTakesIsGivenUp) {
    colours = {std::string(4 * 1024 * 1024, 'x')};
    client->send(httpRequest(enumerateBody("QAV_Lamp")));
    run(shortRequest);
    EXPECT_THROW(client->receive(), std::runtime_error);
}

TEST_F(SessionTest, AClientThatGoesWhileItIsAnsweredEndsItsSession) {
    colours = {std::string(4 * 1024 * 1024, 'x')};
    client->send(httpRequest(enumerateBody("QAV_Lamp")));
    client.reset();
    run(limits(60s, 60s));
}

TEST_F(SessionTest, RequestsThatComeAtOnceAreAnsweredInTurn) {
    client->send(httpRequest(enumerateBody("QAV_Lamp")) + httpRequest(enumerateBody("QAV_Nope")) +
                 httpRequest(enumerateBody("QAV_Lamp")));
    run(shortIdle);
    EXPECT_EQ(1u, instancesIn(client->receive().body).size());
    EXPECT_TRUE(client->receive().hasLine("02-CIMStatusCode: 5"));
    EXPECT_EQ(1u, instancesIn(client->receive().body).size());
}

TEST_F(SessionTest, ALargeReplyComesInChunks) {
    colours = {std::string(10000, 'x')};
    client->send(httpRequest(enumerateBody("QAV_Lamp")));
    run(shortIdle);
    const Reply reply = client->receive();
    EXPECT_NE(std::string::npos, reply.bytes.find("\r\n\r\n1000\r\n"));
    EXPECT_EQ("\r\n0\r\n\r\n", reply.bytes.substr(reply.bytes.size() - 7));
    EXPECT_EQ(colours[0], instancesIn(reply.body).at(0).getPropertyValue("Colour").toString().c_str());
}
