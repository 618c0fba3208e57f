#ifndef TESTS_OWB_SERVED_GROUPS_HPP
#define TESTS_OWB_SERVED_GROUPS_HPP
#include "owb.h"

#include "TestQueue.hpp"
#include "support/Child.hpp"
#include "support/Manager.hpp"

#include <csignal>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <utility>
#include <vector>

/** The values of a row by property; those of an array with a comma between them. */
using Row = std::map<std::string, std::string>;

/** The rows that the library reads for a group, by their numbers. */
inline std::vector<Row> rowsOf(long group) {
    TestQueue q;
    EXPECT_EQ(OWB_DONE, OWB_getGroup(group, q.head())) << group;
    std::map<long, Row> rows;
    for (const _qItem* item = q->first; item != q.end(); item = item->next) {
        std::string& value = rows[item->row][OWB_propertyName(item->group, item->nom)];
        value += (value.empty() ? "" : ",") + std::string(item->val);
    }
    std::vector<Row> all;
    for (auto& [number, row] : rows)
        all.push_back(std::move(row));
    return all;
}

/** Tests that read groups through the library from a real object manager. */
class ServedGroups : public testing::Test {
protected:
    /** Runs a body in a child that reads from an object manager of its own. */
    static void run(const std::function<void()>& body, const std::vector<std::string>& options = {}) {
        support::Manager manager(options);
        EXPECT_EQ("", support::inChild(manager.folder().path(), [&] {
                      OWB_URLSet(manager.url().c_str());
                      body();
                  }));
        EXPECT_EQ(0, manager.end(SIGTERM));
    }
};

#endif
