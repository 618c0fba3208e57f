#ifndef TESTS_OPENWBEM_CLIENTS_HPP
#define TESTS_OPENWBEM_CLIENTS_HPP
// What the tests of the client have in common: a good answer, and what comes of a read.
#include "OW_CIMClient.hpp"
#include "OW_CIMErrorException.hpp"
#include "OW_CIMInstanceEnumeration.hpp"
#include "OW_ClientTimeouts.hpp"
#include "OW_HTTPException.hpp"
#include "OW_HTTPUtils.hpp"
#include "OW_IOException.hpp"
#include "OW_SocketException.hpp"
#include "OW_URL.hpp"

#include "support/Child.hpp"
#include "support/ScriptedPeer.hpp"
#include "support/Wire.hpp"

#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>
#include <vector>

using namespace OpenWBEM;
using support::ScriptedPeer;
using support::Step;
namespace wire = support::wire;

inline const std::string good = wire::chunkedReply(wire::enumeration({wire::instance("Foo", {})}));

inline std::size_t read(CIMClient& client) {
    return client.enumInstancesE("Foo").numberOfElements();
}

inline std::string messageOfReading(CIMClient& client) {
    try {
        read(client);
    } catch (const Exception& e) {
        return std::string(e.type()) + ": " + e.getMessage();
    }
    return "no exception";
}

inline std::string messageOfReply(const std::string& reply) {
    ScriptedPeer peer({Step::answer(reply)});
    CIMClient client(peer.url().c_str(), "root/cimv2");
    return messageOfReading(client);
}

// A request larger than what a socket takes at once.
inline std::string messageOfLongRequest(CIMClient& client) {
    try {
        client.enumInstancesE(String(std::string(8000000, 'x').c_str()));
    } catch (const Exception& e) {
        return std::string(e.type()) + ": " + e.getMessage();
    }
    return "no exception";
}

// Bounds the memory that this process may still take. The sanitizers need all of it and bound their own.
inline void limitMemory(unsigned long bytes) {
#ifdef __SANITIZE_ADDRESS__
    static_cast<void>(bytes);
#else
    std::ifstream statm("/proc/self/statm");
    unsigned long pages = 0;
    statm >> pages;
    const rlim_t limit = pages * static_cast<unsigned long>(::sysconf(_SC_PAGESIZE)) + bytes;
    const rlimit both = {limit, limit};
    ::setrlimit(RLIMIT_AS, &both);
#endif
}

// A listener that serves nobody.
class BusyListener {
public:
    BusyListener()
        : m_listener(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        m_address.sun_family = AF_UNIX;
        path().copy(m_address.sun_path, sizeof m_address.sun_path - 1);
        EXPECT_EQ(0, ::bind(m_listener, address(), sizeof m_address));
        EXPECT_EQ(0, ::listen(m_listener, 0));
    }
    ~BusyListener() {
        for (const int client : m_clients)
            ::close(client);
        ::close(m_listener);
    }
    BusyListener(const BusyListener&) = delete;
    BusyListener& operator=(const BusyListener&) = delete;

    std::string path() const { return m_folder.file("busy"); }

    // Takes all connections that it keeps waiting, so that the next one must wait to be made.
    void fill() {
        int client = 0;
        do {
            client = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
            m_clients.push_back(client);
        } while (::connect(client, address(), sizeof m_address) == 0);
    }

private:
    const sockaddr* address() const { return reinterpret_cast<const sockaddr*>(&m_address); }

    support::TempDir m_folder;
    sockaddr_un m_address{};
    int m_listener;
    std::vector<int> m_clients;
};

#endif
