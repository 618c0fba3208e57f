// `owbctl set`: its requests, and the row before and after.
#include "Owbctl.hpp"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace owbctl_test {
namespace {

using namespace support::wire;

// A system: groups 1 and 2.
support::Step systemOf(const std::string& contact, const std::string& location) {
    return instanceOf({stringProperty("SystemName", "host"), stringProperty("PrimaryOwnerContact", contact),
                       stringProperty("InstalledLocation", location)});
}

support::ProgramResult set(const std::vector<support::Step>& answers,
                           const std::vector<std::string>& arguments) {
    std::vector<std::string> all{"set"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return owbctlAt(answers, all);
}

const char* const clearedWhy =
    "        Some object managers replace the whole instance on a write and clear what it does not carry.\n"
    "        To keep a value, name it in the same command.\n";

TEST(Set, AnAcceptedValueIsShownWithThePreviousOne) {
    const support::ProgramResult result =
        set(writeOf(systemOf("old@example.net", "here"), systemOf("ops@example.net", "here")),
            {"2", "0", "PrimaryOwnerContact=ops@example.net"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, "Group 2  QAV_System  (row 0)\n"
                          "Property             Asked for  Before           After\n"
                          "PrimaryOwnerContact  yes        old@example.net  ops@example.net\n");
}

TEST(Set, ARowWithoutValuesAcceptsAValue) {
    const support::ProgramResult result =
        set(writeOf(instanceOf({nullProperty("PrimaryOwnerContact", STRING)}),
                    instanceOf({stringProperty("PrimaryOwnerContact", "ops")})),
            {"2", "0", "PrimaryOwnerContact=ops"});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.out, "Group 2  QAV_System  (row 0)\n"
                          "Property             Asked for  Before  After\n"
                          "PrimaryOwnerContact  yes        -       ops\n");
}

TEST(Set, OneRequestCarriesAllTheValues) {
    const support::ScriptedPeer peer(writeOf(systemOf("a", "b"), systemOf("first value", "")));
    const support::ProgramResult result =
        owbctl({"--url", peer.url(), "set", "2", "0", "primaryownerCONTACT=first value", "5="});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    const std::vector<std::string> requests = peer.requests();
    ASSERT_EQ(requests.size(), 4u) << "reading, numbering the rows, writing, reading back";
    const std::string& write = requests[2];
    EXPECT_NE(write.find("CIMMethod: ModifyInstance\r\n"), std::string::npos);
    EXPECT_NE(write.find(text("PrimaryOwnerContact")), std::string::npos);
    EXPECT_NE(write.find("V\x09" + std::string(1, '\0') + text("first value")), std::string::npos);
    EXPECT_NE(write.find(text("InstalledLocation")), std::string::npos);
    EXPECT_NE(write.find("V\x09" + std::string(2, '\0')), std::string::npos) << "the empty value";
}

TEST(Set, AnEmptyTextIsAValueAndStaysOne) {
    const support::ProgramResult result =
        set(writeOf(systemOf("ops", "here"), systemOf("", "here")), {"2", "0", "PrimaryOwnerContact="});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "owbctl: now an empty text: PrimaryOwnerContact\n"
                          "        The library cannot write null; another client can take the value away.\n");
}

TEST(Set, NoValueAnEmptyTextAndADashDifferInTheTable) {
    const support::ProgramResult result = set(writeOf(instanceOf({stringProperty("PrimaryOwnerContact", "-"),
                                                                  nullProperty("InstalledLocation", STRING)}),
                                                      systemOf("", "-")),
                                              {"2", "0", "PrimaryOwnerContact=", "InstalledLocation=-"});
    EXPECT_NE(result.out.find("PrimaryOwnerContact  yes        \"-\"     \"\"\n"
                              "InstalledLocation    yes        -       \"-\"\n"),
              std::string::npos)
        << result.out;
}

TEST(Set, AnEmptyTextThatBecomesNoValueIsRejected) {
    const support::Step after =
        instanceOf({stringProperty("SystemName", "host"), nullProperty("PrimaryOwnerContact", STRING)});
    const support::ProgramResult result =
        set(writeOf(systemOf("ops", "here"), after), {"2", "0", "PrimaryOwnerContact="});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.err.rfind("owbctl: PrimaryOwnerContact rejected: requested '', current no value\n", 0),
              0u)
        << result.err;
}

TEST(Set, OnlyTheGivenRowIsWritten) {
    const auto systems = [](const std::string& contactOfSecond) {
        return instances({instance("QAV_System", {stringProperty("Name", "first key"),
                                                  stringProperty("PrimaryOwnerContact", "a")}),
                          instance("QAV_System", {stringProperty("Name", "second key"),
                                                  stringProperty("PrimaryOwnerContact", contactOfSecond)})});
    };
    const support::ScriptedPeer peer(writeOf(systems("b"), systems("c")));
    const support::ProgramResult result =
        owbctl({"--url", peer.url(), "set", "2", "1", "PrimaryOwnerContact=c"});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.out, "Group 2  QAV_System  (row 1)\n"
                          "Property             Asked for  Before  After\n"
                          "PrimaryOwnerContact  yes        b       c\n");
    const std::vector<std::string> requests = peer.requests();
    ASSERT_EQ(requests.size(), 4u) << "one row is written";
    EXPECT_NE(requests[2].find(text("second key")), std::string::npos);
}

TEST(Set, AnEqualValueIsNoChange) {
    const support::ProgramResult result =
        set(writeOf(systemOf("ops", "here"), systemOf("ops", "here")), {"2", "0", "PrimaryOwnerContact=ops"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, "Group 2  QAV_System  (row 0)\nno change\n");
}

TEST(Set, AValueThatChangedWithoutTheWriteIsShownAsNotAskedFor) {
    const support::ProgramResult result =
        set(writeOf(systemOf("old", "here"), systemOf("new", "there")), {"2", "0", "3=new"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, "Group 2  QAV_System  (row 0)\n"
                          "Property             Asked for  Before  After\n"
                          "PrimaryOwnerContact  yes        old     new\n"
                          "InstalledLocation    no         here    there\n");
}

TEST(Set, AnIgnoredValueIsReportedWithTheCurrentOne) {
    const support::ProgramResult result =
        set(writeOf(systemOf("old", "here"), systemOf("old", "here")), {"2", "0", "3=a\nb", "Description=x"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.out, "Group 2  QAV_System  (row 0)\nno change\n");
    EXPECT_EQ(result.err, "owbctl: PrimaryOwnerContact rejected: requested 'a\\nb', current 'old'\n"
                          "owbctl: Description rejected: requested 'x', current no value\n");
}

TEST(Set, AWriteThatTheObjectManagerRejectsIsDetectedByReadingBack) {
    const support::Step system = systemOf("old", "here");
    const support::ProgramResult result =
        set({system, system, support::Step::answer(cimErrorReply(2, "access denied")), system},
            {"2", "0", "3=new"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.err, "owbctl: PrimaryOwnerContact rejected: requested 'new', current 'old'\n"
                          "owbctl: group 2, row 0: the write failed: access denied\n");
}

TEST(Set, AWriteThatTheObjectManagerRejectsFailsAlthoughTheValueIsThere) {
    const support::Step system = systemOf("ops", "here");
    const support::ProgramResult result =
        set({system, system, support::Step::answer(cimErrorReply(2, "only root writes")), system},
            {"2", "0", "3=ops", "-ojson"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.err, "owbctl: group 2, row 0: the write failed: access denied: only root writes\n");
    const nlohmann::json document = nlohmann::json::parse(result.out);
    EXPECT_EQ(document.at("error"), nullptr);
    EXPECT_EQ(document.at("reason"), "access denied: only root writes");
}

TEST(Set, AWriteThatGetsNoAnswerIsNotSentAgain) {
    const support::Step system = systemOf("old", "here");
    const support::ScriptedPeer peer({system, system, support::Step::close(), system});
    const support::ProgramResult result = owbctl({"--url", peer.url(), "set", "2", "0", "3=new"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.err,
              "owbctl: PrimaryOwnerContact rejected: requested 'new', current 'old'\n"
              "owbctl: group 2, row 0: the write failed: connection closed without a valid answer: " +
                  peer.socketPath() + "\ntry 'owbctl doctor' with the same URL\n");
    EXPECT_EQ(peer.requests().size(), 4u) << "reading, numbering the rows, writing, reading back";
}

TEST(Set, WithoutADirectoryForTheTraceTheValueIsWritten) {
    const support::Step old = systemOf("old", "here");
    const support::ScriptedPeer peer(writeOf(old, systemOf("new", "here")));
    const support::ProgramResult result =
        shell("TMPDIR=/proc \"$OWBCTL\" --url " + peer.url() + " set 2 0 3=new");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
}

TEST(Set, WithoutADirectoryForTheTraceTheReasonOfARejectionIsNotKnown) {
    const support::Step old = systemOf("old", "here");
    const support::ScriptedPeer peer(
        {old, old, support::Step::answer(cimErrorReply(2, "access denied")), old});
    const support::ProgramResult result =
        shell("TMPDIR=/proc \"$OWBCTL\" --url " + peer.url() + " set 2 0 3=new");
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.err, "owbctl: PrimaryOwnerContact rejected: requested 'new', current 'old'\n"
                          "        The same command with --trace - shows the object manager's reason\n");
}

TEST(Set, AValueThatTheObjectManagerAltersIsRejected) {
    const support::ProgramResult result =
        set(writeOf(systemOf("old", "here"), systemOf("NEW", "here")), {"2", "0", "3=new"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.out, "Group 2  QAV_System  (row 0)\n"
                          "Property             Asked for  Before  After\n"
                          "PrimaryOwnerContact  yes        old     NEW\n");
    EXPECT_EQ(result.err, "owbctl: PrimaryOwnerContact rejected: requested 'new', current 'NEW'\n");
}

TEST(Set, AnArrayAcceptsASingleValue) {
    const auto chassis = [](const std::vector<std::string>& texts) {
        return instanceOf({arrayProperty("OtherIdentifyingInfo", STRING, texts)});
    };
    const support::ProgramResult result = set(writeOf(chassis({text("a"), text("b")}), chassis({text("c")})),
                                              {"0", "0", "OtherIdentifyingInfo=c"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, "Group 0  QAV_K70Chassis  (row 0)\n"
                          "Property              Asked for  Before  After\n"
                          "OtherIdentifyingInfo  yes        a, b    c\n");
}

TEST(Set, ClearedValuesOfAReplacedInstanceGiveAWarning) {
    const support::Step after =
        instanceOf({stringProperty("PrimaryOwnerContact", "new"), nullProperty("InstalledLocation", STRING)});
    const support::ProgramResult result = set(writeOf(systemOf("old", "here"), after), {"2", "0", "3=new"});
    EXPECT_EQ(result.exitCode, 0) << "what was asked for is there";
    EXPECT_EQ(result.out, "Group 2  QAV_System  (row 0)\n"
                          "Property             Asked for  Before  After\n"
                          "SystemName           no         host    -\n"
                          "PrimaryOwnerContact  yes        old     new\n"
                          "InstalledLocation    no         here    -\n");
    EXPECT_EQ(result.err,
              std::string("owbctl: not named in the write, and cleared: SystemName, InstalledLocation\n") +
                  clearedWhy);
}

TEST(Set, TheJsonDocumentHoldsTheChanges) {
    const auto chassis = [](const std::string& version, const std::vector<std::string>& texts) {
        return instanceOf({stringProperty("Version", version), stringProperty("Model", "M1"),
                           arrayProperty("OtherIdentifyingInfo", STRING, texts)});
    };
    const support::ScriptedPeer peer(
        writeOf(chassis("1", {text("a"), text("b")}), chassis("2", {text("c")})));
    const support::ProgramResult result =
        owbctl({"-ojson", "--url", peer.url(), "set", "0", "0", "OtherIdentifyingInfo=c"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, R"({
  "format_version": 1,
  "url": ")" + peer.url() + R"(",
  "group": 0,
  "class": "QAV_K70Chassis",
  "row": 0,
  "status": 0,
  "error": null,
  "reason": null,
  "changes": [
    {
      "name": "Version",
      "nominator": 7,
      "asked": false,
      "before": [
        "1"
      ],
      "after": [
        "2"
      ]
    },
    {
      "name": "OtherIdentifyingInfo",
      "nominator": 13,
      "asked": true,
      "before": [
        "a",
        "b"
      ],
      "after": [
        "c"
      ]
    }
  ],
  "not_taken": [],
  "cleared": []
}
)");
}

TEST(Set, TheJsonDocumentListsRejectedAndClearedProperties) {
    const support::ScriptedPeer peer(writeOf(
        systemOf("old", "here"),
        instanceOf({stringProperty("SystemName", "host"), stringProperty("InstalledLocation", "x")})));
    const support::ProgramResult result =
        owbctl({"--url", peer.url(), "set", "2", "0", "SystemName=new", "5=x", "-ojson"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.err, std::string("owbctl: SystemName rejected: requested 'new', current 'host'\n"
                                      "owbctl: not named in the write, and cleared: PrimaryOwnerContact\n") +
                              clearedWhy);
    EXPECT_EQ(result.out, R"({
  "format_version": 1,
  "url": ")" + peer.url() + R"(",
  "group": 2,
  "class": "QAV_System",
  "row": 0,
  "status": 0,
  "error": null,
  "reason": null,
  "changes": [
    {
      "name": "PrimaryOwnerContact",
      "nominator": 3,
      "asked": false,
      "before": [
        "old"
      ],
      "after": []
    },
    {
      "name": "InstalledLocation",
      "nominator": 5,
      "asked": true,
      "before": [
        "here"
      ],
      "after": [
        "x"
      ]
    }
  ],
  "not_taken": [
    "SystemName"
  ],
  "cleared": [
    "PrimaryOwnerContact"
  ]
}
)");
}

} // namespace
} // namespace owbctl_test
