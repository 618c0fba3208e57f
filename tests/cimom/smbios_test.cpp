#include "SmbiosTable.hpp"
#include "host/Smbios.hpp"

#include <gtest/gtest.h>

using namespace cimom;

namespace {

const std::string end = SmbiosBytes(127, 4);

/** The types of the structures of a table, with a blank after each. */
std::string typesIn(const std::string& table) {
    std::string types;
    for (const SmbiosStructure& structure : parseSmbiosTable(table))
        types += std::to_string(structure.type()) + " ";
    return types;
}

SmbiosStructure onlyStructure(const std::string& table) {
    const std::vector<SmbiosStructure> all = parseSmbiosTable(table);
    EXPECT_EQ(1u, all.size());
    return all.at(0);
}

} // namespace

TEST(Smbios, FieldsAreFoundByTheirOffsetsAndWordsAreLittleEndian) {
    const SmbiosStructure structure =
        onlyStructure(SmbiosBytes(17, 9).byte(4, 0xAB).word(5, 0xFFEE).byte(8, 0x80));
    EXPECT_EQ(17, structure.type());
    EXPECT_EQ(0xAB, structure.byte(4));
    EXPECT_EQ(0xFFEE, structure.word(5));
    EXPECT_EQ(0x80, structure.byte(8));
}

TEST(Smbios, AFieldBeyondTheEndOfTheStructureIsAbsent) {
    const SmbiosStructure structure = onlyStructure(SmbiosBytes(17, 6).text(5, "last"));
    EXPECT_EQ("last", structure.text(5));
    EXPECT_FALSE(structure.byte(6));
    EXPECT_FALSE(structure.word(5));
    EXPECT_FALSE(structure.text(6));
    EXPECT_FALSE(structure.word(static_cast<std::size_t>(-1)));
}

TEST(Smbios, TextsAreFoundByTheirNumbers) {
    const SmbiosStructure structure =
        onlyStructure(SmbiosBytes(3, 9).text(4, "one").text(5, " two \t").text(6, "   ").byte(8, 4));
    EXPECT_EQ("one", structure.text(4));
    EXPECT_EQ("two", structure.text(5));
    EXPECT_FALSE(structure.text(6)) << "blanks";
    EXPECT_FALSE(structure.text(7)) << "number 0";
    EXPECT_FALSE(structure.text(8)) << "beyond the last text";
}

TEST(Smbios, DotsReplaceUnprintableBytes) {
    const SmbiosStructure structure = onlyStructure(SmbiosBytes(3, 5).text(4, "a\x01\x7f\xff~b c"));
    EXPECT_EQ("a...~b c", structure.text(4));
}

TEST(Smbios, StructuresMayHaveTextsOrNone) {
    EXPECT_EQ("0 1 2 3 ",
              typesIn(std::string(SmbiosBytes(0, 4)) + std::string(SmbiosBytes(1, 5).text(4, "x")) +
                      std::string(SmbiosBytes(2, 255)) + std::string(SmbiosBytes(3, 4)) + end));
}

TEST(Smbios, TheTableEndsAtItsEndMarker) {
    EXPECT_EQ("1 ", typesIn(std::string(SmbiosBytes(1, 4)) + end + std::string(SmbiosBytes(2, 4))));
    EXPECT_EQ("1 2 ", typesIn(std::string(SmbiosBytes(1, 4)) + std::string(SmbiosBytes(2, 4))));
}

TEST(Smbios, ATruncatedTableHasItsCompleteStructures) {
    const std::string first = SmbiosBytes(1, 8).text(4, "first").text(5, "more");
    const std::string second = SmbiosBytes(2, 6).text(4, "second");
    const std::string third = SmbiosBytes(3, 6);
    const std::string table = first + second + third + end;
    for (std::size_t size = 0; size <= table.size(); ++size) {
        std::string expected;
        if (size >= first.size())
            expected += "1 ";
        if (size >= first.size() + second.size())
            expected += "2 ";
        if (size >= first.size() + second.size() + third.size())
            expected += "3 ";
        EXPECT_EQ(expected, typesIn(table.substr(0, size))) << size;
    }
}

TEST(Smbios, AMalformedStructureEndsTheTable) {
    const std::string good = SmbiosBytes(1, 4);
    for (unsigned length = 0; length < 4; ++length)
        EXPECT_EQ("1 ", typesIn(good + std::string(SmbiosBytes(2, 4).byte(1, length)) + good)) << length;
    EXPECT_EQ("1 ", typesIn(good + std::string(SmbiosBytes(2, 4).byte(1, 255)) + good))
        << "longer than the rest";
    EXPECT_EQ("1 ", typesIn(good + std::string("\2\5\0\0\1text", 9))) << "a text without an end";
    EXPECT_EQ("1 ", typesIn(good + std::string("\2\5\0\0\1text", 9) + std::string(1, '\0')));
}

TEST(Smbios, AHostWithoutATableHasNoStructures) {
    HostTree tree;
    EXPECT_TRUE(smbiosStructures(tree.host()).empty());
    writeSmbiosTable(tree, SmbiosBytes(3, 4));
    EXPECT_EQ(1u, smbiosStructures(tree.host()).size());
}
