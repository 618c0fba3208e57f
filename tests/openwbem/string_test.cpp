#include "OW_Array.hpp"
#include "OW_String.hpp"

#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <memory>
#include <new>
#include <sstream>
#include <string>

namespace {

using namespace OpenWBEM;

std::string textOf(const String& text) {
    return std::string(text.c_str(), text.length());
}

TEST(String, IsOnePointer) {
    EXPECT_EQ(sizeof(void*), sizeof(String));
}

TEST(String, IsEmptyByDefaultAndForANullPointer) {
    for (const String& text : {String(), String(static_cast<const char*>(nullptr)), String(""),
                               String(nullptr, 3), String("x", 0)}) {
        EXPECT_TRUE(text.empty());
        EXPECT_EQ(0U, text.length());
        EXPECT_STREQ("", text.c_str());
        EXPECT_EQ(String(), text);
    }
}

TEST(String, MayContainNULsButCompareToStopsAtTheFirst) {
    const String text("ab\0cd", 5);
    EXPECT_EQ(5U, text.length());
    EXPECT_EQ(std::string("ab\0cd", 5), textOf(text));
    EXPECT_EQ(String("ab"), text);
}

TEST(String, CopiesShareTheirBytesUntilOneIsChanged) {
    String a("abc");
    String b = a;
    EXPECT_EQ(a.c_str(), b.c_str());
    b[0] = 'x';
    EXPECT_EQ("abc", a);
    EXPECT_EQ("xbc", b);
    const char* const own = b.c_str();
    b[1] = 'y';
    EXPECT_EQ(own, b.c_str()) << "an unshared string changes in place";
}

TEST(String, MovingLeavesTheNullString) {
    String a("abc");
    const char* const bytes = a.c_str();
    const String b = std::move(a);
    EXPECT_EQ(bytes, b.c_str());
}

TEST(String, SelfAssignmentKeepsIt) {
    String a("abc");
    const String& same = a;
    a = same;
    EXPECT_EQ("abc", a);
}

TEST(String, TakesOwnershipOfNewBytes) {
    std::unique_ptr<char[]> newed(new char[3]{'a', 'b', 'c'});
    EXPECT_EQ("abc", String(String::E_TAKE_OWNERSHIP, newed.release(), 3));
}

TEST(String, LargerThanMemoryThrowsBadAlloc) {
    EXPECT_THROW(String("x", String::npos), std::bad_alloc);
    EXPECT_THROW(String("x", String::npos - 4), std::bad_alloc);
}

TEST(String, OfANumberIsItsText) {
    EXPECT_EQ("-2147483648", String(Int32(-2147483647 - 1)));
    EXPECT_EQ("4294967295", String(UInt32(4294967295U)));
    EXPECT_EQ("-9223372036854775808", String(Int64(-9223372036854775807LL - 1)));
    EXPECT_EQ("18446744073709551615", String(UInt64(18446744073709551615ULL)));
    EXPECT_EQ("-5", String(-5L));
    EXPECT_EQ("5", String(5UL));
    EXPECT_EQ("1e+06", String(1e6));
    EXPECT_EQ("x", String('x'));
}

TEST(String, ComparesWithAllOperators) {
    const String a("a");
    const String b("b");
    EXPECT_TRUE(a == "a" && "a" == a && a == String("a"));
    EXPECT_TRUE(a != b && a != "b" && "b" != a);
    EXPECT_TRUE(a < b && a < "b" && "a" < b);
    EXPECT_TRUE(a <= b && a <= "a" && "a" <= a);
    EXPECT_TRUE(b > a && b > "a" && "b" > a);
    EXPECT_TRUE(b >= a && b >= "b" && "b" >= b);
    EXPECT_TRUE(a.equals("a") && a.equals(String("a")) && !a.equals(b));
    EXPECT_LT(a.compareTo("\xc3\xa9"), 0) << "bytes are unsigned";
}

TEST(String, ComparesLettersOfAnyScriptWithoutCase) {
    const std::pair<const char*, const char*> same[] = {
        {"Name", "nAME"},
        {"\xc3\x89t\xc3\xa9", "\xc3\xa9T\xc3\x89"}, // e acute
        {"\xcf\x82\xcf\x83", "\xce\xa3\xce\xa3"},   // both small sigmas
        {"\xd0\x96", "\xd0\xb6"},                   // Cyrillic zhe
        {"\xf0\x90\x90\x80", "\xf0\x90\x90\xa8"},   // Deseret, beyond 16 bits
        {"\xe2\x84\xaa", "k"},                      // the Kelvin sign
        {"\xc7\x85", "\xc7\x84"},                   // a title case letter
        {"x\xff", "X\xff"},                         // a byte that is no character
    };
    for (const auto& [a, b] : same) {
        EXPECT_TRUE(String(a).equalsIgnoreCase(b)) << a << ' ' << b;
        EXPECT_EQ(0, String(b).compareToIgnoreCase(String(a))) << a << ' ' << b;
    }
}

TEST(String, DistinguishesDifferentLettersWithoutCase) {
    const std::pair<const char*, const char*> ordered[] = {{"a", "B"},
                                                           {"A", "b"},
                                                           {"ab", "ABC"},
                                                           {"", "a"},
                                                           {"[", "a"},
                                                           {"z", "\xc3\x89"},
                                                           {"\xc3\xa9", "\xff"},
                                                           {"\xfe", "\xff"},
                                                           {"i", "\xc4\xb1"},
                                                           {"I", "\xc4\xb0"},
                                                           {"\xc3\x9f", "\xe2\x82\xac"}};
    for (const auto& [less, more] : ordered) {
        EXPECT_LT(String(less).compareToIgnoreCase(more), 0) << less << ' ' << more;
        EXPECT_GT(String(more).compareToIgnoreCase(less), 0) << less << ' ' << more;
    }
}

TEST(String, AMalformedCharacterEqualsNoSimilarCharacter) {
    EXPECT_FALSE(String("\xc1\x81").equalsIgnoreCase("A"));
    EXPECT_FALSE(String("\xe0\x83\x89").equalsIgnoreCase("\xc3\x89"));
    EXPECT_FALSE(String("\xc3").equalsIgnoreCase("\xc3\x89"));
    EXPECT_FALSE(String("\xed\xa0\x80").equalsIgnoreCase("\xed\xb0\x80"));
}

TEST(String, StartsAndEndsWithAnother) {
    const String text("Abc");
    EXPECT_TRUE(text.startsWith("Ab") && text.startsWith(String("Abc")) && text.startsWith('A'));
    EXPECT_FALSE(text.startsWith("ab") || text.startsWith("Abcd") || text.startsWith('b'));
    EXPECT_TRUE(text.startsWith("aB", String::E_CASE_INSENSITIVE));
    EXPECT_TRUE(text.endsWith("bc") && text.endsWith(String("Abc")) && text.endsWith('c'));
    EXPECT_FALSE(text.endsWith("BC") || text.endsWith("xAbc") || text.endsWith('b'));
    EXPECT_TRUE(text.endsWith("BC", String::E_CASE_INSENSITIVE));
}

TEST(String, OnlyTheEmptyOneStartsAndEndsWithTheEmptyOne) {
    EXPECT_FALSE(String("abc").startsWith("") || String("abc").endsWith(""));
    EXPECT_TRUE(String("").startsWith("") && String().endsWith(""));
}

TEST(String, FindsTheFirstAndTheLastOccurrence) {
    const String text("abcabc");
    EXPECT_EQ(1U, text.indexOf('b'));
    EXPECT_EQ(4U, text.indexOf('b', 2));
    EXPECT_EQ(String::npos, text.indexOf('x'));
    EXPECT_EQ(2U, text.indexOf("ca"));
    EXPECT_EQ(3U, text.indexOf(String("abc"), 1));
    EXPECT_EQ(String::npos, text.indexOf("", 6));
    EXPECT_EQ(4U, text.lastIndexOf('b'));
    EXPECT_EQ(1U, text.lastIndexOf('b', 3));
    EXPECT_EQ(3U, text.lastIndexOf("abc"));
    EXPECT_EQ(0U, text.lastIndexOf(String("abc"), 2));
    EXPECT_EQ(String::npos, String().lastIndexOf(""));
}

TEST(String, ASubstringEndsWithTheText) {
    EXPECT_EQ("bc", String("abc").substring(1));
    EXPECT_EQ("b", String("abc").substring(1, 1));
    EXPECT_EQ("c", String("abc").substring(2, 99));
    EXPECT_EQ("", String("abc").substring(3));
    EXPECT_EQ("", String("abc").substring(1, 0));
}

TEST(String, AnIndexOutOfRangeReturnsNUL) {
    String text("ab");
    EXPECT_EQ('\0', text[2]);
    text[2] = 'x';
    text[99] = 'x';
    EXPECT_STREQ("ab", text.c_str());
    EXPECT_EQ('\0', text[99]);
    EXPECT_EQ('b', std::as_const(text)[1]);
    EXPECT_EQ('\0', std::as_const(text)[2]);
    String empty("");
    empty[0] = 'x';
    EXPECT_STREQ("", String("").c_str());
}

TEST(String, Index0OfTheNullStringThrows) {
    String text;
    for (const auto& index : {+[](String& s) { s[0] = 'x'; }, +[](String& s) { std::as_const(s)[0]; }})
        try {
            index(text);
            FAIL() << "no exception";
        } catch (const OpenWBEM::Exception& e) {
            EXPECT_STREQ("NULLCOWIntrusiveReferenceException", e.type());
        }
    EXPECT_EQ('\0', text.charAt(0));
}

TEST(String, GrowsByAppending) {
    String text;
    text.concat("ab").concat(String("cd")).concat('e').concat(static_cast<const char*>(nullptr));
    EXPECT_EQ("abcde", text);
    text += text;
    text += "f";
    text += 'g';
    EXPECT_EQ("abcdeabcdefg", text);
    EXPECT_EQ("abcx", "a" + String("b") + "c" + 'x');
    EXPECT_EQ("xab", 'x' + (String("a") + String("b")));
}

TEST(String, IsTrimmedAtEitherEnd) {
    EXPECT_EQ("a b", String(" \t\n\v\f\ra b ").trim());
    EXPECT_EQ("a ", String(" a ").ltrim());
    EXPECT_EQ(" a", String(" a ").rtrim());
    EXPECT_EQ("", String("  ").trim());
    EXPECT_TRUE(String(" \n").isSpaces() && String().isSpaces());
    EXPECT_FALSE(String(" x").isSpaces());
}

TEST(String, ConvertsTheCaseOfASCIILettersOnly) {
    const String text("aZ\xc3\x89[");
    EXPECT_EQ("az\xc3\x89[", String(text).toLowerCase());
    EXPECT_EQ("AZ\xc3\x89[", String(text).toUpperCase());
    EXPECT_EQ("aZ\xc3\x89[", text);
}

TEST(String, IsErasedCompletelyOrInPart) {
    EXPECT_EQ("ad", String("abcd").erase(1, 2));
    EXPECT_EQ("a", String("abcd").erase(1));
    EXPECT_EQ("abcd", String("abcd").erase(4));
    EXPECT_EQ("", String("abcd").erase());
}

TEST(String, IsSplitIntoNonEmptyTokens) {
    const StringArray tokens = String(" a\tbc  d ").tokenize();
    ASSERT_EQ(3U, tokens.size());
    EXPECT_EQ("bc", tokens[1]);
    EXPECT_EQ(2U, String("/a/b").tokenize("/").size());
    EXPECT_EQ(0U, String("//").tokenize("/").size());
}

TEST(String, IsFormattedLikePrintf) {
    String text("x");
    EXPECT_EQ(305, text.format("%s-%03d%300s", "ab", 7, "") - 1);
    EXPECT_TRUE(text.startsWith("ab-007 "));
}

TEST(String, IsUnchangedIfFormattingFails) {
    String text("x");
    EXPECT_THROW(text.format("%ls", L"\u20ac"), std::bad_alloc) << "no character of the locale \"C\"";
    EXPECT_EQ("x", text);
}

TEST(String, UTF8LengthCountsCharactersNotBytes) {
    EXPECT_EQ(3U, String("a\xc3\xa9\xe2\x82\xac").UTF8Length());
    EXPECT_EQ(6U, String("a\xc3\xa9\xe2\x82\xac").length());
}

TEST(String, AllocatesACopyForFree) {
    const std::unique_ptr<char, decltype(&std::free)> copy(String("abc").allocateCString(), &std::free);
    EXPECT_STREQ("abc", copy.get());
}

TEST(String, IsWrittenAndReadLineByLine) {
    std::stringstream stream;
    stream << String("abc") << '\n' << String() << "\nlast";
    EXPECT_EQ("abc", String::getLine(stream));
    EXPECT_EQ("", String::getLine(stream));
    EXPECT_EQ("last", String::getLine(stream));
    EXPECT_EQ("", String::getLine(stream));
}

TEST(String, EqualStringsHaveEqualHashCodes) {
    EXPECT_EQ(String("abc").hashCode(), String("xabc").substring(1).hashCode());
    EXPECT_NE(String("abc").hashCode(), String("abd").hashCode());
}

} // namespace
