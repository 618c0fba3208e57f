#include "snmp/Oid.hpp"

#include <gtest/gtest.h>
#include <stdexcept>

using namespace snmp;

TEST(Oid, ATextIsParsedWithAndWithoutALeadingPoint) {
    EXPECT_EQ((Oid{1, 3, 6, 1}), parseOid("1.3.6.1"));
    EXPECT_EQ((Oid{1, 3, 4294967295U}), parseOid(".1.3.4294967295"));
    EXPECT_EQ(Oid{}, parseOid(""));
}

TEST(Oid, AnInvalidTextIsRejected) {
    for (const char* const text : {"1.", "1..2", "a", "1.-2", "1.4294967296", "..1", "1 .2", "1.+2"})
        EXPECT_THROW(parseOid(text), std::invalid_argument) << text;
}

TEST(Oid, AtMost128SubIdentifiersAreParsed) {
    std::string longest = "1";
    for (int i = 1; i < 128; ++i)
        longest += ".1";
    EXPECT_EQ(longestOid, parseOid(longest).size());
    EXPECT_THROW(parseOid(longest + ".1"), std::invalid_argument);
}

TEST(Oid, ATextIsWrittenWithoutALeadingPoint) {
    EXPECT_EQ("1.3.6.1.2.1", text(mib2));
    EXPECT_EQ("", text({}));
}

TEST(Oid, AnIdentifierStartsWithItselfAndItsParentsOnly) {
    EXPECT_TRUE(startsWith(mib2, mib2));
    EXPECT_TRUE(startsWith(joined(mib2, {1, 1}), mib2));
    EXPECT_FALSE(startsWith(mib2, joined(mib2, {1})));
    EXPECT_FALSE(startsWith({1, 3, 6, 1, 4, 1, 9}, mib2));
}

TEST(Oid, JoinedIdentifiersKeepTheirOrder) {
    EXPECT_EQ((Oid{1, 2, 3}), joined({1, 2}, {3}));
    EXPECT_EQ((Oid{1}), joined({}, {1}));
}
