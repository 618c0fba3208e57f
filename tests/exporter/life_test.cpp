// Start, messages and end of the exporter.
#include "RunningExporter.hpp"

#include <csignal>
#include <cstdlib>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

class ExporterLife : public RunningExporter {};

support::ProgramResult run(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), OWB_EXPORTER);
    return support::runProgram(arguments);
}

/** The next datagram of a socket. */
std::string nextOf(int socket) {
    pollfd waiting{socket, POLLIN, 0};
    char text[64];
    if (::poll(&waiting, 1, 20000) != 1)
        return "(nothing)";
    return std::string(text, static_cast<std::size_t>(::recv(socket, text, sizeof text, 0)));
}

} // namespace

TEST_F(ExporterLife, SigtermEndsItWithStatus0) {
    startExporter();
    exporter().signal(SIGTERM);
    EXPECT_EQ(0, exporter().wait());
}

TEST_F(ExporterLife, ARequestThatWaitsIsAnsweredBeforeTheEnd) {
    start();
    manager().daemon().signal(SIGSTOP);
    support::HttpClient client(port());
    client.send(request("/metrics", "X-Prometheus-Scrape-Timeout-Seconds: 1\r\n"));
    awaitChild();
    exporter().signal(SIGTERM);
    EXPECT_EQ("0", checkedText(client.receive()).value("owb_scrape_success"));
    EXPECT_EQ(0, exporter().wait());
    manager().daemon().signal(SIGCONT);
}

TEST_F(ExporterLife, VerboseLogsEveryRequest) {
    startExporter({"--verbose"});
    get("/healthz");
    const std::string line = exporter().nextErrorLine();
    EXPECT_EQ("owb-exporter: 127.0.0.1:", line.substr(0, 24));
    EXPECT_EQ(": GET /healthz", line.substr(line.size() - 14));
}

TEST_F(ExporterLife, TheServiceManagerIsNotified) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    directory().file("notify").copy(address.sun_path, sizeof address.sun_path - 1);
    const int socket = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    ASSERT_EQ(0, ::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address));
    ::setenv("NOTIFY_SOCKET", address.sun_path, 1);
    startExporter();
    ::unsetenv("NOTIFY_SOCKET");
    EXPECT_EQ("READY=1", nextOf(socket));
    exporter().signal(SIGTERM);
    EXPECT_EQ("STOPPING=1", nextOf(socket));
    ::close(socket);
}

TEST_F(ExporterLife, AnAddressInUseGivesStatus1) {
    startExporter();
    const std::string address = "127.0.0.1:" + std::to_string(port());
    const support::ProgramResult result = run({"--listen", address});
    EXPECT_EQ(1, result.exitCode);
    EXPECT_EQ("owb-exporter: " + address + ": Address already in use\n", result.err);
}

TEST(ExporterUsage, AnInvalidCommandLineGivesStatus2) {
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{"--listen", "here"},
                                               {"--groups", "17"},
                                               {"--groups", "4,99"},
                                               {"--max-age", "-1"},
                                               {"--timeout", "0"},
                                               {"--url", ""},
                                               {"unknown"},
                                               {"--unknown"}}) {
        const support::ProgramResult result = run(arguments);
        EXPECT_EQ(2, result.exitCode) << arguments.back();
        EXPECT_EQ(0U, result.err.find("owb-exporter: command line: ")) << result.err;
    }
    EXPECT_NE(std::string::npos, run({"--groups", "17"}).err.find("'17' names no group that has metrics"));
}

TEST(ExporterUsage, HelpAndVersionGoToStandardOutput) {
    EXPECT_NE(std::string::npos, run({"--help"}).out.find("127.0.0.1:9588"));
    EXPECT_EQ(0U, run({"--version"}).out.find("owb-exporter "));
}
