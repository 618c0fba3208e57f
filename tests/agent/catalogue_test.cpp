#include "agent/Catalogue.hpp"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <map>
#include <owb.h>
#include <set>
#include <utility>

using namespace agent;

namespace {

using Address = std::pair<long, long>;

Address addressOf(const Attribute& attribute) {
    return {attribute.group, attribute.nominator};
}

std::string shown(const Attribute& attribute) {
    return std::to_string(attribute.group) + "/" + std::to_string(attribute.nominator) + " " +
           attribute.property;
}

/** MIB objects whose number does not follow from the nominator. */
const std::map<Address, const char*> mappedByMeaning = {
    // In the table or group of the others, but with another number.
    {{0, 19}, "47.1.1.1.1.4"},
    {{27, 19}, "47.1.1.1.1.4"},
    {{3, 8}, "25.2.3.1.1"},
    {{6, 12}, "6.14"},
    {{6, 13}, "6.15"},
    {{9, 27}, "2.2.1.1"},
    {{13, 19}, "4.23"},
    {{16, 2}, "25.4.2.1.1"},
    // In another table.
    {{9, 24}, "31.1.1.1.1"},
    {{10, 26}, "31.1.1.1.1"},
    {{18, 4}, "25.3.2.1.1"},
    {{18, 5}, "25.3.2.1.5"},
    {{18, 6}, "25.3.2.1.6"},
    {{19, 5}, "25.3.2.1.1"},
    {{22, 7}, "25.5.1.1.1"},
    {{22, 9}, "25.5.1.1.2"},
    {{22, 10}, "25.5.1.1.2"},
    {{22, 11}, "25.5.1.1.2"},
    {{22, 12}, "25.4.2.1.1"},
    {{25, 1}, "25.3.2.1.1"},
    // Keys that serve as a name.
    {{26, 17}, "47.1.1.1.1.7"},
    {{27, 18}, "47.1.1.1.1.7"},
};

long lastNumber(const char* oid) {
    return std::strtol(std::strrchr(oid, '.') + 1, nullptr, 10);
}

} // namespace

TEST(Catalogue, HasTheRowsOfTheLibraryInTheirOrder) {
    std::size_t index = 0;
    for (; index < attributes.size() && ExtItemList[index].group != -1; ++index) {
        const ExtItem& item = ExtItemList[index];
        const Attribute& attribute = attributes[index];
        EXPECT_EQ(addressOf(attribute), Address(item.group, item.nom)) << index;
        EXPECT_STREQ(attribute.property, item.property) << index;
    }
    EXPECT_EQ(index, attributes.size());
    EXPECT_EQ(ExtItemList[index].group, -1);
}

TEST(Catalogue, HasTheClassesOfTheLibrary) {
    ASSERT_EQ(highestGroup, OWB_MAX_GROUP);
    for (const long group : everyGroup()) {
        EXPECT_STREQ(classOf(group).name, ExtGroupCimClass[group]);
        EXPECT_STRNE(classOf(group).subject, "") << group;
    }
    EXPECT_THROW(classOf(highestGroup + 1), std::out_of_range);
    EXPECT_THROW(classOf(-1), std::out_of_range);
}

TEST(Catalogue, HasAShortNameForEveryGroupThatNoOtherGroupHas) {
    std::set<std::string> names;
    for (const long group : everyGroup()) {
        const std::string name = classOf(group).shortName;
        EXPECT_EQ(name.find_first_not_of("abcdefghijklmnopqrstuvwxyz-"), std::string::npos) << name;
        EXPECT_GT(name.size(), 1u) << group;
        EXPECT_TRUE(names.insert(name).second) << name;
        EXPECT_EQ(groupOfName(name), group);
    }
    EXPECT_EQ(groupOfName("UDP"), 14);
    EXPECT_FALSE(groupOfName("all").has_value());
    EXPECT_FALSE(groupOfName("").has_value());
}

TEST(Catalogue, ListsTheAttributesOfAGroupByNominator) {
    const std::vector<const Attribute*> sorted = attributesByNominator(9);
    ASSERT_EQ(sorted.size(), attributesOf(9).size());
    for (std::size_t index = 1; index < sorted.size(); ++index)
        EXPECT_LT(sorted[index - 1]->nominator, sorted[index]->nominator);
}

TEST(Catalogue, AnAttributeIsSettableIfTheWriteNamesTheInstance) {
    EXPECT_TRUE(findAttribute(2, "PrimaryOwnerContact")->isSettable());
    EXPECT_FALSE(findAttribute(2, "SystemName")->isSettable()) << "the host decides";
    EXPECT_FALSE(findAttribute(27, "UserTracking")->isSettable()) << "the write has no keys";
}

TEST(Catalogue, HasTheKeysThatTheLibraryWritesWith) {
    const long groupsOfKeys = sizeof ExtCimKeyArray / sizeof *ExtCimKeyArray;
    for (const long group : everyGroup()) {
        std::vector<std::string> keys;
        if (group < groupsOfKeys) {
            for (const ExtCimKey* key = ExtCimKeyArray[group]; key->name != nullptr; ++key) {
                if (*key->name != '\0')
                    keys.emplace_back(key->name);
            }
        }
        EXPECT_EQ(classOf(group).writeKeys, keys) << group;
    }
}

TEST(Catalogue, DescribesEachAttributeInOneSentence) {
    for (const Attribute& attribute : attributes) {
        const std::string description = attribute.description;
        ASSERT_GT(description.size(), 5U) << shown(attribute);
        EXPECT_EQ(description.find(". "), std::string::npos) << shown(attribute);
        EXPECT_EQ(description.back(), '.') << shown(attribute);
        EXPECT_EQ(description.find('\n'), std::string::npos) << shown(attribute);
    }
}

TEST(Catalogue, GivesEveryNumberAUnitAndNothingElse) {
    const std::set<Kind> numbers = {Kind::counter, Kind::gauge, Kind::size};
    for (const Attribute& attribute : attributes)
        EXPECT_EQ(*attribute.unit != '\0', numbers.count(attribute.kind) == 1) << shown(attribute);
}

TEST(Catalogue, AnswersWhatTheUnitOfANominatorIs) {
    EXPECT_STREQ(findAttribute(10, "9")->unit, "Bytes");
    EXPECT_STREQ(findAttribute(9, "Speed")->unit, "Bits per Second");
    EXPECT_STREQ(findAttribute(5, "TimeoutMin")->unit, "MilliSeconds");
}

TEST(Catalogue, NamesTheCodesOfEveryStateButSums) {
    for (const Attribute& attribute : attributes) {
        const bool isSum = addressOf(attribute) == Address(2, 6);
        EXPECT_EQ(!attribute.values.empty(), attribute.kind == Kind::state && !isSum) << shown(attribute);
    }
}

TEST(Catalogue, ListsTheCodesByAscendingValueAndEachNameOnce) {
    for (const Attribute& attribute : attributes) {
        std::set<std::string> names;
        long previous = -1;
        for (const ValueName& each : attribute.values) {
            EXPECT_GT(each.value, previous) << shown(attribute);
            EXPECT_TRUE(names.insert(each.name).second) << shown(attribute) << ": " << each.name;
            previous = each.value;
        }
    }
}

TEST(Catalogue, FindsTheNameOfACodeByTheTextOfAnItem) {
    const ValueNames& states = findAttribute(7, "ConnectionState")->values;
    EXPECT_STREQ(states.find("5"), "established");
    EXPECT_EQ(states.find("99"), nullptr);
    EXPECT_EQ(states.find("-1"), nullptr);
    EXPECT_EQ(states.find(""), nullptr);
    EXPECT_EQ(ValueNames().find("5"), nullptr);
}

TEST(Catalogue, MapsMostNominatorsToTheColumnOfTheNextNumber) {
    std::size_t mapped = 0;
    for (const Attribute& attribute : attributes) {
        if (*attribute.mib.oid == '\0')
            continue;
        const auto exception = mappedByMeaning.find(addressOf(attribute));
        if (exception == mappedByMeaning.end())
            EXPECT_EQ(lastNumber(attribute.mib.oid), attribute.nominator + 1) << shown(attribute);
        else
            EXPECT_STREQ(attribute.mib.oid, exception->second) << shown(attribute);
        ++mapped;
    }
    EXPECT_EQ(mapped, 193U);
}

TEST(Catalogue, GivesEachMibObjectOneName) {
    std::map<std::string, std::string> names;
    for (const Attribute& attribute : attributes) {
        EXPECT_EQ(*attribute.mib.oid == '\0', *attribute.mib.name == '\0') << shown(attribute);
        const std::string& name = names.emplace(attribute.mib.oid, attribute.mib.name).first->second;
        EXPECT_EQ(name, attribute.mib.name) << attribute.mib.oid;
    }
    std::set<std::string> distinct;
    for (const auto& [oid, name] : names)
        EXPECT_TRUE(distinct.insert(name).second) << name;
}

TEST(Catalogue, DescribesAPropertyAlikeInGroupsThatShareAClass) {
    for (const Attribute& attribute : attributes) {
        const Attribute* const first = findAttribute(classOf(attribute.group).name, attribute.property);
        ASSERT_NE(first, nullptr) << shown(attribute);
        EXPECT_STREQ(first->description, attribute.description) << shown(attribute);
        EXPECT_STREQ(first->mib.oid, attribute.mib.oid) << shown(attribute);
        EXPECT_EQ(first->kind, attribute.kind) << shown(attribute);
    }
}

TEST(Catalogue, FindsAnAttributeByNameInAnyCaseOrByNominator) {
    const Attribute* const speed = findAttribute(9, "SPEED");
    ASSERT_NE(speed, nullptr);
    EXPECT_EQ(speed, findAttribute(9, "4"));
    EXPECT_EQ(speed, findAttribute("qav_lanendpoint", "speed"));
    EXPECT_EQ(findAttribute(9, "0"), nullptr);
    EXPECT_EQ(findAttribute(9, ""), nullptr);
    EXPECT_EQ(findAttribute(31, "Speed"), nullptr);
    EXPECT_EQ(findAttribute("QAV_LANEndpoint", "Tag"), nullptr);
    EXPECT_EQ(findAttribute("CIM_LANEndpoint", "Speed"), nullptr);
}

TEST(Catalogue, ListsTheGroupsOfAClassByAscendingNumber) {
    EXPECT_EQ(groupsOfClass("qav_operatingsystem"), (std::vector<long>{4, 17}));
    EXPECT_EQ(groupsOfClass("QAV_TCPProtocolEndpoint"), (std::vector<long>{5, 7}));
    EXPECT_TRUE(groupsOfClass("INVALID").empty());
}

TEST(Catalogue, IdentifiesTheRowsOfEachGroupButThoseOfOneRow) {
    std::set<long> groups;
    for (const Attribute& attribute : attributes) {
        if (attribute.isIdentifying)
            groups.insert(attribute.group);
    }
    EXPECT_EQ(groups,
              (std::set<long>{3, 7, 8, 9, 10, 15, 16, 18, 19, 20, 21, 22, 23, 24, 25, 26, 27, 28, 29, 30}));
    EXPECT_TRUE(findAttribute(9, "Name")->isIdentifying);
    EXPECT_FALSE(findAttribute(9, "SystemName")->isIdentifying) << "the same in every row";
}

TEST(Catalogue, HasNoAttributeOfAnUnknownGroup) {
    EXPECT_TRUE(attributesOf(-1).empty());
    EXPECT_TRUE(attributesOf(31).empty());
    EXPECT_EQ(attributesOf(17).size(), 2U);
}

TEST(Catalogue, HasAWordForEachKind) {
    std::set<std::string> words;
    for (int kind = 0; kind <= static_cast<int>(Kind::text); ++kind)
        EXPECT_TRUE(words.insert(wordOf(static_cast<Kind>(kind))).second) << kind;
}
