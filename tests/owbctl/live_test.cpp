// owbctl, libowb and the object manager together, on the values of this host.
#include "Owbctl.hpp"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <string>

namespace owbctl_test {
namespace {

using nlohmann::json;

class Live : public testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(daemon_.nextErrorLine(), "owbcimomd: ready on " + socket_); }

    json rowsOf(const std::string& group) const {
        const support::ProgramResult result =
            owbctl({"--json", "--url", support::urlOf(socket_), "get", group});
        EXPECT_EQ(result.exitCode, 0) << result.err;
        return json::parse(result.out)["groups"][0]["rows"];
    }

private:
    support::TempDir folder_;
    std::string socket_ = folder_.file("cimom");
    support::Daemon daemon_{{OWBCIMOMD, "--socket", socket_}};
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

TEST_F(Live, TheNameOfTheHostIsTheKernels) {
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

TEST_F(Live, TheTimeToLiveIsTheKernels) {
    const json rows = rowsOf("12");
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(valueOf(rows[0], "DefaultTTL") + "\n", support::readFile("/proc/sys/net/ipv4/ip_default_ttl"));
}

} // namespace
} // namespace owbctl_test
