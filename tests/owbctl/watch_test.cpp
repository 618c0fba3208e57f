// `owbctl watch`.
#include "Owbctl.hpp"
#include "Screens.hpp"
#include "support/Pattern.hpp"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace owbctl_test {
namespace {

using namespace support::wire;

support::Step datagrams(unsigned long received, unsigned long withoutPort) {
    return instanceOf({property("InDatagrams", UINT32, bigEndian(received, 4)),
                       property("NoPorts", UINT32, bigEndian(withoutPort, 4))});
}

support::ProgramResult watch(const std::vector<support::Step>& answers, const std::string& count,
                             const std::string& form) {
    return owbctlAt(answers, {"watch", "14", "--interval", "0.1", "--count", count, "-o", form});
}

using support::matches;

TEST(Watch, EachReadingIsATableWithTheRatesOfCounters) {
    const support::ProgramResult result = watch({datagrams(5, 1), datagrams(1005, 1)}, "2", "table");
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_TRUE(matches(result.out,
                        "Group 14  QAV_UDPStatisticalData  ..:..:..\\....  sample 1  \\(1 row, 2 items\\)\n"
                        "InDatagrams  5\n"
                        "NoPorts      1\n"
                        "\n"
                        "Group 14  QAV_UDPStatisticalData  ..:..:..\\....  sample 2  \\(1 row, 2 items\\)\n"
                        "InDatagrams  1005  \\+[0-9.]+/s\n"
                        "NoPorts      1\n"))
        << result.out;
}

TEST(Watch, LinesAfterTheFirstSampleAreThoseThatChanged) {
    const support::ProgramResult result = watch({datagrams(5, 1), datagrams(5, 0)}, "2", "line");
    EXPECT_EQ(result.out, "14 QAV_UDPStatisticalData[0].InDatagrams = 5\n"
                          "14 QAV_UDPStatisticalData[0].NoPorts = 1\n"
                          "14 QAV_UDPStatisticalData[0].NoPorts = 0 *\n");
}

TEST(Watch, TheFirstSuccessfulReadingIsShownInFull) {
    const support::Step error = support::Step::answer(cimErrorReply(5, "no such class"));
    EXPECT_EQ(watch({error, error, datagrams(5, 1)}, "3", "line").out,
              "14 QAV_UDPStatisticalData[0].InDatagrams = 5\n"
              "14 QAV_UDPStatisticalData[0].NoPorts = 1\n");
}

TEST(Watch, ARecordIsOnePropertyOfOneSample) {
    const support::ProgramResult result = watch({datagrams(5, 1), datagrams(6, 1)}, "2", "csv");
    EXPECT_TRUE(
        matches(result.out,
                "sample,time,group,class,row,property,value,changed,per_second,vanished\n"
                "1,[-0-9T:]+\\.[0-9]{3}Z,14,QAV_UDPStatisticalData,0,InDatagrams,5,no,,no\n"
                "1,[-0-9T:]+\\.[0-9]{3}Z,14,QAV_UDPStatisticalData,0,NoPorts,1,no,,no\n"
                "2,[-0-9T:]+\\.[0-9]{3}Z,14,QAV_UDPStatisticalData,0,InDatagrams,6,yes,[0-9]+\\.[0-9]+,no\n"
                "2,[-0-9T:]+\\.[0-9]{3}Z,14,QAV_UDPStatisticalData,0,NoPorts,1,no,0.000000,no\n"))
        << result.out;
}

TEST(Watch, EachSampleIsOneDocumentOnOneLine) {
    const support::ProgramResult result = watch({datagrams(5, 1), datagrams(6, 1)}, "2", "json");
    const std::size_t end = result.out.find('\n');
    const nlohmann::json first = nlohmann::json::parse(result.out.substr(0, end));
    const nlohmann::json second = nlohmann::json::parse(result.out.substr(end));
    EXPECT_EQ(first["sample"], 1);
    EXPECT_EQ(first["rows"][0]["properties"][0],
              nlohmann::json::parse(R"({"name": "InDatagrams", "nominator": 0, "kind": "counter",
                                        "unit": "Datagrams", "values": ["5"], "meaning": [null],
                                        "changed": false, "per_second": null})"));
    EXPECT_TRUE(matches(first["time"], "[-0-9]{10}T..:..:..\\.[0-9]{3}Z")) << first["time"];
    EXPECT_EQ(first["vanished"], nlohmann::json::array());
    EXPECT_EQ(second["format_version"], 1);
    EXPECT_EQ(second["sample"], 2);
    EXPECT_EQ(second["error"], nullptr);
    EXPECT_EQ(second["rows"][0]["properties"][0]["changed"], true);
    EXPECT_GT(second["rows"][0]["properties"][0]["per_second"], 0);
}

TEST(Watch, AFailedReadingIsReportedAndTheNextFollows) {
    const support::Step error = support::Step::answer(cimErrorReply(5, "no such class"));
    const support::ProgramResult result =
        watch({datagrams(5, 1), error, error, datagrams(5, 2)}, "3", "table");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_NE(result.out.find("  sample 2\nno answer\n"), std::string::npos) << result.out;
    EXPECT_NE(result.out.find("\nNoPorts      2  +"), std::string::npos)
        << "the difference to the last successful reading";
    EXPECT_EQ(result.err, "owbctl: group 14: the class is not known there: no such class\n");
}

TEST(Watch, TheLastReadingDeterminesTheExitStatus) {
    const support::Step error = support::Step::answer(cimErrorReply(5, "no such class"));
    EXPECT_EQ(watch({datagrams(5, 1), error}, "2", "line").exitCode, 15);
}

TEST(Watch, OnATerminalEachSampleReplacesThePreviousOne) {
    const support::ScriptedPeer peer({datagrams(5, 1)});
    const std::string command =
        "stty rows 24 cols 60 -onlcr; \"$OWBCTL\" --url " + peer.url() + " watch 14 --interval 0.1 --count 2";
    const support::ProgramResult result = shell("script -qec '" + command + "' /dev/null");
    const std::string samples =
        "(\x1b\\[H.*\x1b\\[K\nInDatagrams  5\x1b\\[K\nNoPorts      1\x1b\\[K\n\x1b\\[J){2}";
    EXPECT_TRUE(matches(result.out, samples)) << result.out;
    EXPECT_NE(result.out.find("sample 1  (\xe2\x80\xa6\x1b"), std::string::npos) << "cut to its width";
}

TEST(Watch, LinesThatDoNotFitTheTerminalAreCounted) {
    const support::ScriptedPeer peer({datagrams(5, 1)});
    const std::string command =
        "stty rows 3 cols 90 -onlcr; \"$OWBCTL\" --url " + peer.url() + " watch 14 --count 1";
    const support::ProgramResult result = shell("script -qec '" + command + "' /dev/null");
    EXPECT_NE(result.out.find("\x1b[K\n(2 more lines)\x1b[K\n\x1b[J"), std::string::npos) << result.out;
}

// The counters of two interfaces, or of the first one alone.
support::Step interfaces(unsigned octets, bool isSecondThere) {
    std::vector<std::string> all;
    for (const char* const name : {"eth0", "eth1"}) {
        if (name == std::string("eth0") || isSecondThere)
            all.push_back(
                instance("QAV_NetworkPortStatistics", {stringProperty("InstanceID", name),
                                                       property("InOctets", UINT32, bigEndian(octets, 4)),
                                                       property("InErrors", UINT32, bigEndian(0, 4))}));
    }
    return instances(all);
}

support::ProgramResult watchInterfaces(const std::vector<support::Step>& answers, const std::string& form,
                                       const std::string& option = "--timeout=60") {
    return owbctlAt(answers, {"watch", "traffic", "--interval", "0.1", "--count",
                              std::to_string(answers.size()), "-o", form, option});
}

TEST(Watch, ARowThatVanishedIsShownOnce) {
    const std::string shown =
        watchInterfaces({interfaces(5, true), interfaces(5, false), interfaces(5, false)}, "table").out;
    const std::string vanished = "row 1 vanished: InstanceID eth1\n";
    const std::size_t first = shown.find(vanished);
    ASSERT_NE(first, std::string::npos) << shown;
    EXPECT_GT(first, shown.find("sample 2"));
    EXPECT_LT(first, shown.find("sample 3"));
    EXPECT_EQ(shown.find(vanished, first + 1), std::string::npos) << shown;
}

TEST(Watch, EveryFormatShowsARowThatVanished) {
    const std::vector<support::Step> answers = {interfaces(5, true), interfaces(5, false)};
    EXPECT_NE(watchInterfaces(answers, "line")
                  .out.find("\n10 QAV_NetworkPortStatistics row 1 vanished: InstanceID eth1\n"),
              std::string::npos);
    EXPECT_NE(
        watchInterfaces(answers, "csv").out.find(",10,QAV_NetworkPortStatistics,1,InstanceID,eth1,no,,yes\n"),
        std::string::npos);
    const std::string lines = watchInterfaces(answers, "json").out;
    const nlohmann::json second = nlohmann::json::parse(lines.substr(lines.find('\n')));
    EXPECT_EQ(second["rows"].size(), 1u);
    ASSERT_EQ(second["vanished"].size(), 1u);
    EXPECT_EQ(second["vanished"][0]["row"], 1);
    EXPECT_EQ(second["vanished"][0]["properties"][0]["values"][0], "eth1");
}

TEST(Watch, OnlyChangesAreShownOnRequest) {
    const std::string shown =
        watchInterfaces({interfaces(5, false), interfaces(5, false), interfaces(7, false)}, "table",
                        "--changed")
            .out;
    EXPECT_EQ(shown.find("sample 1"), std::string::npos) << shown;
    EXPECT_EQ(shown.find("sample 2"), std::string::npos) << shown;
    EXPECT_NE(shown.find("sample 3"), std::string::npos) << shown;
    EXPECT_NE(shown.find("eth0"), std::string::npos) << shown;
    EXPECT_EQ(shown.find("InErrors"), std::string::npos) << shown;
}

TEST(Watch, AScreenSaysThatNothingChanged) {
    const support::ScriptedPeer peer({interfaces(5, false)});
    EXPECT_NE(shown({"--url", peer.url(), "watch", "traffic", "--changed", "--count", "1"}, 80)
                  .find("\nno change\n"),
              std::string::npos);
}

TEST(Watch, SeveralGroupsAreReadInTurn) {
    const std::string lines =
        owbctlAt({datagrams(5, 1), interfaces(5, false), datagrams(6, 1), interfaces(5, false)},
                 {"watch", "udp,traffic", "--interval", "0.1", "--count", "2", "-o", "line"})
            .out;
    EXPECT_TRUE(matches(lines, "14 QAV_UDPStatisticalData\\[0\\].InDatagrams = 5\n"
                               "14 QAV_UDPStatisticalData\\[0\\].NoPorts = 1\n"
                               "10 QAV_NetworkPortStatistics\\[0\\].InstanceID = eth0\n"
                               "10 QAV_NetworkPortStatistics\\[0\\].InOctets = 5\n"
                               "10 QAV_NetworkPortStatistics\\[0\\].InErrors = 0\n"
                               "14 QAV_UDPStatisticalData\\[0\\].InDatagrams = 6 .*\n"))
        << lines;
}

TEST(Watch, AScreenShowsAllGroups) {
    const support::ScriptedPeer peer(
        {datagrams(5, 1), interfaces(5, false), datagrams(6, 1), interfaces(7, false)});
    const std::string screen =
        shown({"--url", peer.url(), "watch", "14", "10", "--interval", "0.1", "--count", "2"}, 100);
    EXPECT_EQ(screen.find("sample 1"), std::string::npos) << screen;
    EXPECT_TRUE(matches(screen, "Group 14 [^\n]*  sample 2 [^]*\n\nGroup 10 [^\n]*  sample 2 [^]*"))
        << screen;
}

TEST(Watch, TheHeaderOfCsvIsPrintedOnce) {
    const std::string lines =
        owbctlAt({datagrams(5, 1), interfaces(5, false)}, {"watch", "14", "10", "--count", "1", "-o", "csv"})
            .out;
    EXPECT_EQ(lines.rfind("sample,"), 0u) << lines;
}

TEST(Watch, RowsAndPropertiesCanBeSelected) {
    const auto lines = [](const std::vector<std::string>& options) {
        std::vector<std::string> all{"watch", "traffic", "--count", "1", "-o", "line"};
        all.insert(all.end(), options.begin(), options.end());
        return owbctlAt({interfaces(5, true)}, all).out;
    };
    EXPECT_EQ(lines({"--row", "1", "--columns", "InOctets"}),
              "10 QAV_NetworkPortStatistics[1].InOctets = 5\n");
    EXPECT_EQ(lines({"--where", "InstanceID=eth0", "--property", "InErrors"}),
              "10 QAV_NetworkPortStatistics[0].InErrors = 0\n");
    EXPECT_EQ(owbctl({"watch", "traffic", "--columns", "Nothing"}).exitCode, 2);
}

TEST(Watch, RowsAreComparedByWhatIdentifiesThemEvenIfItIsNotShown) {
    const std::string shown =
        owbctlAt(
            {interfaces(5, true), instances({instance("QAV_NetworkPortStatistics",
                                                      {stringProperty("InstanceID", "eth1"),
                                                       property("InOctets", UINT32, bigEndian(5, 4))})})},
            {"watch", "traffic", "--interval", "0.1", "--count", "2", "--columns", "InOctets", "-o", "line"})
            .out;
    EXPECT_EQ(shown, "10 QAV_NetworkPortStatistics[0].InOctets = 5\n"
                     "10 QAV_NetworkPortStatistics[1].InOctets = 5\n"
                     "10 QAV_NetworkPortStatistics row 0 vanished: InstanceID eth0\n");
}

TEST(Watch, ARowThatDoesNotMeetTheConditionAnyMoreVanishes) {
    const auto port = [](const char* name, unsigned errors) {
        return instances(
            {instance("QAV_NetworkPortStatistics", {stringProperty("InstanceID", name),
                                                    property("InErrors", UINT32, bigEndian(errors, 4))})});
    };
    const std::string shown =
        owbctlAt({port("eth0", 0), port("eth0", 1)}, {"watch", "traffic", "--interval", "0.1", "--count", "2",
                                                      "--where", "InErrors=0", "-o", "line", "--changed"})
            .out;
    EXPECT_EQ(shown, "10 QAV_NetworkPortStatistics row 0 vanished: InstanceID eth0\n");
}

TEST(Watch, ATerminalWithoutControlSequencesShowsOneSampleAfterTheOther) {
    const support::ScriptedPeer peer({datagrams(5, 1), datagrams(6, 1)});
    support::Terminal terminal({"/usr/bin/env", "TERM=dumb", OWBCTL, "--url", peer.url(), "watch", "14",
                                "--interval", "0.1", "--count", "2"},
                               80);
    EXPECT_EQ(terminal.wait(), 0);
    EXPECT_EQ(terminal.bytes().find('\x1b'), std::string::npos) << terminal.bytes();
    EXPECT_NE(terminal.bytes().find("sample 1"), std::string::npos);
    EXPECT_NE(terminal.bytes().find("sample 2"), std::string::npos);
}

} // namespace
} // namespace owbctl_test
