#ifndef TESTS_OWB_SERVED_GROUPS_HPP
#define TESTS_OWB_SERVED_GROUPS_HPP
#include "owb.h"

#include "TestQueue.hpp"
#include "support/Child.hpp"
#include "support/Manager.hpp"

#include <csignal>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <utility>
#include <vector>

/** The values of a row by property; the values of an array are separated by commas. */
using Row = std::map<std::string, std::string>;

using Rows = std::map<long, Row>;

/** The rows of a group as the library reads them, by number. */
inline Rows numberedRowsOf(long group) {
    TestQueue q;
    EXPECT_EQ(OWB_DONE, OWB_getGroup(group, q.head())) << group;
    EXPECT_TRUE(q.isConsistent());
    Rows rows;
    for (const _qItem* item = q->first; item != q.end(); item = item->next) {
        EXPECT_EQ(group, item->group);
        std::string& value = rows[item->row][OWB_propertyName(item->group, item->nom)];
        value += (value.empty() ? "" : ",") + std::string(item->val);
    }
    return rows;
}

/** The rows in ascending order. */
inline std::vector<Row> rowsOf(long group) {
    std::vector<Row> all;
    for (const auto& [number, row] : numberedRowsOf(group))
        all.push_back(row);
    return all;
}

/** The first line of a file; "" if it has none. */
inline std::string firstLine(const std::string& path) {
    std::ifstream in(path);
    std::string line;
    std::getline(in, line);
    return line;
}

/** Runs a body in a child whose object manager is the given one. */
inline void runAgent(const support::Manager& manager, const std::function<void()>& body) {
    EXPECT_EQ("", support::inChild(manager.directory().path(), [&] {
                  OWB_URLSet(manager.url().c_str());
                  body();
              }));
}

/** Tests that read groups through the library from a real object manager. */
class ServedGroups : public testing::Test {
protected:
    /** Runs a body in a child with a new object manager. */
    static void run(const std::function<void()>& body, const std::vector<std::string>& options = {}) {
        support::Manager manager(options);
        runAgent(manager, body);
        EXPECT_EQ(0, manager.end(SIGTERM));
    }
};

#endif
