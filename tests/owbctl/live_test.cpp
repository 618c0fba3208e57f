// owbctl, libowb and the object manager together, on the values of this host.
#include "Owbctl.hpp"
#include "support/Manager.hpp"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <ctime>
#include <string>
#include <vector>

namespace owbctl_test {
namespace {

using nlohmann::json;

class Live : public testing::Test {
protected:
    support::ProgramResult run(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), {"--url", manager_.url()});
        return owbctl(arguments);
    }

    json rowsOf(const std::string& group) const {
        const support::ProgramResult result = run({"-ojson", "get", group});
        EXPECT_EQ(result.exitCode, 0) << result.err;
        return json::parse(result.out)["groups"][0]["rows"];
    }

private:
    support::Manager manager_;
};

// First value of a property in a row.
std::string valueOf(const json& row, const std::string& name) {
    for (const json& property : row["properties"]) {
        if (property["name"] == name)
            return property["values"][0];
    }
    ADD_FAILURE() << "no property " << name;
    return "";
}

TEST_F(Live, TheNameOfTheHostIsThatOfTheKernel) {
    std::string name = support::readFile("/proc/sys/kernel/hostname");
    name.pop_back(); // the line feed
    const json rows = rowsOf("2");
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(valueOf(rows[0], "SystemName"), name);
}

TEST_F(Live, TheRunningProcessesAreCounted) {
    const json rows = rowsOf("4");
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_GE(std::stoul(valueOf(rows[0], "NumberOfProcesses")), 3u)
        << "this test, the object manager, owbctl";
}

TEST_F(Live, TheTimeToLiveIsThatOfTheKernel) {
    const json rows = rowsOf("12");
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(valueOf(rows[0], "DefaultTTL") + "\n", support::readFile("/proc/sys/net/ipv4/ip_default_ttl"));
}

TEST_F(Live, AValueIsWrittenAndShownBeforeAndAfter) {
    run({"set", "2", "0", "PrimaryOwnerContact=ops"});
    const support::ProgramResult result = run({"set", "2", "0", "PrimaryOwnerContact=me", "5=rack 7"});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, "Group 2  QAV_System  (row 0)\n"
                          "Property             Asked for  Before  After\n"
                          "PrimaryOwnerContact  yes        ops     me\n"
                          "InstalledLocation    yes        -       rack 7\n");
    EXPECT_EQ(valueOf(rowsOf("2")[0], "InstalledLocation"), "rack 7");
}

TEST_F(Live, ARejectedValueIsReportedAndNothingIsWritten) {
    const support::ProgramResult result = run({"set", "2", "0", "SysServices=1", "InstalledLocation=rack 7"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.out, "Group 2  QAV_System  (row 0)\nno change\n");
    EXPECT_NE(result.err.find("SysServices rejected: requested '1', current '"), std::string::npos);
    EXPECT_NE(result.err.find("InstalledLocation rejected: requested 'rack 7', current no value"),
              std::string::npos);
}

TEST_F(Live, AnInstanceIsReadByItsPath) {
    const std::string name = valueOf(rowsOf("2")[0], "SystemName");
    const support::ProgramResult result =
        run({"-ojson", "instance", "QAV_System.Name=\"" + name + "\",CreationClassName=\"QAV_System\""});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    const json groups = json::parse(result.out)["groups"];
    ASSERT_EQ(groups.size(), 2u) << "both groups of the class";
    EXPECT_EQ(groups[0]["group"], 1);
    EXPECT_EQ(valueOf(groups[1]["rows"][0], "SystemName"), name);
    EXPECT_EQ(run({"instance", "QAV_System.Name=\"nobody\",CreationClassName=\"QAV_System\""}).exitCode, 15);
}

TEST_F(Live, TheTimeOfTheHostConvertsToTheTimeOfThisTest) {
    const long before = std::time(nullptr);
    const std::string text = valueOf(rowsOf("4")[0], "LocalDateTime");
    const support::ProgramResult result = run({"time", "epoch", text});
    EXPECT_GE(std::stol(result.out), before);
    EXPECT_LE(std::stol(result.out), std::time(nullptr));
}

} // namespace
} // namespace owbctl_test
