#include "snmp/Loop.hpp"
#include "snmp/Readings.hpp"
#include "snmp/tree/Tree.hpp"

using namespace snmp;
using namespace snmp_test;

namespace {

Value number(std::uint64_t value) {
    return {Type::integer, value};
}

const Value absent;

/** Table 0 at 1.1 has the columns 1 and 3, table 1 at 1.1.2 lies between them, table 2 at 1.2 has no rows. */
class Trees : public testing::Test {
protected:
    Trees()
        : m_tree({{{1, 2, 1}, 2, 0}, {{1, 1, 3}, 0, 1}, {{1, 1, 2, 1}, 1, 0}, {{1, 1, 1}, 0, 0}})
        , m_tables{Table({{{5}, 0, {number(50), absent}},
                          {{2}, 0, {number(20), number(23)}},
                          {{2, 1}, 0, {absent, number(213)}}}),
                   Table({{{7}, 0, {number(70)}}}), Table()} {}

    Tree::Tables tables() {
        return [this](std::size_t table) { return m_isKnown[table] ? &m_tables[table] : nullptr; };
    }
    std::string get(const Oid& oid) { return shown(m_tree.get(oid, tables())); }
    std::string next(const Oid& start, bool include = false, const Oid& end = {}) {
        const auto found = m_tree.next({start, include, end}, tables());
        return found ? text(found->object.oid) + " = " + shown(found->object.value) : "end";
    }

    const Tree m_tree;
    std::vector<Table> m_tables;
    bool m_isKnown[3] = {true, true, true};
};

const char* const noSuchObject = "type 128";
const char* const noInstance = "type 129";

} // namespace

TEST_F(Trees, AGetFindsTheExactInstance) {
    EXPECT_EQ(get({1, 1, 1, 2}), "20");
    EXPECT_EQ(get({1, 1, 3, 2, 1}), "213");
    EXPECT_EQ(get({1, 1, 2, 1, 7}), "70");
}

TEST_F(Trees, AGetDistinguishesMissingObjectsAndInstances) {
    EXPECT_EQ(get({1, 1, 2}), noSuchObject);
    EXPECT_EQ(get({1, 1, 4, 2}), noSuchObject);
    EXPECT_EQ(get({}), noSuchObject);
    EXPECT_EQ(get({1, 1, 1}), noInstance);
    EXPECT_EQ(get({1, 1, 1, 3}), noInstance);
    EXPECT_EQ(get({1, 1, 3, 5}), noInstance) << "a row without this value";
}

TEST_F(Trees, AWalkVisitsColumnsInOrderAcrossTables) {
    std::string all;
    Oid at;
    for (std::string found = next(at); found != "end"; found = next(at)) {
        at = parseOid(found.substr(0, found.find(' ')));
        all += found + "\n";
    }
    EXPECT_EQ(all, "1.1.1.2 = 20\n1.1.1.5 = 50\n1.1.2.1.7 = 70\n1.1.3.2 = 23\n1.1.3.2.1 = 213\n");
}

TEST_F(Trees, ARangeMayIncludeItsStart) {
    EXPECT_EQ(next({1, 1, 1, 2}, true), "1.1.1.2 = 20");
    EXPECT_EQ(next({1, 1, 1, 2}, false), "1.1.1.5 = 50");
    EXPECT_EQ(next({1, 1, 1, 3}, true), "1.1.1.5 = 50");
}

TEST_F(Trees, ARangeEndsBeforeItsEnd) {
    EXPECT_EQ(next({1, 1, 1, 2}, false, {1, 1, 1, 5}), "end");
    EXPECT_EQ(next({1, 1, 1, 2}, false, {1, 1, 1, 5, 0}), "1.1.1.5 = 50");
    EXPECT_EQ(next({1, 1, 1, 5}, false, {1, 1, 2}), "end");
    EXPECT_EQ(next({1, 1, 1, 5}, false, {1, 1, 2, 1}), "end");
    EXPECT_EQ(next({1}, false, {1, 1, 1}), "end");
    EXPECT_EQ(next({1, 1, 3, 2, 1}), "end");
    EXPECT_EQ(next({2}), "end");
}

TEST_F(Trees, AStartBetweenRowsAndColumnsIsAllowed) {
    EXPECT_EQ(next({1, 1, 1, 2, 0, 0}), "1.1.1.5 = 50");
    EXPECT_EQ(next({1, 1, 2, 0}), "1.1.2.1.7 = 70");
    EXPECT_EQ(next({1, 1, 2, 1, 7, 4294967295U}), "1.1.3.2 = 23");
}

TEST_F(Trees, AnUnknownTableIsPassedOver) {
    m_isKnown[1] = false;
    EXPECT_EQ(next({1, 1, 1, 5}), "1.1.3.2 = 23");
    EXPECT_EQ(get({1, 1, 2, 1, 7}), noInstance);
}

TEST(Tables, OfRowsWithOneIndexTheFirstStays) {
    const Table table({{{1}, 0, {number(1)}}, {{0}, 0, {number(0)}}, {{1}, 0, {number(2)}}});
    ASSERT_EQ(table.rows().size(), 2u);
    EXPECT_EQ(table.find({1})->cells[0], number(1));
}

TEST(Tables, FiveThousandProcessesAreWalkedInOrder) {
    std::vector<Items> processes;
    for (int i = 5000; i > 0; --i)
        processes.push_back({{2, std::to_string(i * 3)},
                             {1, "process"},
                             {3, "/usr/bin/process"},
                             {4, "-v"},
                             {4, "x"},
                             {6, "5"}});
    const Readings read = readings(reading(16, processes));
    std::vector<TreeColumn> columns;
    std::vector<Table> tables;
    for (const TableMapping& mapping : tableMappings()) {
        for (std::size_t cell = 0; cell < mapping.columns.size(); ++cell)
            columns.push_back({joined(mapping.entry, {mapping.columns[cell].number}), tables.size(), cell});
        tables.push_back(tableOf(mapping, read, {}));
    }
    const Tree tree(columns);
    std::size_t count = 0;
    SearchRange range{mib2, false, {}};
    for (auto found = tree.next(range, [&tables](std::size_t table) { return &tables[table]; }); found;
         ++count) {
        ASSERT_LT(range.start, found->object.oid);
        range.start = found->object.oid;
        found = tree.next(range, [&tables](std::size_t table) { return &tables[table]; });
    }
    EXPECT_EQ(count, 5000u * 6); // index, name, identifier, path, parameters, status
}
