#include "arguments/Names.hpp"

#include <gtest/gtest.h>

namespace owbctl {

using namespace agent;

namespace {

std::string reasonAgainst(const std::vector<std::string>& texts) {
    try {
        parseAssignments(2, texts);
    } catch (const UsageError& error) {
        return error.what();
    }
    return "none";
}

TEST(Assignment, APropertyIsNamedInAnyCaseOrByItsNominator) {
    const std::vector<Assignment> result = parseAssignments(2, {"systemNAME=a", "3=b"});
    ASSERT_EQ(result.size(), 2u);
    EXPECT_STREQ(result[0].attribute->property, "SystemName");
    EXPECT_EQ(result[0].value, "a");
    EXPECT_STREQ(result[1].attribute->property, "PrimaryOwnerContact");
    EXPECT_EQ(result[1].value, "b");
}

TEST(Assignment, ThePropertyBelongsToTheGroup) {
    EXPECT_EQ(parseAssignments(9, {"Description=x"}).front().attribute->group, 9);
}

TEST(Assignment, TheValueIsAllTextAfterTheFirstEqualsSign) {
    EXPECT_EQ(parseAssignments(2, {"Description=a=b "}).front().value, "a=b ");
}

TEST(Assignment, TheValueMayBeEmpty) {
    EXPECT_EQ(parseAssignments(2, {"Description="}).front().value, "");
}

TEST(Assignment, AnArgumentWithoutEqualsSignIsRejected) {
    EXPECT_EQ(reasonAgainst({"Description"}), "'Description' does not have the form NAME=VALUE");
}

TEST(Assignment, AnUnknownPropertyOrNominatorIsRejected) {
    const std::string before = "group 2 (QAV_System) has no property '";
    for (const std::string name : {"Nope", "2", "99", "-1", "", "LastChangeTime"})
        EXPECT_EQ(reasonAgainst({name + "=x"}), before + name + "'; see 'owbctl groups'");
}

TEST(Assignment, ASimilarPropertyIsSuggested) {
    EXPECT_EQ(reasonAgainst({"SystmName=x"}),
              "group 2 (QAV_System) has no property 'SystmName', did you mean 'SystemName'?");
}

TEST(Assignment, APropertyThatIsGivenTwiceIsRejected) {
    EXPECT_EQ(reasonAgainst({"Description=a", "DESCRIPTION=b"}), "Description is given twice");
    EXPECT_EQ(reasonAgainst({"Description=a", "SystemName=b", "0=a"}), "Description is given twice");
}

} // namespace
} // namespace owbctl
