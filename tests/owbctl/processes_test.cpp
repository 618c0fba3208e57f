// `owbctl processes` on the processes of this host.
#include "Owbctl.hpp"
#include "commands/Processes.hpp"
#include "formats/CsvFormat.hpp"
#include "formats/JsonFormat.hpp"
#include "formats/LineFormat.hpp"
#include "formats/TableFormat.hpp"
#include "support/Child.hpp"
#include "support/TempDir.hpp"

#include <algorithm>
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
    EXPECT_EQ((header >> first, first), "Name");
    bool isThere = false;
    while (std::getline(lines, line)) {
        std::istringstream words(line);
        std::string name;
        std::string handle;
        std::string state;
        words >> name >> handle >> state;
        isThere = isThere || (handle == stopped.handle() && state == "stopped");
    }
    EXPECT_TRUE(isThere) << result.out;
}

TEST(Processes, TheOrderIsAnOption) {
    std::vector<long> handles;
    const json document = json::parse(owbctl({"processes", "--sort", "PID", "-ojson"}).out);
    for (const json& process : document.at("processes"))
        handles.push_back(std::stol(process.at("handle").get<std::string>()));
    EXPECT_GT(handles.size(), 1u);
    EXPECT_TRUE(std::is_sorted(handles.begin(), handles.end()));
    EXPECT_EQ(owbctl({"processes", "--sort", "colour"}).exitCode, 2);
}

TEST(Processes, AProcessThatWasReadOnceIsLeftOutUnlessRequested) {
    using namespace agent;
    const std::vector<Process> read = {{"3", ProcessInformation{"c", "", {}, "4", "2"}, std::nullopt},
                                       {"2", ProcessInformation{"b", "", {}, "4", "2"}, ProcessStatistics()},
                                       {"1", std::nullopt, ProcessStatistics()}};
    const auto complete = owbctl::select(read, {ProcessOrder::handle, false});
    ASSERT_EQ(complete.size(), 1u);
    EXPECT_EQ(complete[0].handle, "2");
    const auto all = owbctl::select(read, {ProcessOrder::handle, true});
    ASSERT_EQ(all.size(), 3u);
    EXPECT_EQ(all[0].handle, "1");
    EXPECT_EQ(owbctl({"processes", "--all"}).exitCode, 0);
}

/** What a format writes for a process with an argument of two lines. */
template <class Format, class... Parameters>
std::string twoLines(Parameters... parameters) {
    const support::TempDir directory;
    return support::inChild(directory.path(), [&] {
        owbctl::Output output;
        Format(output, parameters...)
            .writeProcesses({{"7", agent::ProcessInformation{"sh", "/bin/sh", {"-c", "one\ntwo"}, "4", "2"},
                              std::nullopt}});
    });
}

TEST(Processes, AnArgumentOfTwoLinesIsOneLineInTablesAndLines) {
    EXPECT_NE(twoLines<owbctl::TableFormat>().find("  /bin/sh -c one\\ntwo\n"), std::string::npos);
    EXPECT_NE(twoLines<owbctl::LineFormat>().find("\n7.Parameters[1] = one\\ntwo\n"), std::string::npos);
}

TEST(Processes, AnArgumentOfTwoLinesIsQuotedInCsvAndJson) {
    EXPECT_NE(twoLines<owbctl::CsvFormat>().find(",\"-c\none\ntwo\","), std::string::npos);
    const json document = json::parse(twoLines<owbctl::JsonFormat>(std::string("url")));
    EXPECT_EQ(document["processes"][0]["information"]["parameters"][1], "one\ntwo");
}

TEST(Processes, NoObjectManagerIsContacted) {
    EXPECT_EQ(owbctl({"--url", deadUrl(), "processes"}).exitCode, 0);
}

} // namespace
} // namespace owbctl_test
