// Object paths in the columns of a table.
#include "formats/Reference.hpp"

#include <gtest/gtest.h>

namespace owbctl {
namespace {

using Texts = std::vector<std::string>;

TEST(Reference, TheValueOfTheOnlyKeyThatDiffersRemains) {
    const auto result =
        shortened({"/root/cimv2:A_B.Class=\"x\",Name=\"one\"", "/root/cimv2:A_B.Class=\"x\",Name=\"two\""});
    ASSERT_TRUE(result);
    EXPECT_EQ(result->key, "Name");
    EXPECT_EQ(result->texts, (Texts{"one", "two"}));
}

TEST(Reference, SeveralKeysThatDifferKeepTheirNames) {
    const auto result = shortened({"A.N=\"1\",K=\"a\",S=\"s\"", "A.K=\"b\",N=\"2\",S=\"s\""});
    ASSERT_TRUE(result);
    EXPECT_EQ(result->key, "");
    EXPECT_EQ(result->texts, (Texts{"K=\"a\",N=\"1\"", "K=\"b\",N=\"2\""}))
        << "the order of keys has no meaning";
}

TEST(Reference, EqualPathsKeepTheKeysThatNameNoClass) {
    const Texts paths(2, "A.CreationClassName=\"A\",Tag=\"shelf-2\",SystemCreationClassName=\"S\"");
    const auto result = shortened(paths);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->key, "Tag");
    EXPECT_EQ(result->texts, (Texts{"shelf-2", "shelf-2"}));
}

TEST(Reference, EscapesOfAValueAreRemoved) {
    const auto result = shortened({"A.N=\"a\\\"b\\\\,M=\"", "A.N=\"c\""});
    ASSERT_TRUE(result);
    EXPECT_EQ(result->texts, (Texts{"a\"b\\,M=", "c"}));
}

TEST(Reference, PathsOfSeveralClassesAreNotShortened) {
    EXPECT_FALSE(shortened({"A.N=\"1\"", "B.N=\"1\""}));
    EXPECT_FALSE(shortened({"A.N=\"1\"", "A.M=\"1\""})) << "other keys";
    EXPECT_FALSE(shortened({"A.N=\"1\"", "A.N=\"1\",M=\"2\""}));
}

TEST(Reference, OtherTextsAreNotShortened) {
    for (const char* const text : {"", "7", "A", "A.", "A.N", "A.N=7", "A.N=\"", "A.N=\"1", "A.N=\"1\"x",
                                   "A.N=\"1\",", "A.CreationClassName=\"x\""})
        EXPECT_FALSE(shortened({text})) << text;
    EXPECT_FALSE(shortened({}));
}

} // namespace
} // namespace owbctl
