// Unicode's simple case folding. The constants come from the Unicode Character Database 14.0.
#include "Utf8.hpp"

#include <gtest/gtest.h>

#include <cstdint>

using namespace OpenWBEM;

namespace {

const char32_t codes = 0x110000;

TEST(CaseFolding, MapsTheCasesOfALetterToOneCharacter) {
    EXPECT_EQ(U'a', foldCase(U'A'));
    EXPECT_EQ(U'\u00e4', foldCase(U'\u00c4'));
    EXPECT_EQ(U'\u03c3', foldCase(U'\u03a3')); // sigma
    EXPECT_EQ(U'\u03c3', foldCase(U'\u03c2')); // final sigma
    EXPECT_EQ(U'\u01c6', foldCase(U'\u01c5')); // title case
    EXPECT_EQ(U'\u00e5', foldCase(U'\u212b')); // Angstrom sign
    EXPECT_EQ(U'k', foldCase(U'\u212a'));      // Kelvin sign
    EXPECT_EQ(U'\u00df', foldCase(U'\u1e9e')); // capital sharp s
    EXPECT_EQ(U'\U00010428', foldCase(U'\U00010400'));
}

TEST(CaseFolding, LeavesTheDottedCapitalAndTheDotlessSmallI) {
    EXPECT_EQ(char32_t{0x130}, foldCase(0x130));
    EXPECT_EQ(char32_t{0x131}, foldCase(0x131));
    EXPECT_EQ(U'i', foldCase(U'I'));
}

TEST(CaseFolding, LeavesEveryFoldedCharacter) {
    for (char32_t code = 0; code < codes; ++code)
        ASSERT_EQ(foldCase(code), foldCase(foldCase(code))) << std::uint32_t{code};
}

TEST(CaseFolding, LeavesSurrogatesWhichMarkMalformedBytes) {
    for (char32_t code = 0xD800; code < 0xE000; ++code)
        ASSERT_EQ(code, foldCase(code)) << std::uint32_t{code};
}

// The checksum was computed by Perl from its own copy of the database (Unicode::UCD, Simple_Case_Folding).
TEST(CaseFolding, EqualsTheDatabaseForEveryCharacter) {
    unsigned folded = 0;
    std::uint32_t checksum = 0;
    for (char32_t code = 0; code < codes; ++code) {
        const char32_t fold = foldCase(code);
        if (fold == code)
            continue;
        ++folded;
        checksum = checksum * 31 + code * codes + fold;
    }
    EXPECT_EQ(1454u, folded);
    EXPECT_EQ(0x44389306u, checksum);
}

} // namespace
