// `owbctl set` without a comparison: usage errors, failed steps, missing rows.
#include "Owbctl.hpp"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace owbctl_test {
namespace {

using namespace support::wire;

support::Step system() {
    return instanceOf({stringProperty("SystemName", "host")});
}

support::Step error() {
    return support::Step::answer(cimErrorReply(1, "no disk"));
}

// Result of `owbctl set 2 ROW SystemName=new`.
struct SetRun {
    SetRun(const std::vector<support::Step>& answers, const std::string& row)
        : peer(answers)
        , result(owbctl({"--url", peer.url(), "set", "2", row, "SystemName=new"})) {}

    support::ScriptedPeer peer;
    support::ProgramResult result;
};

TEST(SetFailure, AFailedReadPreventsTheWrite) {
    const SetRun run({error()}, "0");
    EXPECT_EQ(run.result.exitCode, 15);
    EXPECT_EQ(run.result.out, "");
    EXPECT_EQ(run.result.err,
              "owbctl: group 2, row 0: cannot read before the write, nothing was written: no disk\n");
    EXPECT_EQ(run.peer.requests().size(), 2u) << "a read is repeated once";
}

TEST(SetFailure, AFailedWriteIsReported) {
    const SetRun run({system(), error()}, "0");
    EXPECT_EQ(run.result.exitCode, 15);
    EXPECT_EQ(run.result.out, "");
    EXPECT_EQ(run.result.err,
              "owbctl: group 2, row 0: cannot write, perhaps after the values were sent: no disk\n");
    EXPECT_EQ(run.peer.requests().size(), 2u) << "a write is never repeated";
}

TEST(SetFailure, AClassThatLostItsInstancesBeforeTheWriteGivesStatus12) {
    const SetRun run({system(), instances({})}, "0");
    EXPECT_EQ(run.result.exitCode, 12);
    EXPECT_EQ(run.result.out, "");
    EXPECT_EQ(run.result.err,
              "owbctl: group 2, row 0: cannot write, perhaps after the values were sent: no such instance\n");
}

TEST(SetFailure, AFailureToReadBackIsReported) {
    const SetRun run({system(), system(), accepted(), error()}, "0");
    EXPECT_EQ(run.result.exitCode, 15);
    EXPECT_EQ(run.result.out, "");
    EXPECT_EQ(run.result.err, "owbctl: group 2, row 0: cannot read back, the values were sent and may have "
                              "been accepted: no disk\n");
}

TEST(SetFailure, AMissingRowIsReported) {
    const support::Step rows = instances({instance("QAV_System", {stringProperty("SystemName", "a")}),
                                          instance("QAV_System", {stringProperty("SystemName", "b")})});
    const SetRun run({rows}, "2");
    EXPECT_EQ(run.result.exitCode, 1);
    EXPECT_EQ(run.result.out, "");
    EXPECT_EQ(run.result.err, "owbctl: group 2, row 2: no such row, or all values were rejected; "
                              "rows with values: 2\n");
    EXPECT_EQ(run.peer.requests().size(), 3u) << "no row to write";
}

TEST(SetFailure, ARowWithoutValuesMayRejectAllValues) {
    const std::vector<std::string> rows = {instance("QAV_System", {stringProperty("SystemName", "a")}),
                                           instance("QAV_System", {nullProperty("SystemName", STRING)}),
                                           instance("QAV_System", {stringProperty("SystemName", "b")})};
    const SetRun run(writeOf(instances(rows), instances(rows)), "1");
    EXPECT_EQ(run.result.exitCode, 1);
    EXPECT_EQ(run.result.err, "owbctl: group 2, row 1: no such row, or all values were rejected; "
                              "rows with values: 2\n");
}

TEST(SetFailure, ARowThatDisappearsDuringTheWriteIsReported) {
    const SetRun run(writeOf(instances({instance("QAV_System", {stringProperty("SystemName", "a")}),
                                        instance("QAV_System", {stringProperty("SystemName", "b")})}),
                             system()),
                     "1");
    EXPECT_EQ(run.result.exitCode, 1);
    EXPECT_EQ(run.result.out, "");
    EXPECT_EQ(run.result.err, "owbctl: group 2, row 1: after the write the row is gone or has "
                              "no value; rows with values: 1\n");
}

TEST(SetFailure, AFailureAppearsInTheJsonDocument) {
    const support::ScriptedPeer peer({system(), system(), accepted(), error()});
    const support::ProgramResult result =
        owbctl({"-ojson", "--url", peer.url(), "set", "2", "0", "SystemName=new"});
    EXPECT_EQ(result.exitCode, 15);
    EXPECT_NE(result.err.find("cannot read back"), std::string::npos);
    EXPECT_EQ(result.out, R"({
  "format_version": 1,
  "url": ")" + peer.url() + R"(",
  "group": 2,
  "class": "QAV_System",
  "row": 0,
  "status": 5,
  "error": "cannot read back, the values were sent and may have been accepted: no disk",
  "reason": "no disk",
  "changes": [],
  "not_taken": [],
  "cleared": []
}
)");
}

TEST(SetFailure, AMissingRowAppearsInTheJsonDocument) {
    const support::ProgramResult result = owbctlAt({system()}, {"-ojson", "set", "2", "1", "SystemName=new"});
    EXPECT_EQ(result.exitCode, 1);
    const nlohmann::json document = nlohmann::json::parse(result.out);
    EXPECT_EQ(document.at("status"), 0);
    EXPECT_EQ(document.at("error"), "no such row, or all values were rejected; rows with values: 1");
}

TEST(SetFailure, AnArgumentInBracketsIsNotSplit) {
    const support::ProgramResult result = owbctl({"set", "2", "0", "[3=x,5=y]"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.err, "owbctl: '[3=x,5=y]' begins with [ and ends with ], which is not "
                          "supported\ntry 'owbctl --help'\n");
}

TEST(SetFailure, UsageErrorsAreReportedBeforeAnythingIsSent) {
    const std::vector<std::vector<std::string>> wrong = {{},
                                                         {"2"},
                                                         {"2", "0"},
                                                         {"2", "0", "SystemName"},
                                                         {"2", "0", "Nope=x"},
                                                         {"2", "0", "99=x"},
                                                         {"2", "0", "SystemName=x", "4=y"},
                                                         {"2", "0", "SystemName=x", "Description"},
                                                         {"31", "0", "SystemName=x"},
                                                         {"2", "-1", "SystemName=x"},
                                                         {"2", "one", "SystemName=x"},
                                                         {"2", "0", "--SystemName=x"}};
    const support::ScriptedPeer peer({system()});
    for (const std::vector<std::string>& arguments : wrong) {
        std::vector<std::string> all{"--url", peer.url(), "set"};
        all.insert(all.end(), arguments.begin(), arguments.end());
        const support::ProgramResult result = owbctl(all);
        SCOPED_TRACE(result.err);
        EXPECT_EQ(result.exitCode, 2);
        EXPECT_EQ(result.out, "");
        EXPECT_NE(result.err.find("\ntry 'owbctl --help'\n"), std::string::npos);
    }
    EXPECT_EQ(peer.connections(), 0u);
}

TEST(SetFailure, AMessageEscapesControlCharactersOfAnArgument) {
    EXPECT_EQ(owbctl({"set", "2", "0", "a\x1b[31m"}).err,
              "owbctl: 'a\\x1b[31m' does not have the form NAME=VALUE\ntry 'owbctl --help'\n");
}

} // namespace
} // namespace owbctl_test
