// Beginning, end, and what the object manager says in between.
#include "StartedDaemon.hpp"

#include <csignal>
#include <fstream>
#include <poll.h>
#include <sstream>
#include <sys/un.h>
#include <unistd.h>

namespace {

const std::string systemsRequest = httpRequest(enumerateBody("QAV_System"));

class Life : public StartedDaemon {
protected:
    std::string who() const { return "owbcimomd: uid " + std::to_string(::geteuid()) + ": "; }

    /** A value in kB of /proc/<pid>/status of the object manager. */
    long status(const std::string& field) {
        std::istringstream all(support::readFile("/proc/" + std::to_string(daemon().pid()) + "/status"));
        for (std::string line; std::getline(all, line);) {
            if (line.compare(0, field.size() + 1, field + ":") == 0)
                return std::stol(line.substr(field.size() + 1));
        }
        return -1;
    }

    /** Lets its peak of memory be what it has now, proc(5). */
    void resetPeak() {
        std::ofstream file("/proc/" + std::to_string(daemon().pid()) + "/clear_refs");
        file << "5" << std::flush;
        EXPECT_TRUE(file.good());
    }

    /** Returns when the object manager has begun a reply to a client that does not read it. */
    static void awaitReply(int descriptor) {
        pollfd reply{descriptor, POLLIN, 0};
        EXPECT_EQ(1, ::poll(&reply, 1, 20000));
    }
};

/** A client whose connection a test may look at. */
class OpenClient {
public:
    explicit OpenClient(const std::string& path)
        : descriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))
        , client(descriptor) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        path.copy(address.sun_path, sizeof address.sun_path - 1);
        EXPECT_EQ(0, ::connect(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address));
    }

    int descriptor;
    Client client;
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

TEST_F(Life, ARequestThatIsAnsweredWellIsNotLogged) {
    start();
    Client client(socketPath());
    EXPECT_EQ(1u, count(client));
    client.exchange(httpRequest(enumerateBody("QAV_Nope")));
    EXPECT_EQ(who() + "EnumerateInstances QAV_Nope: 5 /root/cimv2:QAV_Nope", daemon().nextErrorLine());
    daemon().signal(SIGTERM);
    EXPECT_EQ("", daemon().nextErrorLine());
    EXPECT_EQ(0, daemon().wait());
}

TEST_F(Life, EveryRequestIsLoggedWhenTold) {
    start({"--verbose", "--listen", "0"});
    Client client(socketPath());
    EXPECT_EQ(1u, count(client));
    EXPECT_EQ(who() + "EnumerateInstances QAV_System", daemon().nextErrorLine());
    Client(port()).exchange(xmlRequest("EnumerateClassNames", ""));
    const std::string line = daemon().nextErrorLine();
    EXPECT_EQ(0u, line.find("owbcimomd: 127.0.0.1:"));
    EXPECT_NE(std::string::npos, line.find(": EnumerateClassNames"));
}

TEST_F(Life, ARefusalIsLogged) {
    start();
    Client(socketPath()).exchange("GET / HTTP/1.1\r\nHost: x\r\nContent-Length: 0\r\n\r\n");
    EXPECT_EQ(who() + "refused: 405 Method not allowed: Method not allowed by server: GET",
              daemon().nextErrorLine());
}

// The sanitizers keep what has been freed.
#ifndef __SANITIZE_ADDRESS__
TEST_F(Life, ALongReplyTakesLittleMemory) {
    const std::size_t many = 100000;
    start({"--instances", systems(many)});
    Client client(socketPath());
    client.exchange(httpRequest(enumerateBody("QAV_K70Chassis"))); // what every request takes
    resetPeak();
    const long before = status("VmHWM");
    EXPECT_LT(0, before);
    EXPECT_EQ(many + 1, count(client));
    EXPECT_GT(2048, status("VmHWM") - before) << "kB";
}
#endif

TEST_F(Life, AClientThatDoesNotTakeItsReplyHoldsNobodyUp) {
    start({"--instances", systems(20000)});
    OpenClient stuck(socketPath());
    stuck.client.send(systemsRequest);
    awaitReply(stuck.descriptor);
    Client other(socketPath());
    EXPECT_EQ(20001u, count(other));
    EXPECT_EQ(20001u, instancesIn(stuck.client.receive().body).size());
}

TEST_F(Life, AReplyUnderWayIsFinishedBeforeTheEnd) {
    start({"--instances", systems(20000)});
    OpenClient reading(socketPath());
    Client idle(socketPath());
    EXPECT_EQ(20001u, count(idle));
    reading.client.send(systemsRequest);
    awaitReply(reading.descriptor);
    daemon().signal(SIGTERM);
    EXPECT_TRUE(idle.isClosedByPeer());
    EXPECT_THROW(Client late(socketPath()), std::runtime_error) << "nobody new is served";
    EXPECT_EQ(20001u, instancesIn(reading.client.receive().body).size());
    EXPECT_TRUE(reading.client.isClosedByPeer());
    EXPECT_EQ(0, daemon().wait());
}

TEST_F(Life, AReplyThatNobodyTakesDoesNotKeepItFromEnding) {
    start({"--instances", systems(20000), "--stop-time", "0"});
    OpenClient stuck(socketPath());
    stuck.client.send(systemsRequest);
    awaitReply(stuck.descriptor);
    daemon().signal(SIGTERM);
    EXPECT_EQ(0, daemon().wait());
    EXPECT_THROW(stuck.client.receive(), std::runtime_error);
}

TEST_F(Life, SiteFilesAreReadAgainWhenTold) {
    start({"--instances", systems(2)});
    Client client(socketPath());
    EXPECT_EQ(3u, count(client));
    systems(5);
    EXPECT_EQ(3u, count(client));
    daemon().signal(SIGHUP);
    EXPECT_EQ("owbcimomd: read the site's files again", daemon().nextErrorLine());
    EXPECT_EQ(6u, count(client));
}

TEST_F(Life, AnEnumerationUnderWayKeepsTheOldSiteFiles) {
    start({"--instances", systems(20000)});
    OpenClient reading(socketPath());
    reading.client.send(systemsRequest);
    awaitReply(reading.descriptor);
    systems(1);
    daemon().signal(SIGHUP);
    EXPECT_EQ("owbcimomd: read the site's files again", daemon().nextErrorLine());
    EXPECT_EQ(20001u, instancesIn(reading.client.receive().body).size());
    EXPECT_EQ(2u, count(reading.client));
}

TEST_F(Life, SiteFilesThatAreWrongLeaveTheOldOnes) {
    start({"--instances", systems(2)});
    const std::string path = folder().write("site/wrong.json", "{\n\"QAV_Nope\": []}");
    daemon().signal(SIGHUP);
    EXPECT_EQ("owbcimomd: the site's files stay as they were: " + path + ":2: there is no class \"QAV_Nope\"",
              daemon().nextErrorLine());
    Client client(socketPath());
    EXPECT_EQ(3u, count(client));
}

TEST_F(Life, SiteFilesThatAreWrongEndItAtStart) {
    const std::string path = folder().write("site/a.json", "{\n\"QAV_System\": [\n{\"Nam\": \"x\"}]}");
    support::Daemon daemon({OWBCIMOMD, "--socket", socketPath(), "--state", folder().file("state"),
                            "--instances", folder().file("site")});
    EXPECT_EQ("owbcimomd: " + path + ":3: QAV_System has no property \"Nam\"", daemon.nextErrorLine());
    EXPECT_EQ(1, daemon.wait());
}

TEST_F(Life, TheServiceManagerIsToldWhenItIsReadyAndWhenItEnds) {
    for (const bool isAbstract : {false, true}) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::string name = folder().file(isAbstract ? "abstract" : "notify");
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

TEST_F(Life, AServiceManagerThatIsNotThereIsNoReasonToEnd) {
    ::setenv("NOTIFY_SOCKET", folder().file("nobody").c_str(), 1);
    start();
    ::unsetenv("NOTIFY_SOCKET");
    EXPECT_EQ("owbcimomd: telling " + folder().file("nobody") + " READY=1: No such file or directory",
              daemon().nextErrorLine());
    Client client(socketPath());
    EXPECT_EQ(1u, count(client));
}
