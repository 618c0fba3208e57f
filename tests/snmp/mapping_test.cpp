#include "snmp/Readings.hpp"
#include "snmp/tree/Tree.hpp"

#include <algorithm>
#include <set>

using namespace snmp;
using namespace snmp_test;

namespace {

using Nominator = std::pair<long, long>;

/** Nominators whose objects have another number than nominator + 1, or are in a table of another group. */
const std::set<Nominator> mappedByMeaning = {{0, 19},  {27, 19}, {3, 8},   {6, 12},  {6, 13}, {9, 24},
                                             {9, 27},  {10, 26}, {13, 19}, {16, 2},  {18, 4}, {18, 5},
                                             {18, 6},  {19, 5},  {19, 6},  {22, 7},  {22, 9}, {22, 10},
                                             {22, 11}, {22, 12}, {25, 1},  {26, 17}, {27, 18}};

/** Nominators without a standard object. */
const std::set<Nominator> withoutObject = {
    {0, 16}, {0, 20}, {26, 20}, {27, 20}, {1, 0},  {2, 8},  {3, 7},  {9, 22}, {9, 23}, {9, 25}, {8, 0},
    {8, 1},  {23, 0}, {23, 1},  {24, 0},  {24, 1}, {28, 0}, {28, 1}, {29, 0}, {29, 1}, {30, 0}, {30, 1}};

/** Nominators whose object is served from another nominator: those of the same class, of the same table, or
 * because the object is not accessible. */
const std::set<Nominator> servedByOthers = {{17, 0},  {17, 1},          // as 4/0 and 4/1
                                            {18, 4},  {18, 5}, {18, 6}, // hrDeviceTable is group 21
                                            {19, 5},  {25, 1},          // indexes of their own tables
                                            {22, 12},                   // index of hrSWRunPerfTable
                                            {19, 6},                    // key of a join
                                            {0, 0},   {26, 0}, {27, 0}, // entPhysicalIndex is not accessible
                                            {0, 4},   {26, 4}};         // an enclosure has the class chassis

bool holds(const std::set<Nominator>& all, const agent::Attribute& attribute) {
    return all.count({attribute.group, attribute.nominator}) != 0;
}

std::string nameOf(const agent::Attribute& attribute) {
    return std::to_string(attribute.group) + "/" + std::to_string(attribute.nominator) + " " +
           attribute.property;
}

/** The columns that an attribute is a source of, as object identifiers below mib-2. */
std::set<std::string> columnsOf(const agent::Attribute& attribute) {
    std::set<std::string> oids;
    for (const TableMapping& mapping : tableMappings()) {
        for (const Column& column : mapping.columns) {
            const auto& sources = column.sources;
            if (std::find(sources.begin(), sources.end(), &attribute) != sources.end())
                oids.insert(text(indexIn(joined(mapping.entry, {column.number}), mib2)));
        }
    }
    return oids;
}

const Column* columnAt(const char* oid) {
    for (const TableMapping& mapping : tableMappings()) {
        for (const Column& column : mapping.columns) {
            if (joined(mapping.entry, {column.number}) == below(oid))
                return &column;
        }
    }
    return nullptr;
}

} // namespace

TEST(Mapping, EachNominatorFallsOnTheNextColumnOrIsListed) {
    std::size_t derived = 0;
    for (const agent::Attribute& attribute : agent::attributes) {
        if (holds(mappedByMeaning, attribute) || holds(withoutObject, attribute))
            continue;
        ++derived;
        ASSERT_STRNE("", attribute.mib.oid) << nameOf(attribute);
        EXPECT_EQ(parseOid(attribute.mib.oid).back(), static_cast<std::uint32_t>(attribute.nominator) + 1)
            << nameOf(attribute);
    }
    EXPECT_EQ(derived, 171u);
    EXPECT_EQ(mappedByMeaning.size(), 23u);
    EXPECT_EQ(withoutObject.size(), 22u);
}

TEST(Mapping, EachNominatorWithAStandardObjectIsServedAsThatObject) {
    std::size_t served = 0;
    for (const agent::Attribute& attribute : agent::attributes) {
        if (holds(withoutObject, attribute) || holds(servedByOthers, attribute))
            continue;
        ++served;
        const char* const oid = attribute.mib.oid;
        const bool isAlias = attribute.group == 9 && attribute.nominator == 1;
        EXPECT_EQ(columnsOf(attribute).count(isAlias ? "31.1.1.1.18" : oid), 1u) << nameOf(attribute);
    }
    EXPECT_EQ(served + withoutObject.size() + servedByOthers.size(), agent::attributes.size());
}

TEST(Mapping, NominatorsWithoutAStandardObjectAreNotServed) {
    for (const agent::Attribute& attribute : agent::attributes) {
        if (holds(withoutObject, attribute)) {
            EXPECT_TRUE(columnsOf(attribute).empty()) << nameOf(attribute);
        }
    }
}

TEST(Mapping, ADerivedObjectHasTheSyntaxOfItsKind) {
    EXPECT_EQ(columnAt("2.2.1.10")->rule.syntax, Syntax::counter32);
    EXPECT_EQ(columnAt("2.2.1.5")->rule.syntax, Syntax::gauge32);
    EXPECT_EQ(columnAt("2.2.1.3")->rule.syntax, Syntax::integer32);
    EXPECT_EQ(columnAt("1.1")->rule.syntax, Syntax::octets);
    EXPECT_EQ(columnAt("25.1.2")->rule.syntax, Syntax::dateAndTime);
    EXPECT_EQ(columnAt("25.3.8.1.6")->rule.syntax, Syntax::truthValue);
}

TEST(Mapping, EachRuleIsTheOneOfAColumn) {
    for (const ObjectRule& rule : objectRules()) {
        const Column* const column = columnAt(rule.oid);
        if (rule.access == Access::notAccessible) {
            EXPECT_EQ(column, nullptr) << rule.oid;
        } else {
            ASSERT_NE(column, nullptr) << rule.oid;
        }
        if (column != nullptr) {
            EXPECT_STREQ(column->rule.oid, rule.oid);
        }
    }
}

TEST(Mapping, EachSubjectIsListedAtItsNumber) {
    ASSERT_EQ(subjectRules().size(), subjectCount);
    for (std::size_t i = 0; i < subjectCount; ++i)
        EXPECT_EQ(static_cast<std::size_t>(subjectRules()[i].subject), i);
}

TEST(Mapping, ATableNeedsTheGroupsOfItsSubjectAlone) {
    for (const TableRule& table : tableRules()) {
        const auto& groups = subjectRules()[static_cast<std::size_t>(table.subject)].groups;
        const auto isRead = [&groups](long group) {
            return std::find(groups.begin(), groups.end(), group) != groups.end();
        };
        EXPECT_TRUE(std::all_of(table.groups.begin(), table.groups.end(), isRead)) << table.entry;
        if (table.join) {
            EXPECT_TRUE(isRead(table.join->group)) << table.entry;
            EXPECT_TRUE(table.join->association < 0 || isRead(table.join->association)) << table.entry;
        }
    }
}

TEST(Mapping, OnlyFourObjectsCanBeWritten) {
    std::set<std::string> writable;
    for (const TableMapping& mapping : tableMappings()) {
        for (const Column& column : mapping.columns) {
            for (const long group : mapping.rule->groups) {
                if (writableAttribute(column, group) != nullptr)
                    writable.insert(std::to_string(group) + " " + column.rule.oid);
            }
        }
    }
    EXPECT_EQ(writable, (std::set<std::string>{"0 47.1.1.1.1.14", "0 47.1.1.1.1.15", "2 1.4", "2 1.6"}));
}

TEST(Mapping, ItemsThatAreCutAreNotRead) {
    std::string items;
    appendItem(items, 0, 1, "text");
    for (std::size_t size = 1; size < items.size(); ++size)
        EXPECT_THROW(Reading(2, items.substr(0, size)), std::runtime_error) << size;
}

TEST(Mapping, ItemsOfUnknownNominatorsAreLeftOut) {
    const Reading read = reading(2, {{{99, "x"}, {4, "box"}, {-1, "y"}}});
    ASSERT_EQ(read.instances().size(), 1u);
    EXPECT_EQ(read.instances()[0].end() - read.instances()[0].begin(), 1);
}
