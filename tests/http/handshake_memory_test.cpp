// Out of memory in a TLS handshake ends this connection, and no other.
#include "Pages.hpp"
#include "http/Server.hpp"
#include "support/Certificates.hpp"
#include "support/FailingAllocator.hpp"
#include "support/HttpClient.hpp"
#include "support/Program.hpp"
#include "support/TempDir.hpp"
#include "support/TlsClient.hpp"

#include <boost/asio/io_context.hpp>
#include <exception>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <openssl/crypto.h>
#include <string>
#include <sys/socket.h>
#include <vector>

using namespace http;
using support::HttpClient;
using support::TlsClient;
namespace memory = support::memory;

namespace {

/** A server with TLS, in the thread of the test. */
class HandshakeMemory : public testing::Test {
protected:
    HandshakeMemory() {
        const std::string key =
            m_directory.writeSecret("key", support::readFile(support::certificate("localhost.key")));
        m_server.setTls(readTlsFiles({support::certificate("localhost.crt"), key}));
        const NetworkAddress at = m_server.listenWithTlsOn(*networkAddress("127.0.0.1:0"));
        m_port = ntohs(reinterpret_cast<const sockaddr_in&>(at.address).sin_port);
    }

    /** A client that shakes hands in two turns, and requests a page in the second one. `work` runs after it
     * has sent the bytes of a turn. Returns whether the page has arrived. */
    template <class Work>
    bool visit(Work workInTurn) {
        bool isServed = false;
        {
            const HttpClient socket(m_port);
            TlsClient tls;
            for (int turn = 0; turn < 2; ++turn) {
                const std::string flight = tls.bytesToSend();
                // At once: the kernel would hold back a second piece.
                send(socket, flight + (tls.isConnected() ? tls.encrypted(get("/")) : std::string()));
                workInTurn(turn);
                tls.take(received(socket));
            }
            isServed = tls.received().find("200 Ok") != std::string::npos;
        }
        work();                                   // sees the end of the connection
        m_pages.log = std::vector<std::string>(); // frees its memory
        return isServed;
    }
    bool serves() {
        return visit([this](int) { work(); });
    }
    /** Whether the server's work in a turn needs n allocations; the n-th one fails. */
    bool failsIn(int failingTurn, void (*fail)(long), long n) {
        bool hasFailed = false;
        visit([&](int turn) {
            if (turn == failingTurn)
                fail(n);
            work();
            hasFailed = memory::stopFailing() || hasFailed;
        });
        return hasFailed;
    }
    /** Outstanding allocations without those of OpenSSL for this thread: its error queue keeps texts. */
    static long outstandingWithoutErrors() {
        ::OPENSSL_thread_stop();
        return memory::outstanding();
    }
    std::size_t openConnections() const { return m_server.openConnections(); }

private:
    /** Does all that can be done now. As in the programs, an exception ends one session. */
    void work() {
        for (bool isDone = false; !isDone;) {
            try {
                isDone = m_io.poll() == 0;
            } catch (const std::exception&) {
            }
        }
    }
    /** The server may have closed the connection. */
    static void send(const HttpClient& socket, const std::string& bytes) {
        ::send(socket.descriptor(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
    }
    /** What has arrived. */
    static std::string received(const HttpClient& socket) {
        std::string bytes(16384, '\0');
        const ssize_t size = ::recv(socket.descriptor(), bytes.data(), bytes.size(), MSG_DONTWAIT);
        bytes.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
        return bytes;
    }

    support::TempDir m_directory;
    Pages m_pages;
    boost::asio::io_context m_io{1};
    Server m_server{m_io, m_pages.settings()};
    std::uint16_t m_port = 0;
};

} // namespace

TEST_F(HandshakeMemory, AConnectionWithoutMemoryEndsAndTheNextOneIsServed) {
    ASSERT_TRUE(serves());
    const long before = outstandingWithoutErrors();
    for (void (*const fail)(long) : {memory::failAt, memory::failFrom}) {
        for (int turn = 0; turn < 2; ++turn) {
            long allocation = 0;
            for (; failsIn(turn, fail, allocation); ++allocation) {
                ASSERT_EQ(0u, openConnections()) << "allocation " << allocation << " of turn " << turn;
                if (allocation % 50 == 0) {
                    ASSERT_TRUE(serves()) << "allocation " << allocation << " of turn " << turn;
                }
            }
            EXPECT_LT(10, allocation) << turn;
        }
    }
    EXPECT_TRUE(serves());
    EXPECT_EQ(before, outstandingWithoutErrors());
}
