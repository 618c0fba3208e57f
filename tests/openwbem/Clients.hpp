#ifndef TESTS_OPENWBEM_CLIENTS_HPP
#define TESTS_OPENWBEM_CLIENTS_HPP
// Helpers for tests of the client: a good reply, and the outcome of a read.
#include "OW_CIMClient.hpp"
#include "OW_CIMErrorException.hpp"
#include "OW_CIMInstanceEnumeration.hpp"
#include "OW_ClientTimeouts.hpp"
#include "OW_HTTPException.hpp"
#include "OW_HTTPUtils.hpp"
#include "OW_IOException.hpp"
#include "OW_SSLException.hpp"
#include "OW_SocketAddress.hpp"
#include "OW_SocketException.hpp"
#include "OW_URL.hpp"

#include "Failure.hpp"
#include "Memory.hpp"
#include "support/Child.hpp"
#include "support/ScriptedPeer.hpp"
#include "support/Wire.hpp"

#include <cstring>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <string>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>
#include <vector>

using namespace OpenWBEM;
using support::Listening;
using support::ScriptedPeer;
using support::Step;
namespace wire = support::wire;

inline const std::string good = wire::chunkedReply(wire::enumeration({wire::instance("Foo", {})}));

inline const std::string chunkedHead = "HTTP/1.1 200 Ok\r\nTransfer-Encoding: chunked\r\n\r\n";

inline std::size_t read(CIMClient& client) {
    return client.enumInstancesE("Foo").numberOfElements();
}

inline std::string messageOfReading(CIMClient& client) {
    return failureOf([&client] { read(client); });
}

inline std::string messageOfConstruction(const std::string& url) {
    return failureOf([&url] { CIMClient(url.c_str(), "root/cimv2"); });
}

inline std::string messageOfReply(const std::string& reply) {
    ScriptedPeer peer({Step::answer(reply)});
    CIMClient client(peer.url().c_str(), "root/cimv2");
    return messageOfReading(client);
}

// A request larger than a socket buffer.
inline std::string messageOfLongRequest(CIMClient& client) {
    return failureOf([&client] { client.enumInstancesE(String(std::string(8000000, 'x').c_str())); });
}

// A listener that never accepts, on a Unix-domain socket or a loopback port.
class BusyListener {
public:
    explicit BusyListener(sa_family_t family = AF_UNIX)
        : m_listener(::socket(family, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_un local{};
        path().copy(local.sun_path, sizeof local.sun_path - 1);
        sockaddr_in loopback{};
        loopback.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        m_size = family == AF_UNIX ? sizeof local : sizeof loopback;
        if (family == AF_UNIX)
            std::memcpy(&m_address, &local, m_size);
        else
            std::memcpy(&m_address, &loopback, m_size);
        m_address.ss_family = family;
        EXPECT_EQ(0, ::bind(m_listener, address(), m_size));
        EXPECT_EQ(0, ::listen(m_listener, 0));
        ::getsockname(m_listener, address(), &m_size);
    }
    ~BusyListener() {
        for (const int client : m_clients)
            ::close(client);
        ::close(m_listener);
    }
    BusyListener(const BusyListener&) = delete;
    BusyListener& operator=(const BusyListener&) = delete;

    std::string path() const { return m_directory.file("busy"); }
    std::string url() const {
        const std::string port =
            std::to_string(ntohs(reinterpret_cast<const sockaddr_in&>(m_address).sin_port));
        return m_address.ss_family == AF_UNIX ? support::urlOf(path()) : "owbinary.wbem://127.0.0.1:" + port;
    }

    // Fills the backlog, so that the next connection blocks.
    void fill() {
        for (int i = 0; i < 8; ++i) {
            m_clients.push_back(::socket(m_address.ss_family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
            ::connect(m_clients.back(), address(), m_size);
        }
    }

private:
    sockaddr* address() { return reinterpret_cast<sockaddr*>(&m_address); }

    support::TempDir m_directory;
    sockaddr_storage m_address{};
    socklen_t m_size = 0;
    int m_listener;
    std::vector<int> m_clients;
};

#endif
