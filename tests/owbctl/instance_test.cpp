// `owbctl instance`.
#include "Owbctl.hpp"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace owbctl_test {
namespace {

using namespace support::wire;

// A successful answer to the request for one instance.
support::Step found(const std::vector<std::string>& properties) {
    return support::Step::answer(chunkedReply(std::string(1, '\0') + instance("QAV_Any", properties)));
}

std::vector<std::string> someProperties() {
    return {stringProperty("Description", "a thing"), stringProperty("LastChangeTime", "then")};
}

TEST(Instance, TheInstanceIsShownForEachGroupOfItsClass) {
    const support::ProgramResult result =
        owbctlAt({found(someProperties())}, {"instance", "QAV_System.Name=\"x\""});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, "Group 1  QAV_System  (1 row, 1 item)\n"
                          "LastChangeTime  then\n"
                          "\n"
                          "Group 2  QAV_System  (1 row, 1 item)\n"
                          "Description  a thing\n");
}

TEST(Instance, TheClassIsFoundAfterANamespaceInAnyCase) {
    const support::ProgramResult result =
        owbctlAt({found(someProperties())}, {"instance", "root/cimv2.1:qav_SYSTEM.Name=\"a.b:c\""});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.out.rfind("Group 1  QAV_System  (1 row, 1 item)\n", 0), 0u) << result.out;
}

TEST(Instance, TheRequestCarriesThePath) {
    const support::ScriptedPeer peer({found(someProperties())});
    owbctl({"--url", peer.url(), "instance", "QAV_K70Chassis.Tag=\"seven\""});
    const std::vector<std::string> requests = peer.requests();
    ASSERT_EQ(requests.size(), 1u);
    EXPECT_NE(requests[0].find("CIMMethod: GetInstance\r\n"), std::string::npos);
    EXPECT_NE(requests[0].find(text("QAV_K70Chassis")), std::string::npos);
    EXPECT_NE(requests[0].find(text("Tag")), std::string::npos);
    EXPECT_NE(requests[0].find(text("seven")), std::string::npos);
}

TEST(Instance, AGivenGroupReplacesThoseOfTheClass) {
    const support::ProgramResult result =
        owbctlAt({found(someProperties())}, {"instance", "--group", "2", "Another_Class.Name=\"x\""});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.out, "Group 2  QAV_System  (1 row, 1 item)\nDescription  a thing\n");
}

TEST(Instance, TheRowIsZeroByDefault) {
    const support::ScriptedPeer peer({found(someProperties())});
    const support::ProgramResult result =
        owbctl({"-ojson", "--url", peer.url(), "instance", "QAV_System.Name=\"x\"", "--group", "2"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, R"({
  "format_version": 1,
  "url": ")" + peer.url() + R"(",
  "groups": [
    {
      "group": 2,
      "class": "QAV_System",
      "status": 0,
      "error": null,
      "rows": [
        {
          "row": 0,
          "properties": [
            {
              "name": "Description",
              "nominator": 0,
              "kind": "text",
              "unit": null,
              "values": [
                "a thing"
              ],
              "meaning": [
                null
              ]
            }
          ]
        }
      ]
    }
  ]
}
)");
}

TEST(Instance, TheRowCanBeGiven) {
    const support::ProgramResult result =
        owbctlAt({found(someProperties())},
                 {"-ojson", "instance", "QAV_System.Name=\"x\"", "--group", "2", "--row", "2147483647"});
    EXPECT_EQ(nlohmann::json::parse(result.out)["groups"][0]["rows"][0]["row"], 2147483647);
}

TEST(Instance, AFailureOfEachGroupIsReportedWithItsReason) {
    const support::ScriptedPeer peer({support::Step::answer(cimErrorReply(6, "no such instance"))});
    const support::ProgramResult result = owbctl({"--url", peer.url(), "instance", "QAV_System.Name=\"x\""});
    EXPECT_EQ(result.exitCode, 15);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "owbctl: group 1: no such instance\n"
                          "owbctl: group 2: no such instance\n");
}

TEST(Instance, AMalformedPathIsReportedAndNotSent) {
    const support::ScriptedPeer peer({found(someProperties())});
    const auto read = [&peer](const std::string& path) {
        return owbctl({"--url", peer.url(), "instance", path, "--group", "2"});
    };
    EXPECT_EQ(read("QAV_System.Name").exitCode, 15);
    EXPECT_EQ(read("QAV_System.Name").err, "owbctl: group 2: malformed path: Bad key in string (Name)\n");
    EXPECT_EQ(read("QAV_System.").err,
              "owbctl: group 2: malformed path: No key values found in instance name: QAV_System.\n");
    for (const char* const path : {"QAV_System", ""})
        EXPECT_EQ(read(path).exitCode, 15) << path;
    EXPECT_EQ(peer.connections(), 0u);
}

TEST(Instance, AFailureAppearsInTheJsonDocument) {
    const support::ProgramResult result =
        owbctlAt({support::Step::answer(cimErrorReply(6, "no such instance"))},
                 {"-ojson", "instance", "QAV_K70Chassis.Tag=\"x\""});
    EXPECT_EQ(result.exitCode, 15);
    const nlohmann::json groups = nlohmann::json::parse(result.out)["groups"];
    ASSERT_EQ(groups.size(), 1u);
    EXPECT_EQ(groups[0]["group"], 0);
    EXPECT_EQ(groups[0]["status"], 5);
    EXPECT_EQ(groups[0]["error"], "no such instance");
    EXPECT_EQ(groups[0]["rows"], nlohmann::json::array());
}

TEST(Instance, AClassWithoutAGroupNeedsTheOptionGroup) {
    for (const char* const path : {"Other.Name=\"x\"", "root:Other.Name=\"QAV_System\""}) {
        const support::ProgramResult result = owbctl({"instance", path});
        EXPECT_EQ(result.exitCode, 2);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err, "owbctl: no group has the class of the path, 'Other': give --group, or a "
                              "namespace if a value "
                              "holds a colon\n"
                              "try 'owbctl --help'\n");
    }
}

TEST(Instance, UsageErrorsAreRejected) {
    const std::string path = "QAV_System.Name=\"x\"";
    const std::vector<std::vector<std::string>> wrong = {{},
                                                         {path, path},
                                                         {path, "--row", "-1"},
                                                         {path, "--row", "x"},
                                                         {path, "--row", ""},
                                                         {path, "--group", "31"},
                                                         {path, "--group", ""},
                                                         {path, "--group", "1", "2"},
                                                         {path, "--group", "1", "--group", "2"}};
    for (const std::vector<std::string>& arguments : wrong) {
        std::vector<std::string> all{"instance"};
        all.insert(all.end(), arguments.begin(), arguments.end());
        const support::ProgramResult result = owbctl(all);
        SCOPED_TRACE(result.err);
        EXPECT_EQ(result.exitCode, 2);
        EXPECT_EQ(result.out, "");
        EXPECT_NE(result.err.find("\ntry 'owbctl --help'\n"), std::string::npos);
    }
}

} // namespace
} // namespace owbctl_test
