// Start, messages and end of the object manager.
#include "StartedDaemon.hpp"

#include <csignal>
#include <fstream>
#include <poll.h>
#include <sys/resource.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

const std::string systemsRequest = httpRequest(enumerateBody("QAV_System"));

class Life : public StartedDaemon {
protected:
    std::string who() const { return "owbcimomd: uid " + std::to_string(::geteuid()) + ": "; }

    /** Resets its peak of resident memory to the current size, proc(5). */
    void resetPeak() {
        std::ofstream file("/proc/" + std::to_string(daemon().pid()) + "/clear_refs");
        file << "5" << std::flush;
        EXPECT_TRUE(file.good());
    }

    /** Waits until the object manager has begun a reply to a client that does not read. */
    static void awaitReply(const Client& client) {
        pollfd reply{client.descriptor(), POLLIN, 0};
        EXPECT_EQ(1, ::poll(&reply, 1, 20000));
    }
};

/** A socket of a service manager. */
class ServiceManager {
public:
    explicit ServiceManager(const sockaddr_un& address, socklen_t size)
        : m_socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0)) {
        EXPECT_EQ(0, ::bind(m_socket, reinterpret_cast<const sockaddr*>(&address), size));
    }
    ~ServiceManager() { ::close(m_socket); }

    std::string next() const {
        pollfd waiting{m_socket, POLLIN, 0};
        if (::poll(&waiting, 1, 20000) != 1)
            return "(nothing)";
        char text[256];
        const ssize_t size = ::recv(m_socket, text, sizeof text, 0);
        return std::string(text, static_cast<std::size_t>(size));
    }

private:
    int m_socket;
};

} // namespace

TEST_F(Life, ASuccessfulRequestIsNotLogged) {
    start();
    Client client(socketPath());
    EXPECT_EQ(1u, count(client));
    client.exchange(httpRequest(enumerateBody("QAV_Nope")));
    EXPECT_EQ(who() + "EnumerateInstances QAV_Nope: 5 /root/cimv2:QAV_Nope", daemon().nextErrorLine());
    daemon().signal(SIGTERM);
    EXPECT_EQ("", daemon().nextErrorLine());
    EXPECT_EQ(0, daemon().wait());
}

TEST_F(Life, WithVerboseEveryRequestIsLogged) {
    start({"--verbose", "--listen", "0"});
    Client client(socketPath());
    EXPECT_EQ(1u, count(client));
    EXPECT_EQ(who() + "EnumerateInstances QAV_System", daemon().nextErrorLine());
    Client(port()).exchange(xmlRequest("EnumerateClassNames", ""));
    const std::string line = daemon().nextErrorLine();
    EXPECT_EQ(0u, line.find("owbcimomd: 127.0.0.1:"));
    EXPECT_NE(std::string::npos, line.find(": EnumerateClassNames"));
}

TEST_F(Life, AnErrorResponseIsLogged) {
    start();
    Client(socketPath()).exchange("GET / HTTP/1.1\r\nHost: x\r\nContent-Length: 0\r\n\r\n");
    EXPECT_EQ(who() + "refused: 405 Method not allowed: Method not allowed by server: GET",
              daemon().nextErrorLine());
}

TEST_F(Life, AnErrorResponseIsLoggedAndSentInAscii) {
    start();
    const Reply reply =
        Client(socketPath())
            .exchange("POST / HTTP/1.1\r\nContent-Type: \xc2\x9b\xff\r\nContent-Length: 1\r\n\r\n");
    const std::string reason = "Unsupported media type: Content-Type \"\\xc2\\x9b\\xff\" is not supported.";
    EXPECT_EQ(reason, reply.reason);
    EXPECT_EQ(who() + "refused: 415 " + reason, daemon().nextErrorLine());
}

TEST_F(Life, Sigusr1LogsTheCounters) {
    start();
    Client client(socketPath());
    EXPECT_EQ(1u, count(client));
    client.exchange(httpRequest(enumerateBody("QAV_Nope")));
    daemon().nextErrorLine();
    Client(socketPath()).exchange("GET / HTTP/1.1\r\nHost: x\r\nContent-Length: 0\r\n\r\n");
    daemon().nextErrorLine();
    EXPECT_EQ(1u, count(client)); // after the end of the other connection
    daemon().signal(SIGUSR1);
    EXPECT_EQ("owbcimomd: connections: 2, open 1; requests: 3, failed 1; refused: 1",
              daemon().nextErrorLine());
    EXPECT_EQ(1u, count(client));
}

// The sanitizers keep freed memory.
#ifndef __SANITIZE_ADDRESS__
TEST_F(Life, ALongReplyTakesLittleMemory) {
    const std::size_t many = 100000;
    start({"--instances", systems(many)});
    Client client(socketPath());
    // Allocates the memory that the process keeps.
    client.exchange(httpRequest(enumerateBody("QAV_K70Chassis")));
    resetPeak();
    const long before = status("VmHWM");
    EXPECT_EQ(many + 1, count(client));
    EXPECT_GT(2048, status("VmHWM") - before) << "kB";
}
#endif

TEST_F(Life, AClientThatDoesNotReadItsReplyBlocksNoOther) {
    start({"--instances", systems(20000)});
    Client stuck(socketPath());
    stuck.send(systemsRequest);
    awaitReply(stuck);
    Client other(socketPath());
    EXPECT_EQ(20001u, count(other));
    EXPECT_EQ(20001u, instancesIn(stuck.receive().body).size());
}

TEST_F(Life, ACurrentReplyIsCompletedBeforeTheEnd) {
    start({"--instances", systems(20000)});
    Client reading(socketPath());
    Client idle(socketPath());
    EXPECT_EQ(20001u, count(idle));
    reading.send(systemsRequest);
    awaitReply(reading);
    daemon().signal(SIGTERM);
    EXPECT_TRUE(idle.isClosedByPeer());
    EXPECT_THROW(Client late(socketPath()), std::runtime_error) << "no new client is served";
    EXPECT_EQ(20001u, instancesIn(reading.receive().body).size());
    EXPECT_TRUE(reading.isClosedByPeer());
    EXPECT_EQ(0, daemon().wait());
}

TEST_F(Life, AReplyThatIsNotReadDoesNotPreventTheEnd) {
    start({"--instances", systems(20000), "--stop-time", "0"});
    Client stuck(socketPath());
    stuck.send(systemsRequest);
    awaitReply(stuck);
    daemon().signal(SIGTERM);
    EXPECT_EQ(0, daemon().wait());
    EXPECT_THROW(stuck.receive(), std::runtime_error);
}

TEST_F(Life, AConnectionWithoutADescriptorIsServedOnceOneIsFree) {
    start();
    rlimit before;
    ASSERT_EQ(0, ::prlimit(daemon().pid(), RLIMIT_NOFILE, nullptr, &before));
    const rlimit none = {3, before.rlim_max}; // no further descriptors
    ASSERT_EQ(0, ::prlimit(daemon().pid(), RLIMIT_NOFILE, &none, nullptr));
    Client client(socketPath());
    EXPECT_EQ("owbcimomd: cannot accept a connection: Too many open files", daemon().nextErrorLine());
    ASSERT_EQ(0, ::prlimit(daemon().pid(), RLIMIT_NOFILE, &before, nullptr));
    EXPECT_EQ(1u, count(client));
}

TEST_F(Life, SighupReloadsSiteFiles) {
    start({"--instances", systems(2)});
    Client client(socketPath());
    EXPECT_EQ(3u, count(client));
    systems(5);
    EXPECT_EQ(3u, count(client));
    daemon().signal(SIGHUP);
    EXPECT_EQ("owbcimomd: reloaded the site's files", daemon().nextErrorLine());
    EXPECT_EQ(6u, count(client));
}

TEST_F(Life, ACurrentEnumerationKeepsTheOldSiteFiles) {
    start({"--instances", systems(20000)});
    Client reading(socketPath());
    reading.send(systemsRequest);
    awaitReply(reading);
    systems(1);
    daemon().signal(SIGHUP);
    EXPECT_EQ("owbcimomd: reloaded the site's files", daemon().nextErrorLine());
    EXPECT_EQ(20001u, instancesIn(reading.receive().body).size());
    EXPECT_EQ(2u, count(reading));
}

TEST_F(Life, InvalidSiteFilesAreNotReloaded) {
    start({"--instances", systems(2)});
    const std::string path = directory().write("site/wrong.json", "{\n\"QAV_Nope\": []}");
    daemon().signal(SIGHUP);
    EXPECT_EQ("owbcimomd: cannot reload the site's files: " + path + ":2: unknown class \"QAV_Nope\"",
              daemon().nextErrorLine());
    Client client(socketPath());
    EXPECT_EQ(3u, count(client));
}

TEST_F(Life, InvalidSiteFilesPreventTheStart) {
    const std::string path = directory().write("site/a.json", "{\n\"QAV_System\": [\n{\"Nam\": \"x\"}]}");
    support::Daemon daemon({OWBCIMOMD, "--socket", socketPath(), "--state", directory().file("state"),
                            "--instances", directory().file("site")});
    EXPECT_EQ("owbcimomd: " + path + ":3: QAV_System has no property \"Nam\"", daemon.nextErrorLine());
    EXPECT_EQ(1, daemon.wait());
}

TEST_F(Life, TheServiceManagerIsNotifiedOfReadinessAndEnd) {
    for (const bool isAbstract : {false, true}) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::string name = directory().file(isAbstract ? "abstract" : "notify");
        if (isAbstract)
            name[0] = '@';
        name.copy(address.sun_path, sizeof address.sun_path - 1);
        if (isAbstract)
            address.sun_path[0] = '\0';
        const ServiceManager manager(address,
                                     static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + name.size()));
        ::setenv("NOTIFY_SOCKET", name.c_str(), 1);
        start();
        ::unsetenv("NOTIFY_SOCKET");
        EXPECT_EQ("READY=1", manager.next());
        daemon().signal(SIGTERM);
        EXPECT_EQ("STOPPING=1", manager.next());
        EXPECT_EQ(0, daemon().wait());
    }
}

TEST_F(Life, AServiceManagerWithAWatchdogIsNotifiedPeriodically) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string name = directory().file("notify");
    name.copy(address.sun_path, sizeof address.sun_path - 1);
    const ServiceManager manager(address, sizeof address);
    ::setenv("NOTIFY_SOCKET", name.c_str(), 1);
    ::setenv("WATCHDOG_USEC", "2000", 1);
    start();
    ::unsetenv("WATCHDOG_USEC");
    ::unsetenv("NOTIFY_SOCKET");
    EXPECT_EQ("READY=1", manager.next());
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ("WATCHDOG=1", manager.next());
    daemon().signal(SIGTERM);
    EXPECT_EQ(0, daemon().wait());
}

TEST_F(Life, AWatchdogOfAnotherProcessIsNotNotified) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string name = directory().file("notify");
    name.copy(address.sun_path, sizeof address.sun_path - 1);
    const ServiceManager manager(address, sizeof address);
    ::setenv("NOTIFY_SOCKET", name.c_str(), 1);
    ::setenv("WATCHDOG_USEC", "2000", 1);
    ::setenv("WATCHDOG_PID", "1", 1);
    start();
    ::unsetenv("WATCHDOG_PID");
    ::unsetenv("WATCHDOG_USEC");
    ::unsetenv("NOTIFY_SOCKET");
    EXPECT_EQ("READY=1", manager.next());
    daemon().signal(SIGTERM);
    EXPECT_EQ("STOPPING=1", manager.next());
}

TEST_F(Life, AServiceManagerWithATooLongNameIsLogged) {
    const std::string name = directory().file(std::string(108, 'x'));
    ::setenv("NOTIFY_SOCKET", name.c_str(), 1);
    start();
    ::unsetenv("NOTIFY_SOCKET");
    EXPECT_EQ("owbcimomd: cannot notify service manager: " + name + ": File name too long",
              daemon().nextErrorLine());
}

TEST_F(Life, AMissingServiceManagerIsLogged) {
    ::setenv("NOTIFY_SOCKET", directory().file("missing").c_str(), 1);
    start();
    ::unsetenv("NOTIFY_SOCKET");
    EXPECT_EQ("owbcimomd: cannot notify service manager: " + directory().file("missing") +
                  ": No such file or directory",
              daemon().nextErrorLine());
    Client client(socketPath());
    EXPECT_EQ(1u, count(client));
}
