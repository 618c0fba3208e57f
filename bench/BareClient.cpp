#include "BareClient.hpp"

#include "OW_CIMClient.hpp"
#include "OW_CIMInstanceEnumeration.hpp"
#include "OW_Exception.hpp"

#include "support/ScriptedPeer.hpp"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <vector>

namespace bench {
namespace {

[[noreturn]] void fail(const char* what) {
    std::perror(what);
    std::exit(EXIT_FAILURE);
}

/** Whether a chunked reply ends here, with the last chunk and optional trailers. */
bool isEnd(const std::string& tail) {
    const std::string end = "\r\n\r\n";
    return tail.find("\r\n0\r\n") != std::string::npos && tail.size() >= end.size() &&
           tail.compare(tail.size() - end.size(), end.size(), end) == 0;
}

} // namespace

std::string enumerateRequest(const std::string& className) {
    const support::ScriptedPeer peer({support::Step::close()});
    OpenWBEM::CIMClient client(peer.url().c_str(), "root/cimv2");
    try {
        client.enumInstancesE(className.c_str());
    } catch (const OpenWBEM::Exception&) {
        // The peer records the request and does not answer.
    }
    return peer.requests().front();
}

BareClient::BareClient(const std::string& socketPath)
    : m_socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    socketPath.copy(address.sun_path, sizeof address.sun_path - 1);
    if (::connect(m_socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
        fail("bench: connect");
}

BareClient::~BareClient() {
    ::close(m_socket);
}

std::size_t BareClient::exchange(const std::string& request) {
    if (::send(m_socket, request.data(), request.size(), MSG_NOSIGNAL) !=
        static_cast<ssize_t>(request.size()))
        fail("bench: send");
    const std::size_t trailersAtMost = 512;
    std::vector<char> buffer(65536);
    std::string tail;
    for (std::size_t taken = 0;;) {
        const ssize_t size = ::recv(m_socket, buffer.data(), buffer.size(), 0);
        if (size <= 0)
            fail("bench: recv");
        taken += static_cast<std::size_t>(size);
        const std::size_t last = std::min(static_cast<std::size_t>(size), trailersAtMost);
        tail.append(buffer.data() + size - last, last);
        tail.erase(0, tail.size() - std::min(tail.size(), trailersAtMost));
        if (isEnd(tail))
            return taken;
    }
}

} // namespace bench
