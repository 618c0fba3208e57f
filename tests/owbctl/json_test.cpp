// `owbctl get -o json`: the document.
#include "Owbctl.hpp"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace owbctl_test {
namespace {

using namespace support::wire;
using nlohmann::json;

TEST(Json, TheDocumentHoldsUrlGroupsRowsAndValues) {
    const support::ScriptedPeer peer(
        {instances({instance("QAV_K70Chassis",
                             {stringProperty("Model", "M1"),
                              arrayProperty("OtherIdentifyingInfo", STRING, {text("one"), text("two")})}),
                    instance("QAV_K70Chassis", {property("Version", UINT32, bigEndian(3, 4))})})});
    const support::ProgramResult result = owbctl({"-ojson", "--url", peer.url(), "get", "0"});
    EXPECT_EQ(result.exitCode, 0);
    json expected = json::parse(R"({"format_version": 1, "groups": [
        {"group": 0, "class": "QAV_K70Chassis", "status": 0, "error": null, "rows": [
            {"row": 0, "properties": [
                {"name": "Model", "nominator": 1, "kind": "text", "unit": null,
                 "values": ["M1"], "meaning": [null]},
                {"name": "OtherIdentifyingInfo", "nominator": 13, "kind": "text", "unit": null,
                 "values": ["one", "two"], "meaning": [null, null]}]},
            {"row": 1, "properties": [
                {"name": "Version", "nominator": 7, "kind": "text", "unit": null,
                 "values": ["3"], "meaning": [null]}]}]}]})");
    expected["url"] = peer.url();
    EXPECT_EQ(json::parse(result.out), expected);
}

TEST(Json, EachPropertyHasItsKindItsUnitAndTheMeaningOfItsValues) {
    const support::ProgramResult result = get(
        {instances({instance("QAV_LANEndpoint",
                             {arrayProperty("OperationalStatus", UINT16, {bigEndian(2, 2), bigEndian(77, 2)}),
                              property("Speed", UINT64, bigEndian(1000, 8))})})},
        {"9", "-ojson", "-h"});
    const json properties = json::parse(result.out)["groups"][0]["rows"][0]["properties"];
    EXPECT_EQ(properties, json::parse(R"([
        {"name": "OperationalStatus", "nominator": 7, "kind": "state", "unit": null,
         "values": ["2", "77"], "meaning": ["up", null]},
        {"name": "Speed", "nominator": 4, "kind": "gauge", "unit": "Bits per Second",
         "values": ["1000"], "meaning": [null]}])"));
}

TEST(Json, AGroupWithoutRowsHasAnEmptyArray) {
    const support::ProgramResult result = get({instances({})}, {"14", "-ojson"});
    EXPECT_EQ(json::parse(result.out)["groups"][0]["rows"], json::array());
}

TEST(Json, ControlCharactersOfAValueAreKept) {
    const std::string value = "a\nb\x1b[31m\"\\";
    const support::ProgramResult result =
        get({instanceOf({stringProperty("SystemName", value)})}, {"2", "-ojson"});
    EXPECT_EQ(json::parse(result.out)["groups"][0]["rows"][0]["properties"][0]["values"][0], value);
}

TEST(Json, BytesThatAreNotUtf8AreReplaced) {
    const support::ProgramResult result =
        get({instanceOf({stringProperty("SystemName", "a\xff z\xc3\xa4")})}, {"2", "-ojson"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(json::parse(result.out)["groups"][0]["rows"][0]["properties"][0]["values"][0],
              "a\xef\xbf\xbd z\xc3\xa4");
}

TEST(Json, MessagesOfTheLibraryAboutDuplicatesStayOutOfTheDocument) {
    const support::ProgramResult result =
        get({instanceOf({stringProperty("SystemName", "one"), stringProperty("SystemName", "two")})},
            {"2", "-ojson"});
    EXPECT_EQ(json::parse(result.out)["groups"][0]["rows"][0]["properties"][0]["values"],
              json::array({"one", "two"}));
}

TEST(Json, AFailedReadAppearsInTheDocument) {
    const support::Step error = support::Step::answer(cimErrorReply(5, "no such class"));
    const support::ProgramResult result = get({error, error, instances({})}, {"2", "14", "-ojson"});
    EXPECT_EQ(result.exitCode, 15);
    const json groups = json::parse(result.out)["groups"];
    ASSERT_EQ(groups.size(), 2u);
    EXPECT_EQ(groups[0]["status"], 5);
    EXPECT_EQ(groups[0]["error"], "the class is not known there: no such class");
    EXPECT_EQ(groups[0]["rows"], json::array());
    EXPECT_EQ(groups[1]["status"], 0);
    EXPECT_TRUE(groups[1]["error"].is_null());
    EXPECT_EQ(result.err, "owbctl: group 2: the class is not known there: no such class\n");
}

TEST(Json, ACommandWithoutDataGivesADocumentWithTheReason) {
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"get", "99", "-o", "json"},
          {"-ojson", "fetch"},
          {"--output=json"},
          {"--output", "json", "get", "2", "--property", "nothing"}}) {
        const support::ProgramResult result = owbctl(arguments);
        EXPECT_EQ(result.exitCode, 2);
        const json document = json::parse(result.out);
        EXPECT_EQ(document.at("format_version"), 1);
        EXPECT_EQ(document.at("exit_status"), 2);
        EXPECT_EQ(result.err,
                  "owbctl: " + document.at("error").get<std::string>() + "\ntry 'owbctl --help'\n");
    }
    const support::ProgramResult result = owbctl({"-ojson", "--trace", "/nowhere/log", "groups"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(json::parse(result.out).at("error"), "/nowhere/log: No such file or directory");
}

} // namespace
} // namespace owbctl_test
