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

TEST(Table, ColumnsThatDoNotFitFollowInAnotherTable) {
    Table table({"Row", "One", "Two", "Name"});
    table.add({"0", "1234567890", "1234567890", "abcdefghijklmnopqrstuvwxyz"});
    EXPECT_EQ(table.text(27), "Row         One         Two\n"
                              "  0  1234567890  1234567890\n"
                              "\n"
                              "Row  Name\n"
                              "  0  abcdefghijklmnopqrstu\xe2\x80\xa6\n");
}

TEST(Table, IdentifyingColumnsAreRepeatedUpToHalfOfTheWidth) {
    Table table({"Name", "Number", "One", "Two"});
    table.repeat(2);
    table.add({"abc", "7", "12345678901234567890", "1234567890123456789"});
    EXPECT_EQ(table.text(40), "Name  Number                   One\n"
                              "abc        7  12345678901234567890\n"
                              "\n"
                              "Name  Number                  Two\n"
                              "abc        7  1234567890123456789\n");
    EXPECT_EQ(table.text(22), "Name  Number\n"
                              "abc        7\n"
                              "\n"
                              "Name                   One\n"
                              "abc   12345678901234567890\n"
                              "\n"
                              "Name                  Two\n"
                              "abc   1234567890123456789\n");
}

TEST(Table, IdentifyingTextsAreCompleteUpToAThirdOfTheWidth) {
    Table table({"Name", "Text", "Number"});
    table.add({"abcdefghijklmnopqrst", "abcdefghijklmnopqrs", "12345678901234567890"});
    EXPECT_EQ(table.text(60), "Name                  Text                            Number\n"
                              "abcdefghijklmnopqrst  abcdefghijklmno\xe2\x80\xa6  12345678901234567890\n");
    EXPECT_EQ(table.text(54),
              "Name                Text                        Number\n"
              "abcdefghijklmnopq\xe2\x80\xa6  abcdefghijk\xe2\x80\xa6  12345678901234567890\n");
}

TEST(Table, AColumnThatIsKeptWholeIsNotCut) {
    Table table({"Name", "Date"});
    table.keepWhole(1);
    table.add({"abcdefghijklmnop", "2026-01-02 03:04:05"});
    EXPECT_EQ(table.text(35), "Name            Date\n"
                              "abcdefghijklm\xe2\x80\xa6  2026-01-02 03:04:05\n");
}

TEST(Table, AColumnMayBeAlignedToTheRight) {
    Table table({"Name", "Size"});
    table.alignRight(1);
    table.add({"a", "1 KiB"});
    table.add({"b", "10 KiB"});
    EXPECT_EQ(table.text(), "Name    Size\n"
                            "a      1 KiB\n"
                            "b     10 KiB\n");
}

TEST(Table, AllTextsMayBeWrapped) {
    Table table({"Name", "Words"}, Table::Fit::wrapAll);
    table.add({"first, second", "one two"});
    EXPECT_EQ(table.text(14), "Name    Words\n"
                              "first,  one\n"
                              "second  two\n");
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
