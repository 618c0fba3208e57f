// The client with a real object manager that stops and restarts.
#include "OW_CIMClient.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMInstanceEnumeration.hpp"
#include "OW_Exception.hpp"

#include "Failure.hpp"
#include "support/Manager.hpp"
#include "support/ScriptedPeer.hpp"
#include "support/TempDir.hpp"

#include <csignal>
#include <gtest/gtest.h>
#include <poll.h>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>

namespace {

using namespace OpenWBEM;
using support::Manager;

int unixSocket(const std::string& path, int (*attach)(int, const sockaddr*, socklen_t)) {
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    EXPECT_EQ(0, attach(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address)) << path;
    return socket;
}

// Relays one connection between a client and the object manager. Runs an action and closes the connection
// after a number of bytes of the reply.
class Relay {
public:
    template <class Then>
    Relay(const std::string& path, const std::string& manager, std::size_t bytes, Then then)
        : m_listener(unixSocket(path, ::bind)) {
        EXPECT_EQ(0, ::listen(m_listener, 1));
        m_thread = std::thread([this, manager, bytes, then] {
            const int client = ::accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC);
            const int server = unixSocket(manager, ::connect);
            pass(client, server, bytes);
            then();
            ::close(server);
            ::close(client);
        });
    }
    ~Relay() {
        m_thread.join();
        ::close(m_listener);
    }
    Relay(const Relay&) = delete;
    Relay& operator=(const Relay&) = delete;

private:
    static void pass(int client, int server, std::size_t left) {
        char bytes[4096];
        while (left > 0) {
            pollfd both[] = {{client, POLLIN, 0}, {server, POLLIN, 0}};
            ::poll(both, 2, -1);
            const bool fromServer = both[1].revents != 0;
            const ssize_t n = fromServer ? ::recv(server, bytes, std::min(left, sizeof bytes), 0)
                                         : ::recv(client, bytes, sizeof bytes, 0);
            if (n <= 0)
                return;
            ::send(fromServer ? client : server, bytes, static_cast<std::size_t>(n), MSG_NOSIGNAL);
            if (fromServer)
                left -= static_cast<std::size_t>(n);
        }
    }

    int m_listener;
    std::thread m_thread;
};

std::size_t read(CIMClient& client) {
    return client.enumInstancesE("QAV_OperatingSystem").numberOfElements();
}

std::string messageOfReading(CIMClient& client) {
    return failureOf([&] { read(client); });
}

TEST(Lifecycle, ARestartBetweenTwoRequestsIsInvisible) {
    Manager manager;
    CIMClient client(manager.url().c_str(), "root/cimv2");
    for (const int signal : {SIGTERM, SIGKILL}) {
        EXPECT_EQ(1U, read(client));
        manager.end(signal);
        manager.start();
    }
    EXPECT_EQ(1U, read(client));
}

TEST(Lifecycle, AMissingObjectManagerIsAnExceptionUntilItRestarts) {
    Manager manager;
    CIMClient client(manager.url().c_str(), "root/cimv2");
    EXPECT_EQ(1U, read(client));
    manager.end(SIGTERM);
    EXPECT_EQ("SocketException: Failed to connect to: " + manager.socketPath() +
                  ": 2(No such file or directory)",
              messageOfReading(client));
    manager.start();
    EXPECT_EQ(1U, read(client));
}

TEST(Lifecycle, AKillInTheMiddleOfAReplyIsAnExceptionAndTheNextRequestWorks) {
    const support::TempDir directory;
    Manager manager;
    CIMClient client(support::urlOf(directory.file("relay")).c_str(), "root/cimv2");
    for (const std::size_t bytes : {1U, 40U, 300U, 600U}) {
        {
            const Relay relay(directory.file("relay"), manager.socketPath(), bytes,
                              [&] { manager.end(SIGKILL); });
            const std::string message = messageOfReading(client);
            EXPECT_TRUE(message == "IOException: Failed reading data" ||
                        message == "HTTPException: Unable to process request: ")
                << bytes << ": " << message;
        }
        ::unlink(directory.file("relay").c_str());
        manager.start();
        {
            const Relay relay(directory.file("relay"), manager.socketPath(), std::string::npos, [] {});
            EXPECT_EQ(1U, read(client)) << bytes;
            client = CIMClient(support::urlOf(directory.file("relay")).c_str(),
                               "root/cimv2"); // ends the connection
        }
        ::unlink(directory.file("relay").c_str());
    }
}

} // namespace
