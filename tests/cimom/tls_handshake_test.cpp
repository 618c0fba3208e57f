// Clients that do not shake hands as they should. The object manager must answer the next client.
#include "TlsConnection.hpp"
#include "TlsDaemon.hpp"

#include <csignal>
#include <sys/socket.h>

using support::TlsClient;

namespace {

const char* const ok = "HTTP/1.1 200 Ok";
const char* const closed = "TLS handshake failed: the client closed the connection";

class TlsHandshake : public TlsDaemon {
protected:
    /** The answer to a new client. */
    std::string answer() const {
        TlsConnection client(port());
        client.connect();
        return client.statusLine();
    }
    /** Sends bytes, and ends the connection. Returns the line that is logged. */
    std::string lineAfter(const std::string& bytes) {
        const Client socket(port());
        socket.send(bytes);
        ::shutdown(socket.descriptor(), SHUT_WR);
        return nextLogLine();
    }
};

class TlsHandshakeOfVersion : public TlsHandshake, public testing::WithParamInterface<int> {};

/** A TLS record of the type "handshake". */
std::string record(std::size_t size) {
    return std::string("\x16\x03\x01", 3) + static_cast<char>(size >> 8U) + static_cast<char>(size & 0xffU) +
           std::string(size, '\0');
}

std::size_t firstRecordSize(const std::string& bytes) {
    return static_cast<unsigned char>(bytes[3]) * 256U + static_cast<unsigned char>(bytes[4]);
}

} // namespace

TEST_P(TlsHandshakeOfVersion, MayArriveInPiecesOfEachSize) {
    start(options());
    const std::size_t longest = TlsClient(GetParam()).bytesToSend().size();
    for (std::size_t size = 1; size <= longest; size += size < 32 ? 1 : 16) {
        TlsConnection client(port(), GetParam());
        client.connect(size);
        ASSERT_EQ(ok, client.statusLine()) << size << " bytes each: " << client.tls.failure();
    }
}

TEST_P(TlsHandshakeOfVersion, MayBeCutAfterEachByteOfTheFirstFlight) {
    start(options());
    const std::string flight = TlsClient(GetParam()).bytesToSend();
    for (std::size_t size = 0; size < flight.size(); ++size)
        ASSERT_EQ(closed, lineAfter(flight.substr(0, size))) << size;
    EXPECT_EQ(ok, answer());
}

TEST_P(TlsHandshakeOfVersion, MayBeCutAfterEachByteOfTheLastFlight) {
    start(options());
    std::size_t length = 1;
    for (std::size_t size = 0; size < length; ++size) {
        TlsConnection client(port(), GetParam());
        const std::string flight = client.lastFlight();
        length = flight.size();
        ASSERT_LT(50u, length) << client.tls.failure();
        client.socket.send(flight.substr(0, size));
        client.shutDown();
        ASSERT_EQ(closed, nextLogLine()) << size;
    }
    EXPECT_EQ(ok, answer());
}

TEST_P(TlsHandshakeOfVersion, AConnectionThatEndsInTheBodyOfARequestGetsNoAnswer) {
    start(options());
    {
        TlsConnection client(port(), GetParam());
        client.connect();
        const std::string request = httpRequest(enumerateBody("QAV_System"));
        client.socket.send(client.tls.encrypted(std::string_view(request).substr(0, request.size() - 1)));
        client.shutDown();
        client.receiveUntil([] { return false; });
        EXPECT_EQ("", client.tls.received());
    }
    daemon().signal(SIGUSR1);
    EXPECT_EQ("owbcimomd: connections: 1, open 0; requests: 0, failed 0; refused: 0",
              daemon().nextErrorLine());
}

INSTANTIATE_TEST_SUITE_P(Of, TlsHandshakeOfVersion, testing::Values(TLS1_2_VERSION, TLS1_3_VERSION),
                         [](const auto& version) {
                             return std::string(version.param == TLS1_2_VERSION ? "Tls12" : "Tls13");
                         });

TEST_F(TlsHandshake, AFirstMessageMayFillARecordOrMore) {
    start(options());
    const std::size_t maximum = 16384;
    const std::size_t other = firstRecordSize(TlsClient(TLS1_3_VERSION, 1).bytesToSend()) - 1;
    for (const std::size_t size : {maximum, maximum + 1, maximum + 5000}) {
        EXPECT_EQ(maximum, firstRecordSize(TlsClient(TLS1_3_VERSION, size - other).bytesToSend()));
        TlsConnection client(port(), TLS1_3_VERSION, size - other);
        client.connect();
        EXPECT_EQ(ok, client.statusLine()) << size << ": " << client.tls.failure();
    }
}

TEST_F(TlsHandshake, ARecordOfMoreThanTheMaximumLengthEndsTheConnection) {
    start(options());
    EXPECT_EQ("TLS handshake failed: packet length too long", lineAfter(record(65535)));
    EXPECT_EQ("TLS handshake failed: data length too long", lineAfter(record(16384 + 1)));
    EXPECT_EQ("TLS handshake failed: unexpected message", lineAfter(record(16384)));
    EXPECT_EQ(ok, answer());
}

TEST_F(TlsHandshake, ADamagedFlightEndsTheConnection) {
    start(options());
    const std::string flight = TlsClient().bytesToSend();
    for (std::size_t at = 0; at < flight.size(); at += 3) {
        std::string damaged = flight;
        damaged[at] = static_cast<char>(~damaged[at]);
        ASSERT_EQ("TLS handshake failed: ", lineAfter(damaged).substr(0, 22)) << at;
    }
    EXPECT_EQ(ok, answer());
}

TEST_F(TlsHandshake, TlsOnAPortWithoutItIsRefusedAsARequest) {
    start({"--listen", "127.0.0.1:0"});
    Client socket(port());
    socket.send(TlsClient().bytesToSend());
    EXPECT_EQ(400u, socket.receive().status);
    EXPECT_TRUE(socket.isClosedByPeer());
    EXPECT_EQ("refused: 400 ", nextLogLine().substr(0, 13));
}

TEST_F(TlsHandshake, StalledOnesLeaveRoomForLocalClientsAndEndAfterTheTimeLimit) {
    start(options({"--max-connections", "400", "--request-time", "2"}));
    std::vector<std::unique_ptr<Client>> stalled;
    for (int i = 0; i < 300; ++i) { // three quarters of the limit
        stalled.push_back(std::make_unique<Client>(port()));
        stalled.back()->send("\x16");
    }
    EXPECT_TRUE(Client(port()).isClosedByPeer());
    EXPECT_EQ("refused: 503 Service unavailable: connection queue full", nextLogLine());
    Client local(socketPath());
    EXPECT_EQ(1u, count(local));
    for (const auto& each : stalled) {
        EXPECT_TRUE(each->isClosedByPeer());
        EXPECT_EQ("TLS handshake failed: timed out after 2 s", nextLogLine());
    }
    EXPECT_EQ(ok, answer());
}

TEST_F(TlsHandshake, ARenegotiationIsRefused) {
    start(options());
    TlsConnection client(port(), TLS1_2_VERSION);
    client.connect();
    EXPECT_EQ(ok, client.statusLine());
    client.tls.renegotiate();
    client.socket.send(client.tls.bytesToSend());
    client.receiveUntil([&] { return !client.tls.continueHandshake().empty(); });
    EXPECT_EQ("no renegotiation", client.tls.failure());
    EXPECT_EQ(ok, answer());
}

TEST_F(TlsHandshake, ARenegotiationOfAnIndependentClientIsRefused) {
    start(options());
    const support::ProgramResult result = support::runProgram(
        {"/bin/bash", "-c",
         "exec \"$0\" s_client -tls1_2 -connect localhost:\"$1\" < <(echo R; exec sleep 5 >/dev/null 2>&1)",
         OPENSSL, std::to_string(port())});
    EXPECT_NE(std::string::npos, result.err.find("RENEGOTIATING")) << result.err;
    EXPECT_NE(std::string::npos, result.err.find("no renegotiation")) << result.err;
    EXPECT_EQ(ok, answer());
}
