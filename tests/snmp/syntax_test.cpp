#include "snmp/Loop.hpp"
#include "snmp/mapping/Date.hpp"
#include "snmp/mapping/Syntax.hpp"

using namespace snmp;
using namespace snmp_test;

namespace {

std::string shownAs(Syntax syntax, std::string_view text, std::size_t size = defaultSize) {
    const std::optional<Value> value = encoded(syntax, text, size);
    if (!value)
        return "none";
    EXPECT_EQ(value->type, typeOf(syntax));
    return shown(*value);
}

std::string hex(const std::string& octets) {
    const char* const digits = "0123456789abcdef";
    std::string text;
    for (const char c : octets) {
        text += digits[static_cast<unsigned char>(c) / 16];
        text += digits[static_cast<unsigned char>(c) % 16];
    }
    return text;
}

std::string dateOf(std::string_view text) {
    return hex(dateAndTime(text).value_or("none"));
}

} // namespace

TEST(Syntax, AnIntegerSaturatesAtBothEndsOf32Bits) {
    EXPECT_EQ(shownAs(Syntax::integer32, "2147483647"), "2147483647");
    EXPECT_EQ(shownAs(Syntax::integer32, "2147483648"), "2147483647");
    EXPECT_EQ(shownAs(Syntax::integer32, "18446744073709551615"), "2147483647");
    EXPECT_EQ(shownAs(Syntax::integer32, "-1"), "-1");
    EXPECT_EQ(shownAs(Syntax::integer32, "-2147483649"), "-2147483648");
}

TEST(Syntax, ACounterOf32BitsIsTheNumberModulo32Bits) {
    EXPECT_EQ(shownAs(Syntax::counter32, "4294967295"), "4294967295");
    EXPECT_EQ(shownAs(Syntax::counter32, "4294967296"), "0");
    EXPECT_EQ(shownAs(Syntax::counter32, "9007199254740993"), "1"); // 2^53 + 1
    EXPECT_EQ(shownAs(Syntax::counter32, "18446744073709551615"), "4294967295");
}

TEST(Syntax, ACounterOf64BitsKeepsAllBits) {
    EXPECT_EQ(shownAs(Syntax::counter64, "9007199254740993"), "9007199254740993");
    EXPECT_EQ(shownAs(Syntax::counter64, "18446744073709551615"), "18446744073709551615");
}

TEST(Syntax, AGaugeSaturates) {
    EXPECT_EQ(shownAs(Syntax::gauge32, "4294967295"), "4294967295");
    EXPECT_EQ(shownAs(Syntax::gauge32, "4294967296"), "4294967295");
}

TEST(Syntax, TimeTicksWrapAfter497Days) {
    EXPECT_EQ(shownAs(Syntax::timeTicks, "4294967296"), "0");
    EXPECT_EQ(shownAs(Syntax::timeTicks, "4295000000"), "32704");
}

TEST(Syntax, ATextThatIsNoNumberHasNoValue) {
    for (const Syntax syntax : {Syntax::integer32, Syntax::counter32, Syntax::gauge32, Syntax::counter64}) {
        EXPECT_EQ(shownAs(syntax, ""), "none");
        EXPECT_EQ(shownAs(syntax, "12 kB"), "none");
        EXPECT_EQ(shownAs(syntax, "18446744073709551616"), "none");
    }
    EXPECT_EQ(shownAs(Syntax::counter64, "-1"), "none");
}

TEST(Syntax, OctetsAreCutBeforeACharacterThatDoesNotFit) {
    EXPECT_EQ(shownAs(Syntax::octets, "abcd", 4), "abcd");
    EXPECT_EQ(shownAs(Syntax::octets, "abcde", 4), "abcd");
    EXPECT_EQ(shownAs(Syntax::octets, "abc\xc3\xa4", 4), "abc");
    EXPECT_EQ(shownAs(Syntax::octets, "abc\xc3\xa4", 5), "abc\xc3\xa4");
    EXPECT_EQ(shownAs(Syntax::octets, "a\xf0\x9f\x98\x80", 4), "a");
}

TEST(Syntax, OctetsThatAreNoUtf8AreCutAtTheSize) {
    EXPECT_EQ(shownAs(Syntax::octets, "ab\x80\x80\x80\x80\x80\x80", 6), "ab\x80\x80\x80\x80");
    EXPECT_EQ(shownAs(Syntax::octets, "\x80\x80\x80", 2), "\x80\x80");
}

TEST(Syntax, ValidUtf8IsRecognised) {
    EXPECT_TRUE(isUtf8(""));
    EXPECT_TRUE(isUtf8("caf\xc3\xa9 \xe2\x82\xac"));
    EXPECT_FALSE(isUtf8("caf\xc3"));
    EXPECT_FALSE(isUtf8("\xff"));
}

TEST(Syntax, HexadecimalDigitsBecomeOctets) {
    EXPECT_EQ(hex(shownAs(Syntax::hexOctets, "02FC00000001")), "02fc00000001");
    EXPECT_EQ(shownAs(Syntax::hexOctets, "02:fc"), "none");
    EXPECT_EQ(shownAs(Syntax::hexOctets, "02f"), "none");
}

TEST(Syntax, AnAddressOfZerosIsNoAddress) {
    EXPECT_EQ(shownAs(Syntax::hexOctets, "000000000000"), "");
}

TEST(Syntax, AnIpAddressIsFourOctets) {
    EXPECT_EQ(hex(shownAs(Syntax::ipAddress, "192.0.2.255")), "c00002ff");
    EXPECT_EQ(shownAs(Syntax::ipAddress, "2001:db8::1"), "none");
    EXPECT_EQ(shownAs(Syntax::ipAddress, ""), "none");
}

TEST(Syntax, AnObjectIdentifierHasTwoSubIdentifiersAtLeast) {
    EXPECT_EQ(shownAs(Syntax::objectId, "0.0"), "0.0");
    EXPECT_EQ(shownAs(Syntax::objectId, ".1.3.6.1"), "1.3.6.1");
    EXPECT_EQ(shownAs(Syntax::objectId, "1af4:1041"), "none");
    EXPECT_EQ(shownAs(Syntax::objectId, ""), "none");
    EXPECT_EQ(shownAs(Syntax::objectId, "1"), "none");
}

TEST(Syntax, ATruthValueIsOneOrTwo) {
    EXPECT_EQ(shownAs(Syntax::truthValue, "true"), "1");
    EXPECT_EQ(shownAs(Syntax::truthValue, "false"), "2");
    EXPECT_EQ(shownAs(Syntax::truthValue, "TRUE"), "none");
}

TEST(Date, BecomesElevenOctetsWithTheOffset) {
    EXPECT_EQ(dateOf("20260228235959.987654+060"), "07ea021c173b3b092b0100");
    EXPECT_EQ(dateOf("20260228235959.987654-210"), "07ea021c173b3b092d031e");
}

TEST(Date, BecomesEightOctetsIfTheOffsetIsUnknown) {
    EXPECT_EQ(dateOf("20260228235959.987654+***"), "07ea021c173b3b09");
}

TEST(Date, IsRightBeyond2038) {
    EXPECT_EQ(dateOf("20380119031408.000000+000"), "07f60113030e08002b0000");
    EXPECT_EQ(dateOf("99991231235959.900000+000"), "270f0c1f173b3b092b0000");
}

TEST(Date, WithAsterisksIsNone) {
    EXPECT_EQ(dateAndTime("20260228******.******+000"), std::nullopt);
    EXPECT_EQ(dateAndTime("**************.******+***"), std::nullopt);
}

TEST(Date, OfAnotherFormIsNone) {
    for (const char* text :
         {"", "2026-02-28", "20261301000000.000000+000", "20260232000000.000000+000",
          "20260228240000.000000+000", "20260228000000,000000+000", "00000000000242.290000:000"})
        EXPECT_EQ(dateAndTime(text), std::nullopt) << text;
}

TEST(Date, IsCountedFrom1970) {
    EXPECT_EQ(hundredthsOf("19700101000000.000000+000"), 0);
    EXPECT_EQ(hundredthsOf("19700101010000.010000+060"), 1);
    EXPECT_EQ(hundredthsOf("20380119031407.990000+000"), 214748364799);
    EXPECT_EQ(hundredthsOf("20380119031408.000000+000"), 214748364800);
    EXPECT_EQ(hundredthsOf("19691231235959.000000+000"), -100);
    EXPECT_EQ(hundredthsOf("21000301000000.000000+000"), 410754240000); // 2100 is no leap year
    EXPECT_EQ(hundredthsOf("tomorrow"), std::nullopt);
}
