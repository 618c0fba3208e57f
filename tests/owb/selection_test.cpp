// The items that a write selects, compared with one walk of the whole queue for each instance.
#include "GroupWrite.hpp"

#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

namespace {

struct Item {
    long group;
    long nom;
    long row;
};

/** The traces of a write of group 0, and the items that are selected at its end. */
struct Expected {
    Lines traced;
    std::vector<long> selected;
};

Expected writeNaively(const std::vector<Item>& items, long instances) {
    Expected expected;
    for (long row = 0; row < instances; ++row) {
        expected.traced.push_back("121: Found instance: " + std::to_string(row));
        if (items.empty())
            break;
        expected.selected.clear();
        Lines written;
        for (const Item& item : items) {
            const bool isSelected = item.group == 0 && item.row == row;
            expected.selected.push_back(isSelected);
            if (!isSelected)
                continue;
            written.push_back("175: Need to set item nominator " + std::to_string(item.nom) + " 'x'");
            written.push_back(item.nom == 3 ? "190: Error... cound not find CIM property"
                                            : "183: found CIM property name " +
                                                  std::string(OWB_propertyName(0, item.nom)) + "'");
        }
        if (written.empty())
            continue;
        expected.traced.push_back("162: Key name 'Tag'");
        expected.traced.push_back("162: Key name 'CreationClassName'");
        expected.traced.insert(expected.traced.end(), written.begin(), written.end());
    }
    return expected;
}

class Selection : public testing::TestWithParam<unsigned> {};

TEST_P(Selection, EqualsThatOfOneWalkForEachInstance) {
    std::mt19937 random(GetParam());
    const auto number = [&](long least, long most) {
        return least + static_cast<long>(random() % static_cast<unsigned long>(most - least + 1));
    };
    const long count = number(1, 7);
    std::vector<std::string> all(static_cast<std::size_t>(count), chassis("t"));
    std::vector<Item> items(static_cast<std::size_t>(number(0, 8)));
    for (Item& item : items)
        item = {number(0, 1) * 2, number(1, 3), number(-1, 8)};
    if (GetParam() % 2 == 0) // ascending rows, as after a read
        std::sort(items.begin(), items.end(), [](const Item& a, const Item& b) { return a.row < b.row; });
    const Expected expected = writeNaively(items, count);

    const GroupWrite write(all);
    write.run([&](TestQueue& q) {
        for (const Item& item : items) {
            add(q, item.group, item.nom, item.row, "x");
            q->last->selected = 77;
        }
        EXPECT_EQ(OWB_DONE, OWB_setGroup(0, q.head()));
        EXPECT_EQ(q.end(), q->cursor);
        std::vector<long> selected;
        for (const _qItem* item = q->first; item != q.end(); item = item->next)
            selected.push_back(item->selected);
        EXPECT_EQ(expected.selected, selected);
        EXPECT_TRUE(q.isConsistent());
    });
    EXPECT_EQ(expected.traced, write.traced());
}

INSTANTIATE_TEST_SUITE_P(Seeds, Selection, testing::Range(1U, 61U));

} // namespace
