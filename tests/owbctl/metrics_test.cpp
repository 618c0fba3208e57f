// The command metrics.
#include "ExpositionReader.hpp"
#include "Owbctl.hpp"
#include "support/Manager.hpp"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <vector>

namespace owbctl_test {
namespace {

using namespace support::wire;
using metrics::Format;

/** An object manager with a fake host. */
class Metrics : public testing::Test {
protected:
    Metrics() {
        host_.write("proc/sys/kernel/hostname", "box\"\xff\\\n");
        host_.write("sys/class/net/eth0/ifindex", "4\n");
        host_.write("proc/net/dev",
                    "h\nh\neth0: 18446744073709551615 2 0 0 0 0 0 0 9007199254740993 4 0 0 0 0 0 0\n");
    }

    support::ProgramResult run(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), {"--url", manager_.url(), "metrics"});
        return owbctl(arguments);
    }
    std::string url() const { return manager_.url(); }
    std::string inDirectory(const std::string& name) const { return host_.file(name); }

private:
    const support::TempDir host_;
    const support::Manager manager_{{"--root", host_.path()}};
};

exposition::Text checked(const std::string& text, Format format = Format::text) {
    exposition::Text read = exposition::read(text, format);
    EXPECT_EQ(std::vector<std::string>(), read.faults);
    return read;
}

support::Step datagrams(unsigned long long received) {
    return instances(
        {instance("QAV_UDPStatisticalData", {property("InDatagrams", UINT64, bigEndian(received, 8))})});
}

std::size_t filesIn(const std::string& directory) {
    const std::filesystem::directory_iterator all(directory);
    return static_cast<std::size_t>(std::distance(begin(all), end(all)));
}

TEST_F(Metrics, AllGroupsAreWrittenByDefault) {
    const support::ProgramResult result = run({});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.err, "");
    const exposition::Text text = checked(result.out);
    EXPECT_EQ(text.value("owb_network_receive_bytes_total", {{"device", "eth0"}}), "18446744073709551615");
    EXPECT_EQ(text.value("owb_network_transmit_bytes_total", {{"device", "eth0"}}), "9007199254740993")
        << "more than the 53 bits of a double";
    EXPECT_EQ(text.value("owb_host_info", {{"name", "box\"\xef\xbf\xbd\\"}}), "1");
    EXPECT_EQ(text.value("owb_scrape_success"), "1");
    EXPECT_EQ(text.value("owb_group_read_success", {{"group", "30"}}), "1");
    EXPECT_EQ(text.value("owb_scrape_age_seconds"), "(none)") << "the file is read later";
}

TEST_F(Metrics, BothFormatsHaveTheSameSamples) {
    const exposition::Text text = checked(run({"10", "11"}).out);
    const support::ProgramResult result = run({"10", "11", "--format", "openmetrics"});
    const exposition::Text openMetrics = checked(result.out, Format::openMetrics);
    EXPECT_EQ(text.samples.size(), openMetrics.samples.size());
    EXPECT_EQ(openMetrics.units.at("owb_network_receive_bytes"), "bytes");
    EXPECT_TRUE(text.units.empty());
}

TEST_F(Metrics, AGroupThatIsNamedTwiceIsWrittenOnce) {
    const exposition::Text text = checked(run({"10", "qav_networkportstatistics", "10"}).out);
    EXPECT_EQ(text.count("owb_group_read_success"), 1u);
}

TEST_F(Metrics, ATextfileIsReplacedAndReadableByAll) {
    const std::string directory = inDirectory("textfile");
    std::filesystem::create_directory(directory);
    std::ofstream(directory + "/owb.prom") << "old";
    const support::ProgramResult result = run({"10", "--textfile", directory});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.out, "");
    checked(support::readFile(directory + "/owb.prom"));
    EXPECT_EQ(filesIn(directory), 1u);
    struct stat file;
    ASSERT_EQ(::stat((directory + "/owb.prom").c_str(), &file), 0);
    EXPECT_EQ(file.st_mode & 07777, 0644u);
}

TEST_F(Metrics, ATextfileThatCannotBeWrittenStaysAsItWas) {
    const std::string directory = inDirectory("textfile");
    std::filesystem::create_directory(directory);
    std::ofstream(directory + "/owb.prom") << "old";
    const support::ProgramResult result = shell("trap '' XFSZ; ulimit -f 0; exec \"$OWBCTL\" --url '" +
                                                url() + "' metrics 10 --textfile '" + directory + "'");
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_NE(result.err.find("owbctl: cannot write " + directory + "/owb.prom: File too large\n"),
              std::string::npos)
        << result.err;
    EXPECT_EQ(support::readFile(directory + "/owb.prom"), "old");
    EXPECT_EQ(filesIn(directory), 1u) << "the new file is removed";
}

TEST(MetricsFailure, AMissingDirectoryGivesStatus1) {
    const support::ProgramResult result =
        owbctlAt({datagrams(7)}, {"metrics", "14", "--textfile", "/nowhere/at/all"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.err, "owbctl: cannot write /nowhere/at/all/owb.prom: No such file or directory\n");
}

TEST(MetricsFailure, AFailedGroupDoesNotHideTheOthers) {
    const support::Step error = support::Step::answer(cimErrorReply(5, "no such class"));
    const support::ProgramResult result = owbctlAt({error, error, datagrams(7)}, {"metrics", "4", "14"});
    EXPECT_EQ(result.exitCode, 15);
    EXPECT_EQ(result.err, "owbctl: group 4: the class is not known there: no such class\n");
    const exposition::Text text = checked(result.out);
    EXPECT_EQ(text.value("owb_udp_in_datagrams_total"), "7");
    EXPECT_EQ(text.value("owb_group_read_success", {{"group", "4"}}), "0");
    EXPECT_EQ(text.value("owb_group_read_success", {{"group", "14"}}), "1");
    EXPECT_EQ(text.value("owb_scrape_success"), "0");
}

TEST(MetricsFailure, WithoutAnObjectManagerTheTextSaysSo) {
    const support::TempDir directory;
    const support::ProgramResult result =
        owbctl({"--url", deadUrl(), "metrics", "4", "14", "--textfile", directory.path()});
    EXPECT_EQ(result.exitCode, 15);
    const exposition::Text text = checked(support::readFile(directory.file("owb.prom")));
    EXPECT_EQ(text.value("owb_group_read_success", {{"group", "4"}}), "0");
    EXPECT_EQ(text.value("owb_scrape_success"), "0");
}

TEST(MetricsFailure, HostileRowsGiveAValidText) {
    std::vector<std::string> rows;
    for (const std::string& name :
         {std::string("a"), std::string("a"), std::string("\xff\"\n\\"), std::string(65536, 'x'),
          std::string("b\"} 1\nowb_fake 1\n"), std::string()})
        rows.push_back(
            instance("QAV_NetworkPortStatistics", {stringProperty("InstanceID", name),
                                                   property("InOctets", UINT64, bigEndian(~0ULL, 8))}));
    const support::ProgramResult result = owbctlAt({instances(rows)}, {"metrics", "10"});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    const exposition::Text text = checked(result.out);
    EXPECT_EQ(text.count("owb_network_receive_bytes_total"), 5u);
    EXPECT_EQ(text.value("owb_scrape_dropped_rows"), "1");
}

TEST(MetricsUsage, WhatCannotBeWrittenIsAUsageError) {
    for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
             {"metrics", "17"},
             {"metrics", "31"},
             {"metrics", "--format", "json"},
             {"metrics", "--textfile", ""},
             {"metrics", "--format", "openmetrics", "--textfile", "/tmp"}}) {
        const support::ProgramResult result = owbctl(arguments);
        EXPECT_EQ(result.exitCode, 2) << arguments.back();
        EXPECT_EQ(result.out, "");
    }
    EXPECT_EQ(owbctl({"metrics", "17"}).err.rfind("owbctl: GROUP: '17' names no group that has metrics\n", 0),
              0u)
        << owbctl({"metrics", "17"}).err;
}

} // namespace
} // namespace owbctl_test
