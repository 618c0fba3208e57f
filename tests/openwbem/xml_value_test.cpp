// Values read from hand-written elements.
#include "OW_CIMDateTime.hpp"
#include "OW_CIMProperty.hpp"
#include "OW_CIMValue.hpp"

#include "Xml.hpp"

#include <gtest/gtest.h>
#include <string>
#include <utility>

namespace {

using namespace OpenWBEM;
using xml_test::property;
using xml_test::text;

CIMValue scalar(const std::string& type, const std::string& text) {
    return property("<PROPERTY NAME=\"p\" TYPE=\"" + type + "\"><VALUE>" + text + "</VALUE></PROPERTY>")
        .getValue();
}

CIMValue array(const std::string& type, const std::string& elements) {
    return property("<PROPERTY.ARRAY NAME=\"p\" TYPE=\"" + type + "\"><VALUE.ARRAY>" + elements +
                    "</VALUE.ARRAY></PROPERTY.ARRAY>")
        .getValue();
}

TEST(XmlValue, HasTheTypeOfItsPropertyAndTheContentOfItsText) {
    const struct {
        const char* type;
        CIMDataType::Type number;
        const char* text;
        const char* expected;
    } examples[] = {
        {"uint8", CIMDataType::UINT8, "255", "255"},
        {"sint8", CIMDataType::SINT8, "-128", "-128"},
        {"uint16", CIMDataType::UINT16, "65535", "65535"},
        {"sint16", CIMDataType::SINT16, "-32768", "-32768"},
        {"uint32", CIMDataType::UINT32, "4294967295", "4294967295"},
        {"sint32", CIMDataType::SINT32, "-2147483648", "-2147483648"},
        {"uint64", CIMDataType::UINT64, "18446744073709551615", "18446744073709551615"},
        {"sint64", CIMDataType::SINT64, "-9223372036854775808", "-9223372036854775808"},
        {"uint8", CIMDataType::UINT8, " \n+007", "7"},
        {"uint32", CIMDataType::UINT32, "", "0"},
        {"real32", CIMDataType::REAL32, "3.14159274e+00", "3.14159"},
        {"real32", CIMDataType::REAL32, "3.40282347e+38", "3.40282e+38"},
        {"real64", CIMDataType::REAL64, "-1.25e-300", "-1.25e-300"},
        {"boolean", CIMDataType::BOOLEAN, "TRUE", "true"},
        {"boolean", CIMDataType::BOOLEAN, "False", "false"},
        {"string", CIMDataType::STRING, " a &lt; b ", " a < b "},
        {"string", CIMDataType::STRING, "", ""},
        {"string", CIMDataType::STRING, "NULL", "NULL"},
        {"datetime", CIMDataType::DATETIME, "20050607080910.123456+060", "20050607080910.123456+060"},
        {"UInt8", CIMDataType::UINT8, "1", "1"},
    };
    for (const auto& example : examples) {
        const CIMValue value = scalar(example.type, example.text);
        ASSERT_TRUE(value) << example.type << ' ' << example.text;
        EXPECT_EQ(example.number, value.getType());
        EXPECT_FALSE(value.isArray());
        EXPECT_EQ(example.expected, text(value));
    }
}

TEST(XmlValue, OfAnEmptyTextIsTheEmptyStringNotTheNullString) {
    EXPECT_EQ(0U, scalar("string", "").toString().toUInt32()) << "the null string throws";
}

TEST(XmlValue, IsNullWithoutItsElement) {
    const CIMProperty unset = property("<PROPERTY NAME=\"p\" TYPE=\"uint16\" ></PROPERTY>");
    EXPECT_FALSE(unset.getValue());
    EXPECT_EQ(CIMDataType::UINT16, unset.getDataType().getType());
    const CIMProperty unsetArray = property("<PROPERTY.ARRAY NAME=\"p\" TYPE=\"uint16\" ></PROPERTY.ARRAY>");
    EXPECT_FALSE(unsetArray.getValue());
    EXPECT_TRUE(unsetArray.getDataType().isArrayType());
}

TEST(XmlValue, IsNullForANumberWithTheTextNull) {
    EXPECT_FALSE(scalar("uint8", "NULL"));
    EXPECT_FALSE(scalar("real64", "null"));
}

TEST(XmlValue, IsNullForAnUnknownType) {
    EXPECT_FALSE(scalar("void", "1"));
    EXPECT_FALSE(array("void", "<VALUE>1</VALUE>"));
    EXPECT_FALSE(property("<PROPERTY NAME=\"p\"><VALUE>1</VALUE></PROPERTY>").getValue());
}

TEST(XmlValue, IsRejectedIfItsTextIsNotOfItsType) {
    const struct {
        const char* type;
        const char* text;
        const char* word;
    } examples[] = {
        {"uint8", "256", "UInt8"},
        {"uint8", "-1", "UInt8"},
        {"sint8", "128", "Int8"},
        {"uint16", "65536", "UInt16"},
        {"sint16", "32768", "Int16"},
        {"uint32", "4294967296", "UInt32"},
        {"uint32", "-1", "UInt32"},
        {"sint32", "2147483648", "Int32"},
        {"uint64", "18446744073709551616", "UInt64"},
        {"sint64", "9223372036854775808", "Int64"},
        {"uint32", "1 ", "UInt32"},
        {"uint32", "0x10", "UInt32"},
        {"uint32", "abc", "UInt32"},
        {"sint32", "+-1", "Int32"},
        {"uint32", "+", "UInt32"},
        {"uint32", " ", "UInt32"},
        {"real64", "1.5x", "Real64"},
        {"real64", "inf", "Real64"},
        {"real32", "1e39", "Real32"},
        {"boolean", "yes", "bool"},
        {"boolean", "", "bool"},
    };
    for (const auto& example : examples) {
        const std::string message = std::string("CIMException: invalid parameter passed to method (Unable to "
                                                "convert \"") +
                                    example.text + "\" into " + example.word + ")";
        EXPECT_EQ(message, failureOf([&] { scalar(example.type, example.text); }));
        EXPECT_EQ(message, failureOf([&] {
                      array(example.type, std::string("<VALUE>") + example.text + "</VALUE>");
                  }));
    }
}

TEST(XmlValue, OfAMalformedDatetimeIsRejected) {
    EXPECT_EQ("CIMDateTimeException: Invalid format for date time",
              failureOf([] { scalar("datetime", "hello"); }));
}

TEST(XmlValue, OfACharacterIsItsCode) {
    const std::pair<const char*, unsigned> examples[] = {
        {"A", 'A'},
        {"", 0},
        {"\xC3\xA9", 0xE9},
        {"\xE2\x82\xAC", 0x20AC},
        {"AB", 'A'},
        {"&lt;", '<'},
        {"\xEF\xBF\xBD", 0xFFFD},
        {"\xF0\x9F\x98\x80", 0xFFFF},
        {"\xC3", 0xFFFF},
        {"\xC3"
         "A",
         0xFFFF},
        {"\x80", 0xFFFF},
        {"\xE2\x82", 0xFFFF},
        {"\xE0\x80\x80", 0xFFFF},
        {"\xC0\x80", 0xFFFF},
        {"\xFF", 0xFFFF},
    };
    for (const auto& [character, code] : examples)
        EXPECT_EQ(code, scalar("char16", character).toChar16().getValue()) << character;
}

TEST(XmlArray, HasItsElementsInOrder) {
    const CIMValue numbers = array("uint16", "<VALUE>1</VALUE> <VALUE>65535</VALUE>");
    EXPECT_EQ(CIMDataType::UINT16, numbers.getType());
    EXPECT_TRUE(numbers.isArray());
    EXPECT_EQ("1,65535", text(numbers));
    EXPECT_EQ("true,false", text(array("boolean", "<VALUE>true</VALUE><VALUE>FALSE</VALUE>")));
    EXPECT_EQ("a,,b", text(array("string", "<VALUE>a</VALUE><VALUE/><VALUE>b</VALUE>")));
    EXPECT_EQ("0.1,1e+100", text(array("real64", "<VALUE>0.1</VALUE><VALUE>1e100</VALUE>")));
    EXPECT_EQ("\xC3\xA9,A", text(array("char16", "<VALUE>\xC3\xA9</VALUE><VALUE>A</VALUE>")));
}

TEST(XmlArray, MayBeEmpty) {
    const CIMValue none = array("uint8", "");
    ASSERT_TRUE(none);
    EXPECT_TRUE(none.isArray());
    EXPECT_EQ(0U, none.getArraySize());
}

TEST(XmlArray, HasAnEmptyElementForANullElement) {
    EXPECT_EQ("1,0,2", text(array("uint8", "<VALUE>1</VALUE><VALUE.NULL/><VALUE>2</VALUE>")));
    EXPECT_EQ("0", text(array("sint32", "<VALUE>null</VALUE>")));
    EXPECT_EQ("a,", text(array("string", "<VALUE>a</VALUE><VALUE.NULL></VALUE.NULL>")));
}

TEST(XmlArray, OfTheMaximumSizeIsAcceptedAndALargerOneRejected) {
    const std::string elements = xml_test::repeated("<VALUE/>", io::maximumElements);
    EXPECT_EQ(io::maximumElements, array("string", elements).getArraySize());
    EXPECT_EQ("XMLParseException: Line 1: Too many: elements of one list",
              failureOf([&] { array("string", elements + "<VALUE/>"); }));
}

TEST(XmlArray, IsDeclaredWithItsSizeAttribute) {
    const CIMDataType type =
        property("<PROPERTY.ARRAY NAME=\"p\" TYPE=\"uint8\" ARRAYSIZE=\"4\"></PROPERTY.ARRAY>").getDataType();
    EXPECT_EQ(4, type.getSize());
    for (const char* bad : {"0", "-1", "x", "99999999999"})
        EXPECT_EQ(
            -1, property(std::string("<PROPERTY.ARRAY NAME=\"p\" TYPE=\"uint8\" ARRAYSIZE=\"") + bad + "\"/>")
                    .getDataType()
                    .getSize());
}

} // namespace
