// Slow programs of the host.
#include "StartedDaemon.hpp"
#include "inventory/ProcessTree.hpp"

#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/** A host whose software inventory reads its answer from a named pipe. */
class SlowProgram : public StartedDaemon {
protected:
    SlowProgram() {
        FakeProcess process;
        process.name = "daemon";
        ProcessTree(directory().file("host/proc")).add("7", process);
        const std::string program =
            directory().write("host/kq/bin/softinv",
                              "#!/bin/sh\necho >>" + directory().file("runs") + "\ncat " + pipe() + "\n");
        ::chmod(program.c_str(), 0700);
        EXPECT_EQ(0, ::mkfifo(pipe().c_str(), 0600));
        start({"--root", directory().file("host"), "--stop-time", "0"});
    }

    std::string pipe() const { return directory().file("pipe"); }
    /** Opens the pipe. Waits until the program has opened it for reading. */
    int openPipe() const { return ::open(pipe().c_str(), O_WRONLY | O_CLOEXEC); }
    std::string runs() const { return support::readFile(directory().file("runs")); }
};

const std::string processes = httpRequest(enumerateBody("QAV_UnixProcess"));

std::string runType(const Reply& reply) {
    return instancesIn(reply.body).at(0).getPropertyValue("RunType").toString().c_str();
}

bool isAnswered(const Client& client) {
    pollfd reply{client.descriptor(), POLLIN, 0};
    return ::poll(&reply, 1, 0) != 0;
}

void answer(int pipe, const std::string& line) {
    EXPECT_EQ(static_cast<ssize_t>(line.size()), ::write(pipe, line.data(), line.size()));
    ::close(pipe);
}

} // namespace

TEST_F(SlowProgram, BlocksOnlyClientsThatNeedItsAnswer) {
    Client waiting(socketPath());
    waiting.send(processes);
    const int pipe = openPipe();
    Client other(socketPath());
    EXPECT_EQ(200u, other.exchange(httpRequest(enumerateBody("QAV_OperatingSystem"))).status);
    EXPECT_EQ(
        1u,
        instancesIn(other.exchange(httpRequest(enumerateBody("QAV_UnixProcessStatisticalInformation"))).body)
            .size());
    EXPECT_FALSE(isAnswered(waiting));
    answer(pipe, "daemon 1.0 x Driver\n");
    EXPECT_EQ("3", runType(waiting.receive()));
}

TEST_F(SlowProgram, RunsOnceForAllClientsThatWait) {
    Client first(socketPath());
    first.send(processes);
    const int pipe = openPipe();
    Client second(socketPath());
    second.send(
        xmlRequest("EnumerateInstanceNames",
                   "<IPARAMVALUE NAME=\"ClassName\"><CLASSNAME NAME=\"QAV_UnixProcess\"/></IPARAMVALUE>"));
    EXPECT_EQ(200u, Client(socketPath()).exchange(httpRequest(enumerateBody("QAV_OperatingSystem"))).status);
    answer(pipe, "daemon 1.0 x Operating\n");
    EXPECT_EQ("2", runType(first.receive()));
    EXPECT_NE(std::string::npos, second.receive().body.find("Handle"));
    EXPECT_EQ("2", runType(first.exchange(processes))) << "and it is cached";
    EXPECT_EQ("\n", runs());
}

TEST_F(SlowProgram, AClientThatClosesMeanwhileDoesNoHarm) {
    {
        Client gone(socketPath());
        gone.send(processes);
        answer(openPipe(), "daemon 1.0 x Driver\n");
    }
    EXPECT_EQ("3", runType(Client(socketPath()).exchange(processes)));
}

TEST_F(SlowProgram, EndsWithTheObjectManager) {
    Client waiting(socketPath());
    waiting.send(processes);
    const int pipe = openPipe();
    daemon().signal(SIGTERM);
    EXPECT_EQ("", daemon().nextErrorLine());
    EXPECT_EQ(0, daemon().wait());
    pollfd end{pipe, 0, 0};
    EXPECT_EQ(1, ::poll(&end, 1, 20000)) << "the program has ended";
    EXPECT_NE(0, end.revents & POLLERR);
    ::close(pipe);
}
