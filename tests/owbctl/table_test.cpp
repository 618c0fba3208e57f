// Tables that fit a terminal.
#include "formats/Table.hpp"

#include <gtest/gtest.h>

namespace owbctl {

namespace {

TEST(Table, ATableThatFitsIsNotChanged) {
    Table table({"Row", "Name"});
    table.add({"0", "abcdefghijklmno"});
    EXPECT_EQ(table.text(20), table.text());
}

TEST(Table, TheWidestTextIsCutFirstAndMarked) {
    Table table({"Row", "Name", "Path"});
    table.add({"7", "abcdefghijklmn", "abcdefghijklmnopqrstuvwxyz"});
    EXPECT_EQ(table.text(37), "Row  Name            Path\n"
                              "  7  abcdefghijklmn  abcdefghijklmno\xe2\x80\xa6\n");
    EXPECT_EQ(table.text(31), "Row  Name          Path\n"
                              "  7  abcdefghijk\xe2\x80\xa6  abcdefghijk\xe2\x80\xa6\n");
}

TEST(Table, NumbersThatDoNotFitFollowInAnotherTable) {
    Table table({"Row", "One", "Two", "Name"});
    table.add({"0", "1234567890", "1234567890", "abcdefghijklmnopqrstuvwxyz"});
    EXPECT_EQ(table.text(27), "Row         One         Two\n"
                              "  0  1234567890  1234567890\n"
                              "\n"
                              "Row  Name\n"
                              "  0  abcdefghijklmnopqrstuvwxyz\n")
        << "alone, a text may stick out";
}

TEST(Table, TheLastColumnMayBeWrapped) {
    Table table({"Row", "Words"}, Table::Fit::wrapLast);
    table.add({"0", "one two three"});
    EXPECT_EQ(table.text(13), "Row  Words\n"
                              "  0  one two\n"
                              "     three\n");
}

} // namespace
} // namespace owbctl
