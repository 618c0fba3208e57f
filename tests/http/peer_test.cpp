#include "http/NetworkAddress.hpp"
#include "http/Peer.hpp"

#include "util/Descriptor.hpp"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace http;

namespace {

/** Connects to a listening socket of the network, and accepts the connection. */
class Connection {
public:
    explicit Connection(const NetworkSocket& listening)
        : m_client(::socket(listening.at.address.ss_family, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        ::connect(m_client.number(), reinterpret_cast<const sockaddr*>(&listening.at.address),
                  listening.at.size);
        m_size = sizeof m_from.address;
        ::getsockname(m_client.number(), reinterpret_cast<sockaddr*>(&m_from.address), &m_size);
        accepted = ::accept4(listening.descriptor, nullptr, nullptr, SOCK_CLOEXEC);
    }
    ~Connection() { ::close(accepted); }
    std::string client() const { return textOf(m_from); }

    int accepted;

private:
    util::Descriptor m_client;
    NetworkAddress m_from;
    socklen_t m_size;
};

} // namespace

TEST(Peer, ALocalPeerHasTheUserThatConnected) {
    int ends[2];
    ASSERT_EQ(0, ::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends));
    const Peer peer = peerOf(ends[0]);
    EXPECT_EQ("uid " + std::to_string(::geteuid()), peer.name);
    EXPECT_EQ(::geteuid(), peer.user);
    EXPECT_FALSE(peer.isOnNetwork());
    ::close(ends[0]);
    ::close(ends[1]);
}

TEST(Peer, APeerThatTheKernelDoesNotReportHasNoUser) {
    EXPECT_EQ("unknown user", peerOf(-1).name);
    EXPECT_EQ(std::nullopt, peerOf(-1).user);
    const util::Descriptor unconnected(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    EXPECT_EQ(std::nullopt, peerOf(unconnected.number()).user);
}

TEST(Peer, APeerOnTheNetworkIsCountedByItsAddressOrItsHalfOfIpv6) {
    const auto addressOf = [](const char* at) {
        const NetworkSocket listening = listenOn(*networkAddress(at));
        const util::Descriptor closing(listening.descriptor);
        return peerOf(Connection(listening).accepted).address;
    };
    EXPECT_EQ("127.0.0.1", addressOf("127.0.0.1:0"));
    EXPECT_EQ("[::]", addressOf("[::1]:0"));
}

TEST(Peer, APeerOnTheNetworkHasAnAddressAndNoUser) {
    const NetworkSocket listening = listenOn(*networkAddress("127.0.0.1:0"));
    const util::Descriptor closing(listening.descriptor);
    const Connection connection(listening);
    const Peer peer = peerOf(connection.accepted);
    EXPECT_EQ(connection.client(), peer.name);
    EXPECT_EQ(0u, peer.name.find("127.0.0.1:"));
    EXPECT_EQ(std::nullopt, peer.user);
    EXPECT_TRUE(peer.isOnNetwork());
}
