#include "OW_Bool.hpp"
#include "OW_CIMName.hpp"
#include "OW_Char16.hpp"
#include "OW_String.hpp"
#include "OW_Types.hpp"
#include "OW_WBEMFlags.hpp"

#include <gtest/gtest.h>
#include <type_traits>
#include <utility>

namespace {

using namespace OpenWBEM;

TEST(Bool, IsFalseByDefaultAndDoesNotConvertFromPointers) {
    EXPECT_FALSE(Bool());
    EXPECT_EQ("true", Bool(true).toString());
    EXPECT_EQ("false", Bool(false).toString());
    EXPECT_FALSE((std::is_constructible_v<Bool, const char*>));
}

TEST(Char16, IsTheFirstCharacterOfAText) {
    const std::pair<const char*, UInt16> examples[] = {{"Ab", 'A'},
                                                       {"", 0},
                                                       {"\xc3\xa9", 0xE9},
                                                       {"\xe2\x82\xac", 0x20AC},
                                                       {"\xf0\x90\x90\x80", 0xFFFF},
                                                       {"\xff", 0xFFFF},
                                                       {"\xc3", 0xFFFF},
                                                       {"\x80", 0xFFFF}};
    for (const auto& [text, code] : examples)
        EXPECT_EQ(code, Char16(String(text)).getValue()) << text;
}

TEST(Char16, HasATextInUTF8) {
    EXPECT_EQ("A", Char16('A').toString());
    EXPECT_EQ("\xc3\xa9", Char16(UInt16(0xE9)).toString());
    EXPECT_EQ("\xe2\x82\xac", Char16(UInt32(0x20AC)).toString());
}

TEST(Char16, TruncatesANumberTo16Bits) {
    EXPECT_EQ(0xFFFF, Char16(Int8(-1)).getValue());
    EXPECT_EQ(0x2345, Char16(UInt64(0x12345)).getValue());
    EXPECT_EQ(1, Char16(Bool(true)).getValue());
    EXPECT_EQ(2, Char16(Real64(2.9)).getValue());
    EXPECT_EQ(0xE9, Char16('\xe9').getValue());
}

TEST(CIMName, ComparesWithoutCaseButKeepsItsLetterCase) {
    const CIMName a("Abc");
    EXPECT_EQ("Abc", a.toString());
    EXPECT_TRUE(a == "aBC" && a <= "ABC" && a >= "ABC" && !(a != "abc"));
    EXPECT_TRUE(a < "ABD" && a <= "ABD" && CIMName("ABD") > a && a != "ABD");
}

TEST(CIMName, IsFalseIfItIsEmpty) {
    EXPECT_FALSE(CIMName());
    EXPECT_FALSE(CIMName(static_cast<const char*>(nullptr)));
    EXPECT_FALSE(CIMName(String("")).isValid());
    EXPECT_TRUE(CIMName("x"));
}

TEST(WBEMFlags, DoNotConvertFromNumbers) {
    EXPECT_EQ(1, WBEMFlags::E_DEEP);
    EXPECT_EQ(1, WBEMFlags::E_ENUM_SUBCLASSES);
    EXPECT_EQ(0, WBEMFlags::E_FAILED);
    EXPECT_FALSE((std::is_convertible_v<int, WBEMFlags::EDeepFlag>));
}

} // namespace
