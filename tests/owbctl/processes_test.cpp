// `owbctl processes` on the processes of this host.
#include "Owbctl.hpp"

#include <csignal>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

namespace owbctl_test {
namespace {

using nlohmann::json;

/** A sleeping process with a known command line. The destructor ends it. */
class Sleeper {
public:
    Sleeper()
        : m_pid(::fork()) {
        if (m_pid == 0) {
            ::execl("/bin/sleep", "sleep", "1000", static_cast<char*>(nullptr));
            ::_exit(127);
        }
        int status = 0;
        ::kill(m_pid, SIGSTOP); // it may not have become sleep(1) yet: the tests ask for the handle alone
        ::waitpid(m_pid, &status, WUNTRACED);
    }
    ~Sleeper() {
        ::kill(m_pid, SIGKILL);
        ::waitpid(m_pid, nullptr, 0);
    }
    Sleeper(const Sleeper&) = delete;
    Sleeper& operator=(const Sleeper&) = delete;
    std::string handle() const { return std::to_string(m_pid); }

private:
    pid_t m_pid;
};

json processWith(const json& document, const std::string& handle) {
    for (const json& process : document.at("processes")) {
        if (process.at("handle") == handle)
            return process;
    }
    ADD_FAILURE() << "no process " << handle;
    return json();
}

TEST(Processes, TheJsonDocumentHoldsBothPartsOfEachProcess) {
    const Sleeper stopped;
    const support::ProgramResult result = owbctl({"processes", "-ojson"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    const json document = json::parse(result.out);
    EXPECT_EQ(document.at("format_version"), 1);
    const json child = processWith(document, stopped.handle());
    EXPECT_EQ(child.at("information").at("execution_state"), "4") << "stopped";
    EXPECT_EQ(child.at("statistics").at("total_cpu_time").get<std::string>().size(), 25u);

    const json own = processWith(document, std::to_string(::getpid()));
    EXPECT_EQ(own.at("information").at("name"), "owbctl_test");
    const std::string path = own.at("information").at("module_path");
    EXPECT_EQ(path.substr(path.rfind('/')), "/owbctl_test");
    EXPECT_TRUE(own.at("information").at("parameters").is_array());
    EXPECT_GT(std::stol(own.at("statistics").at("real_text").get<std::string>()), 0);
}

TEST(Processes, TheTableHasOneLineForEachProcess) {
    const Sleeper stopped;
    const support::ProgramResult result = owbctl({"processes"});
    EXPECT_EQ(result.exitCode, 0);
    std::istringstream lines(result.out);
    std::string line;
    std::getline(lines, line);
    std::istringstream header(line);
    std::string first;
    EXPECT_EQ((header >> first, first), "Handle");
    bool isThere = false;
    while (std::getline(lines, line)) {
        std::istringstream words(line);
        std::string handle;
        std::string state;
        words >> handle >> state;
        isThere = isThere || (handle == stopped.handle() && state == "stopped");
    }
    EXPECT_TRUE(isThere) << result.out;
}

TEST(Processes, NoObjectManagerIsContacted) {
    EXPECT_EQ(owbctl({"--url", deadUrl(), "processes"}).exitCode, 0);
}

} // namespace
} // namespace owbctl_test
