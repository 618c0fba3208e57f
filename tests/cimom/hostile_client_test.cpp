// Clients that send invalid requests to the object manager, and honest clients at the same time.
#include "Client.hpp"
#include "MutatedRequests.hpp"
#include "StartedDaemon.hpp"

#include <csignal>
#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>

namespace {

/** A connection that ignores errors of writes and the content of replies. */
class HostileConnection {
public:
    explicit HostileConnection(const std::string& path)
        : m_descriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        path.copy(address.sun_path, sizeof address.sun_path - 1);
        if (::connect(m_descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
            throw std::runtime_error("connect");
    }
    ~HostileConnection() { ::close(m_descriptor); }
    HostileConnection(const HostileConnection&) = delete;
    HostileConnection& operator=(const HostileConnection&) = delete;

    void send(const std::string& bytes) const {
        ::send(m_descriptor, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    }
    /** Shuts down the sending side and waits for the end of the connection. */
    void finish() const {
        ::shutdown(m_descriptor, SHUT_WR);
        char ignored[65536];
        while (::recv(m_descriptor, ignored, sizeof ignored, 0) > 0) {
        }
    }

private:
    int m_descriptor;
};

class HostileClients : public StartedDaemon {
protected:
    void SetUp() override {
        directory().write("host/proc/sys/kernel/hostname", "box.example.org\n");
        start({"--root", directory().file("host"), "--max-connections", "200"});
        // Read the log: the daemon would block on a full pipe.
        m_reader = std::thread([this] {
            while (!daemon().nextErrorLine().empty()) {
            }
        });
    }
    void TearDown() override {
        daemon().signal(SIGTERM);
        m_reader.join();
        EXPECT_EQ(0, daemon().wait());
    }

    /** Sends mutated and truncated requests one after the other, each on a new connection. */
    void send(int requests) {
        for (int i = 0; i < requests; ++i) {
            const std::string& request = m_recorded[m_dice.below(m_recorded.size())];
            const HostileConnection connection(socketPath());
            connection.send(i % 2 == 0 ? mutated(request, m_dice)
                                       : request.substr(0, m_dice.below(request.size())));
            connection.finish();
        }
    }

    std::string hostName() const {
        Client client(socketPath());
        const auto found = instancesIn(client.exchange(httpRequest(enumerateBody("QAV_System"))).body);
        return found.size() == 1 ? found[0].getPropertyValue("Name").toString().c_str() : "not one instance";
    }

    const std::vector<std::string>& recorded() const { return m_recorded; }

private:
    const std::vector<std::string> m_recorded = recordedRequests();
    Dice m_dice;
    std::thread m_reader;
};

} // namespace

TEST_F(HostileClients, DoNotBlockOtherClients) {
    EXPECT_EQ("box.example.org", hostName());
    std::vector<std::unique_ptr<HostileConnection>> open;
    for (std::size_t i = 0; i < 100; ++i) {
        const std::string& request = recorded()[i % recorded().size()];
        open.push_back(std::make_unique<HostileConnection>(socketPath()));
        open.back()->send(request.substr(0, request.size() * i / 100));
    }
    EXPECT_EQ("box.example.org", hostName());
    send(300);
    EXPECT_EQ("box.example.org", hostName());
    open.clear();
    EXPECT_EQ("box.example.org", hostName());
}

// The sanitizers keep freed memory.
#ifndef __SANITIZE_ADDRESS__
TEST_F(HostileClients, LeakNoMemory) {
    send(300); // allocates the memory that the process keeps
    const long before = status("VmRSS");
    send(1000);
    EXPECT_EQ("box.example.org", hostName());
    EXPECT_GT(before + 2048, status("VmRSS"));
}
#endif
