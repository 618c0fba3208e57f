// The decoder and the encoder with hand-written bytes, valid and invalid.
#include "OW_CIMClass.hpp"
#include "OW_CIMDateTime.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMObjectPath.hpp"
#include "OW_CIMProperty.hpp"
#include "OW_CIMValue.hpp"
#include "OW_IOException.hpp"
#include "OW_String.hpp"

#include "Failure.hpp"
#include "binary/ObjectReader.hpp"
#include "binary/ObjectWriter.hpp"
#include "binary/Protocol.hpp"
#include "binary/Reader.hpp"
#include "io/Limits.hpp"
#include "support/TempDir.hpp"
#include "support/Wire.hpp"

#include <cmath>
#include <gtest/gtest.h>
#include <string>

namespace {

using namespace OpenWBEM;
namespace wire = support::wire;

CIMInstance decode(const std::string& bytes) {
    binary::Reader in(bytes.data(), bytes.size());
    binary::ObjectReader objects(in);
    CIMInstance instance = objects.instance();
    EXPECT_TRUE(in.atEnd());
    return instance;
}

std::string encode(const CIMInstance& instance) {
    binary::Writer out;
    binary::write(out, instance);
    return out.release();
}

std::string messageOfDecoding(const std::string& bytes) {
    return failureOf([&] { decode(bytes); });
}

std::string number(UInt32 value) {
    binary::Writer out;
    out.number(value);
    return out.release();
}

TEST(Number, IsWrittenInItsShortestForm) {
    const std::pair<UInt32, std::string> examples[] = {
        {0, std::string("\0", 1)},
        {127, "\x7f"},
        {128, "\x81\x80"},
        {255, "\x81\xff"},
        {256, std::string("\x82\1\0", 3)},
        {65535, "\x82\xff\xff"},
        {65536, std::string("\x83\1\0\0", 4)},
        {16777216, std::string("\x84\1\0\0\0", 5)},
        {4294967295U, "\x84\xff\xff\xff\xff"},
    };
    for (const auto& [value, bytes] : examples) {
        EXPECT_EQ(bytes, number(value)) << value;
        binary::Reader in(bytes.data(), bytes.size());
        EXPECT_EQ(value, in.number());
    }
}

TEST(Number, IsReadInLongerForms) {
    const std::string bytes("\x82\0\5\x80", 4);
    binary::Reader in(bytes.data(), bytes.size());
    EXPECT_EQ(5U, in.number());
    EXPECT_EQ(0U, in.number());
}

TEST(Number, OfMoreThanFourBytesIsRejected) {
    const std::string bytes("\x85\0\0\0\0\1", 6);
    binary::Reader in(bytes.data(), bytes.size());
    EXPECT_THROW(in.number(), IOException);
}

std::string everyType() {
    return wire::instance(
        "Every",
        {wire::property("U8", wire::UINT8, "\xff"),
         wire::property("S8", wire::SINT8, "\x80"),
         wire::property("U16", wire::UINT16, "\xff\xfe"),
         wire::property("S16", wire::SINT16, "\x80\x01"),
         wire::property("U32", wire::UINT32, wire::bigEndian(4000000000U, 4)),
         wire::property("S32", wire::SINT32, wire::bigEndian(0xffffffffU, 4)),
         wire::property("U64", wire::UINT64, wire::bigEndian(~0ULL, 8)),
         wire::property("S64", wire::SINT64, wire::bigEndian(~0ULL, 8)),
         wire::stringProperty("S", "text \xc3\xa9"),
         wire::property("B", wire::BOOLEAN, "\x01"),
         wire::property("R32", wire::REAL32, wire::text("0.1")),
         wire::property("R64", wire::REAL64, wire::text("1e+100")),
         wire::property("DT", wire::DATETIME,
                        wire::bigEndian(2005, 2) + "\x0b" + wire::bigEndian(28, 4) + "\x0f\x27\x11" +
                            wire::bigEndian(123456, 4) + wire::bigEndian(0xfed4, 2) + std::string(1, '\0')),
         wire::property("C16", wire::CHAR16, "\x20\xac"),
         wire::arrayProperty("A", wire::UINT16, {wire::bigEndian(1, 2), wire::bigEndian(65535, 2)}),
         wire::arrayProperty("SA", wire::STRING, {wire::text("one"), wire::text("")}),
         wire::arrayProperty("BA", wire::BOOLEAN, {std::string("\0", 1), "\x01"}),
         wire::nullProperty("N", wire::STRING),
         wire::nullProperty("NA", wire::UINT64, true),
         wire::property("E", wire::EMBEDDEDINSTANCE,
                        wire::instance("Inner", {wire::stringProperty("x", "y")}))});
}

TEST(Codec, DecodesEveryType) {
    EXPECT_STREQ(
        "instance of Every {\nU8 = 255;\nS8 = -128;\nU16 = 65534;\nS16 = -32767;\nU32 = 4000000000;\nS32 = "
        "-1;\n"
        "U64 = 18446744073709551615;\nS64 = -1;\nS = text \xc3\xa9;\nB = true;\nR32 = 0.1;\nR64 = 1e+100;\n"
        "DT = 20051128153917.123456-300;\nC16 = \xac;\nA = 1,65535;\nSA = one,;\nBA = false,true;\nN = "
        "null;\n"
        "NA = null;\nE = instance of Inner {\nx = y;\n}\n;\n}\n",
        decode(everyType()).toString().c_str());
}

TEST(Codec, EncodesEveryTypeToTheSameBytes) {
    EXPECT_EQ(everyType(), encode(decode(everyType())));
}

TEST(Codec, ReadsAnEmptyTextAsTheEmptyStringNotTheNullString) {
    const CIMInstance instance = decode(wire::instance("Foo", {wire::stringProperty("x", "")}));
    EXPECT_EQ(0U, instance.getPropertyValue("x").toString().toUInt32()) << "the null string throws";
}

TEST(Codec, DoesNotMixUpTheNamesOfConsecutiveInstances) {
    const std::string bytes =
        wire::instance("A", {wire::stringProperty("x", "1"), wire::stringProperty("y", "2")}) +
        wire::instance("B", {wire::stringProperty("y", "3")}) +
        wire::instance("A", {wire::stringProperty("x", "4"), wire::stringProperty("z", "5")});
    binary::Reader in(bytes.data(), bytes.size());
    binary::ObjectReader objects(in);
    const CIMInstance first = objects.instance();
    EXPECT_STREQ("instance of B {\ny = 3;\n}\n", objects.instance().toString().c_str());
    EXPECT_STREQ("instance of A {\nx = 4;\nz = 5;\n}\n", objects.instance().toString().c_str());
    EXPECT_STREQ("instance of A {\nx = 1;\ny = 2;\n}\n", first.toString().c_str());
}

TEST(Codec, ReadsInstancesOfEveryVersion) {
    const std::string body = wire::text("Foo") + wire::number(0) + wire::number(0) + wire::number(0);
    EXPECT_EQ("Foo", decode("I" + body).getClassName());
    EXPECT_EQ("Foo", decode("i\x01" + body + wire::text("en")).getClassName());
    EXPECT_EQ("Foo", decode("i\x02" + body + wire::text("") + wire::text("root/cimv2")).getClassName());
    EXPECT_EQ(
        "BadCIMSignatureException: CIMBase::readSig. Unknown version 3, only versions <= 2 are handled.",
        messageOfDecoding("i\x03" + body));
}

TEST(Codec, ReadsClassesOfEveryVersion) {
    const std::string body = wire::text("Foo") + wire::text("Base") + std::string(2, '\0') + wire::number(0) +
                             wire::number(0) + wire::number(0);
    for (const std::string& bytes : {"C" + body, "c\x01" + body + wire::text("en")}) {
        binary::Reader in(bytes.data(), bytes.size());
        EXPECT_EQ("class Foo : Base\n{\n};\n", binary::ObjectReader(in).classObject().toString());
        EXPECT_TRUE(in.atEnd());
    }
}

TEST(Codec, RejectsAnObjectTruncatedAtAnyByte) {
    const std::string whole = everyType();
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_EQ("IOException: Failed reading data", messageOfDecoding(whole.substr(0, length))) << length;
}

TEST(Codec, RejectsImplausibleCountsBeforeItAllocates) {
    const std::string head = std::string("i\x01") + wire::text("Foo");
    EXPECT_EQ("IOException: Failed reading data", messageOfDecoding(head + wire::number(0xffffffffU) + "R"));
    const std::string property = wire::arrayProperty("x", wire::UINT64, {});
    const std::string cut = property.substr(0, property.size() - 1);
    EXPECT_EQ("IOException: Failed reading data",
              messageOfDecoding(head + wire::number(0) + wire::number(1) + cut + wire::number(0x20000000U) +
                                "12345678"));
}

TEST(Codec, RejectsInvalidSignatures) {
    EXPECT_EQ("BadCIMSignatureException: Signature does not match. In CIMBase::readSig. signature read: C, "
              "expected: I or i",
              messageOfDecoding("C\x03Foo"));
    const std::string head = std::string("i\x01") + wire::text("Foo") + wire::number(0) + wire::number(1);
    EXPECT_EQ("BadCIMSignatureException: Received invalid signature. Got: 88 Expected: 82",
              messageOfDecoding(head + "X" + std::string(20, '\0')));
}

TEST(Codec, RejectsAValueOfUnknownType) {
    for (const char type : {'\0', '\x12', '\x63'}) {
        std::string bytes = wire::instance("Foo", {wire::property("x", wire::UINT8, "\x01")});
        const std::size_t at = bytes.rfind("V\x01");
        bytes[at + 1] = type;
        EXPECT_EQ("IOException: Received a value of unknown type " + std::to_string(type),
                  messageOfDecoding(bytes));
    }
}

TEST(Codec, RejectsAMalformedReal) {
    for (const char* text : {"1.5x", "", "inf", "-inf", "1e999", " ", "0x10"})
        EXPECT_EQ(
            "StringConversionException: Unable to convert \"" + std::string(text) + "\" into Real64",
            messageOfDecoding(wire::instance("Foo", {wire::property("x", wire::REAL64, wire::text(text))})));
}

TEST(Codec, ReadsRealsInAllFormsThatWritersUse) {
    for (const char* text : {"1.5", "+1.5", " 1.5", "1.5e+00", "15e-1"})
        EXPECT_EQ("1.5", decode(wire::instance("Foo", {wire::property("x", wire::REAL32, wire::text(text))}))
                             .getPropertyValue("x")
                             .toString());
}

TEST(Codec, ReadsAReal32ThatIsTooLargeAsInfinite) {
    for (const char* const text : {"1e39", "-1e39"}) {
        Real32 number = 0;
        decode(wire::instance("Foo", {wire::property("x", wire::REAL32, wire::text(text))}))
            .getPropertyValue("x")
            .get(number);
        EXPECT_TRUE(std::isinf(number)) << text;
        EXPECT_EQ(*text == '-', std::signbit(number)) << text;
    }
}

std::string nested(unsigned depth) {
    std::string bytes = wire::instance("Innermost", {});
    while (--depth > 0)
        bytes = wire::instance("Outer", {wire::property("x", wire::EMBEDDEDINSTANCE, bytes)});
    return bytes;
}

TEST(Codec, LimitsTheNestingDepth) {
    EXPECT_EQ("no exception", messageOfDecoding(nested(io::maximumDepth)));
    EXPECT_EQ("IOException: Failed reading data: objects are nested too deeply",
              messageOfDecoding(nested(io::maximumDepth + 1)));
}

TEST(Codec, ReadsAndWritesReferences) {
    const std::string path = "ON" + wire::text("root/cimv2") + "U" +
                             wire::text("http://127.0.0.1:5988/cimom") + wire::text("Foo") + wire::number(1) +
                             wire::stringProperty("Name", "x");
    const std::string bytes = wire::instance("Ref", {wire::property("Antecedent", wire::REFERENCE, path)});
    EXPECT_EQ("/root/cimv2:Foo.Name=\"x\"", decode(bytes).getPropertyValue("Antecedent").toString());
    EXPECT_EQ(bytes, encode(decode(bytes)));
}

// Flips every bit of an instance with values of every type. The result is an instance or an exception of the
// library.
TEST(Codec, SurvivesEveryFlippedBit) {
    const std::string whole = everyType();
    for (std::size_t at = 0; at < whole.size() * 8; ++at) {
        std::string bytes = whole;
        bytes[at / 8] = static_cast<char>(bytes[at / 8] ^ (1 << at % 8));
        try {
            binary::Reader in(bytes.data(), bytes.size());
            binary::ObjectReader(in).instance().toString();
        } catch (const OpenWBEM::Exception&) {
        }
    }
}

} // namespace
