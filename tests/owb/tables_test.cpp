#include "owb.h"

#include "support/TempDir.hpp"

#include <gtest/gtest.h>
#include <set>
#include <sstream>
#include <strings.h>

namespace {

TEST(Tables, NameTheClassOfEveryGroup) {
    std::istringstream expected(support::readFile(TEST_DATA "/classes.txt"));
    std::string name;
    for (int group = 0; group <= OWB_MAX_GROUP; ++group) {
        ASSERT_TRUE(expected >> name);
        EXPECT_EQ(name, ExtGroupCimClass[group]) << group;
    }
    EXPECT_FALSE(expected >> name);
    EXPECT_STREQ("INVALID", ExtGroupCimClass[31]);
}

TEST(Tables, ListTheItemsInAFixedOrder) {
    std::istringstream expected(support::readFile(TEST_DATA "/items.txt"));
    const ExtItem* row = ExtItemList;
    long group = 0;
    long nom = 0;
    std::string property;
    while (expected >> group >> nom >> property) {
        EXPECT_EQ(group, row->group);
        EXPECT_EQ(nom, row->nom);
        EXPECT_EQ(property, row->property);
        ++row;
    }
    EXPECT_EQ(216, row - ExtItemList);
}

TEST(Tables, EndTheItemsWithARowOfMinusOneAndAnEmptyName) {
    EXPECT_EQ(-1, ExtItemList[216].group);
    EXPECT_EQ(-1, ExtItemList[216].nom);
    EXPECT_STREQ("", ExtItemList[216].property);
    EXPECT_EQ(217U, sizeof ExtItemList / sizeof *ExtItemList);
}

TEST(Tables, HaveEachNominatorAndPropertyOnceInAGroup) {
    for (const ExtItem* a = ExtItemList; a->group >= 0; ++a)
        for (const ExtItem* b = a + 1; b->group >= 0; ++b)
            EXPECT_FALSE(a->group == b->group &&
                         (a->nom == b->nom || strcasecmp(a->property, b->property) == 0))
                << a->group << ' ' << a->property << ' ' << b->property;
}

TEST(Tables, KeepTheRowsOfAGroupTogether) {
    std::set<long> seen;
    for (const ExtItem* row = ExtItemList; row->group >= 0; ++row) {
        const bool isFirst = row == ExtItemList || row[-1].group != row->group;
        EXPECT_EQ(isFirst, seen.insert(row->group).second) << row->group << ' ' << row->property;
    }
}

TEST(Tables, NameTheKeysOfWrittenGroups) {
    EXPECT_EQ(8U, sizeof ExtCimKeyArray / sizeof *ExtCimKeyArray);
    for (int group = 0; group < 8; ++group) {
        const bool hasKeys = group == 0 || group == 2;
        const char* const first = group == 0 ? "Tag" : group == 2 ? "Name" : "";
        EXPECT_STREQ(first, ExtCimKeyArray[group][0].name) << group;
        EXPECT_STREQ(hasKeys ? "CreationClassName" : "", ExtCimKeyArray[group][1].name) << group;
        EXPECT_STREQ("", ExtCimKeyArray[group][0].value);
        EXPECT_STREQ("", ExtCimKeyArray[group][1].value);
        EXPECT_EQ(nullptr, ExtCimKeyArray[group][2].name);
        EXPECT_EQ(nullptr, ExtCimKeyArray[group][2].value);
    }
}

TEST(PropertyName, IsFoundByGroupAndNominator) {
    EXPECT_STREQ("Model", OWB_propertyName(0, 1));
    EXPECT_STREQ("LocnXruType", OWB_propertyName(30, 1));
    EXPECT_STREQ("_INDEX", OWB_propertyName(0, 0));
    EXPECT_STREQ("LastBootUpTime", OWB_propertyName(17, 0));
}

TEST(PropertyName, IsNotFoundForAPairOutsideTheTable) {
    EXPECT_STREQ("NOT FOUND", OWB_propertyName(0, 3));
    EXPECT_STREQ("NOT FOUND", OWB_propertyName(17, 2));
    EXPECT_STREQ("NOT FOUND", OWB_propertyName(31, 0));
    EXPECT_STREQ("NOT FOUND", OWB_propertyName(-1, -1));
}

} // namespace
