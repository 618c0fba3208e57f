#include "OW_Array.hpp"
#include "OW_CIMClass.hpp"
#include "OW_CIMDateTime.hpp"
#include "OW_CIMException.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMObjectPath.hpp"
#include "OW_CIMValue.hpp"
#include "OW_CIMValueCast.hpp"

#include "Failure.hpp"

#include <gtest/gtest.h>
#include <string>

namespace {

using namespace OpenWBEM;
using CIMValueCast::castValueToDataType;

const CIMDataType arrayOf(CIMDataType::Type type) {
    return CIMDataType(type, -1);
}

template <class T>
CIMValue arrayValue(std::initializer_list<T> elements) {
    return CIMValue(Array<T>(elements.begin(), elements.end()));
}

// `<type>: <message>` of the exception of a cast.
std::string errorOf(const CIMValue& value, const CIMDataType& type) {
    return failureOf([&] { castValueToDataType(value, type); });
}

TEST(Cast, OfTheNullValueOrToNoTypeIsNull) {
    EXPECT_FALSE(castValueToDataType(CIMValue(CIMNULL), CIMDataType::UINT8));
    EXPECT_FALSE(castValueToDataType(CIMValue("x"), CIMDataType()));
    EXPECT_FALSE(castValueToDataType(CIMValue("x"), CIMDataType::INVALID));
}

TEST(Cast, ToTheSameTypeChangesNothing) {
    const Real64 exact = 1.23456789012345;
    EXPECT_EQ(CIMValue(exact), castValueToDataType(CIMValue(exact), CIMDataType::REAL64));
    EXPECT_EQ(arrayValue<Real64>({exact}),
              castValueToDataType(CIMValue(exact), arrayOf(CIMDataType::REAL64)));
    EXPECT_EQ(CIMValue(exact), castValueToDataType(arrayValue<Real64>({exact, 2}), CIMDataType::REAL64));
}

TEST(Cast, OfATextParsesIt) {
    const struct {
        const char* text;
        CIMValue expected;
    } examples[] = {
        {"7", CIMValue(UInt8(7))},      {"-7", CIMValue(Int8(-7))},
        {"7", CIMValue(UInt16(7))},     {"-7", CIMValue(Int16(-7))},
        {"7", CIMValue(UInt32(7))},     {"-1", CIMValue(UInt32(4294967295U))},
        {"", CIMValue(UInt32(0))},      {"-7", CIMValue(Int32(-7))},
        {"7", CIMValue(UInt64(7))},     {"-7", CIMValue(Int64(-7))},
        {"1.5", CIMValue(Real32(1.5))}, {"1.5", CIMValue(Real64(1.5))},
        {"FALSE", CIMValue(false)},     {"\xc3\xa9t\xc3\xa9", CIMValue(Char16(UInt16(0xE9)))},
    };
    for (const auto& [text, expected] : examples)
        EXPECT_EQ(expected, castValueToDataType(CIMValue(text), expected.getCIMDataType())) << text;
    EXPECT_EQ("00000001020304.500000:000",
              castValueToDataType(CIMValue("00000001020304.500000:000"), CIMDataType::DATETIME).toString());
    EXPECT_EQ("/root:Foo.A=\"1\"",
              castValueToDataType(CIMValue("Foo.A=1"), CIMDataType::REFERENCE).toString());
}

TEST(Cast, OfNumbersBooleansAndCharactersParsesTheirText) {
    EXPECT_EQ(CIMValue(UInt16(2)), castValueToDataType(CIMValue(Real64(2.0)), CIMDataType::UINT16));
    EXPECT_EQ(CIMValue(Real64(5)), castValueToDataType(CIMValue(UInt8(5)), CIMDataType::REAL64));
    EXPECT_EQ(CIMValue(UInt8(7)), castValueToDataType(CIMValue(Char16('7')), CIMDataType::UINT8));
    EXPECT_EQ(CIMValue(Char16('t')), castValueToDataType(CIMValue(true), CIMDataType::CHAR16));
}

TEST(Cast, ToAStringIsTheTextOfTheValue) {
    EXPECT_EQ(CIMValue("true"), castValueToDataType(CIMValue(true), CIMDataType::STRING));
    EXPECT_EQ(CIMValue("/:Q"), castValueToDataType(CIMValue(CIMObjectPath("Q")), CIMDataType::STRING));
    EXPECT_EQ(CIMValue("instance of Foo {\n}\n"),
              castValueToDataType(CIMValue(CIMInstance("Foo")), CIMDataType::STRING));
}

TEST(Cast, OfAnArrayOfDatesToOneKeepsTheFirst) {
    const CIMDateTime date(String("20050101123000.123456+060"));
    EXPECT_EQ(CIMValue(date),
              castValueToDataType(CIMValue(CIMDateTimeArray(1, date)), CIMDataType::DATETIME));
}

TEST(Cast, BetweenArraysAndSingleValues) {
    EXPECT_EQ(arrayValue<UInt16>({12}), castValueToDataType(CIMValue("12"), arrayOf(CIMDataType::UINT16)));
    EXPECT_EQ(CIMValue(UInt16(1)), castValueToDataType(arrayValue<String>({"1", "x"}), CIMDataType::UINT16));
    EXPECT_EQ(arrayValue<String>({"1", "2"}),
              castValueToDataType(arrayValue<UInt8>({1, 2}), arrayOf(CIMDataType::STRING)));
    EXPECT_EQ(CIMValue(UInt16Array()),
              castValueToDataType(CIMValue(StringArray()), arrayOf(CIMDataType::UINT16)));
    EXPECT_EQ("OutOfBoundsException: Array Index out of bounds. size = 0, index = 0",
              errorOf(CIMValue(StringArray()), CIMDataType::UINT16));
}

TEST(Cast, OfAMalformedTextFails) {
    EXPECT_EQ("CIMException: general error (Unable to convert \"abc\" into UInt32)",
              errorOf(CIMValue("abc"), CIMDataType::UINT32));
    EXPECT_EQ("CIMException: general error (Unable to convert \"maybe\" into bool)",
              errorOf(CIMValue("maybe"), CIMDataType::BOOLEAN));
    EXPECT_EQ("CIMException: general error (Unable to convert \"true\" into UInt16)",
              errorOf(CIMValue(true), CIMDataType::UINT16));
    EXPECT_EQ("CIMException: general error (Unable to convert \"x\" into UInt8)",
              errorOf(arrayValue<String>({"1", "x"}), arrayOf(CIMDataType::UINT8)));
    EXPECT_EQ("CIMDateTimeException: Invalid format for date time",
              errorOf(CIMValue("bad"), CIMDataType::DATETIME));
    EXPECT_EQ(
        "CIMException: invalid parameter passed to method (class name not found in instance name: nodot)",
        errorOf(CIMValue("nodot"), CIMDataType::REFERENCE));
}

TEST(Cast, OfAMalformedTextHasACause) {
    try {
        castValueToDataType(CIMValue("abc"), CIMDataType::UINT32);
        FAIL() << "no exception";
    } catch (const CIMException& e) {
        EXPECT_EQ(CIMException::FAILED, e.getErrNo());
        ASSERT_NE(nullptr, e.getSubException());
        EXPECT_STREQ("StringConversionException", e.getSubException()->type());
    }
}

TEST(Cast, BetweenOtherTypesIsRejected) {
    EXPECT_EQ("CIMException: general error (Failed to convert \"/:Q\" to uint16)",
              errorOf(CIMValue(CIMObjectPath("Q")), CIMDataType::UINT16));
    EXPECT_EQ("CIMException: general error (Failed to convert \"1\" to datetime)",
              errorOf(CIMValue(UInt8(1)), CIMDataType::DATETIME));
    EXPECT_EQ("CIMException: general error (Failed to convert \"/:Q\" to datetime)",
              errorOf(CIMValue(CIMObjectPath("Q")), CIMDataType::DATETIME));
    EXPECT_EQ("ValueCastException: Invalid to datatype: 17",
              errorOf(CIMValue("x"), CIMDataType::EMBEDDEDINSTANCE));
    EXPECT_EQ("ValueCastException: Invalid to datatype: 16",
              errorOf(CIMValue(UInt8(1)), CIMDataType::EMBEDDEDCLASS));
}

} // namespace
