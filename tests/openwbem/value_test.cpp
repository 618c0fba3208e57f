#include "OW_Bool.hpp"
#include "OW_CIMClass.hpp"
#include "OW_CIMDateTime.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMObjectPath.hpp"
#include "OW_CIMProperty.hpp"
#include "OW_CIMValue.hpp"
#include "OW_CIMValueCast.hpp"
#include "OW_Char16.hpp"
#include "OW_Enumeration.hpp"

#include "Failure.hpp"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <string>

namespace {

using namespace OpenWBEM;

template <class T>
std::string textOf(const T& content) {
    const String text = CIMValue(content).toString();
    return std::string(text.c_str(), text.length());
}

template <class T>
Array<T> arrayOf(std::initializer_list<T> elements) {
    return Array<T>(elements.begin(), elements.end());
}

TEST(ValueText, OfBooleansAndIntegersIsDecimal) {
    EXPECT_EQ("true", textOf(Bool(true)));
    EXPECT_EQ("false", textOf(false));
    EXPECT_EQ("255", textOf(UInt8(255)));
    EXPECT_EQ("-128", textOf(Int8(-128)));
    EXPECT_EQ("4294967295", textOf(std::numeric_limits<UInt32>::max()));
    EXPECT_EQ("18446744073709551615", textOf(std::numeric_limits<UInt64>::max()));
    EXPECT_EQ("-9223372036854775808", textOf(std::numeric_limits<Int64>::min()));
}

TEST(ValueText, OfRealsHasSixSignificantDigits) {
    const std::pair<Real64, const char*> expected[] = {
        {-0.0, "-0"},
        {1.5, "1.5"},
        {0.1, "0.1"},
        {3.14159265358979, "3.14159"},
        {1e6, "1e+06"},
        {123456789, "1.23457e+08"},
        {1e15, "1e+15"},
        {1e17, "1e+17"},
        {1.0000000000000001e-05, "1e-05"},
        {std::numeric_limits<Real64>::max(), "1.79769e+308"},
        {1.0 / 3, "0.333333"},
        {std::numeric_limits<Real64>::infinity(), "inf"},
        {-std::numeric_limits<Real64>::infinity(), "-inf"},
        {std::nan(""), "nan"},
        {std::copysign(std::nan(""), -1), "-nan"},
    };
    for (const auto& [value, text] : expected)
        EXPECT_EQ(text, textOf(value));
    EXPECT_EQ("0.1", textOf(0.1F));
    EXPECT_EQ("1.67772e+07", textOf(16777216.0F));
    EXPECT_EQ("123457", textOf(123456.789F));
    EXPECT_EQ("3.40282e+38", textOf(std::numeric_limits<Real32>::max()));
}

TEST(ValueText, OfASingleChar16IsItsLowByte) {
    EXPECT_EQ("A", textOf(Char16('A')));
    EXPECT_EQ("", textOf(Char16(0)));
    EXPECT_EQ("\xe9", textOf(Char16(0xE9)));
    EXPECT_EQ("\xac", textOf(Char16(0x20AC)));
    EXPECT_EQ("", textOf(Char16(0x100)));
}

TEST(ValueText, OfStringsIsUnchanged) {
    EXPECT_EQ("a\"b\\c\nd,e", textOf(String("a\"b\\c\nd,e")));
    EXPECT_EQ("", textOf(static_cast<const char*>(nullptr)));
}

TEST(ValueText, OfANullValueIsNullInParentheses) {
    EXPECT_EQ("(null)", std::string(CIMValue(CIMNULL).toString().c_str()));
}

TEST(ValueText, OfArraysSeparatesElementsWithCommas) {
    EXPECT_EQ("true,false", textOf(arrayOf<Bool>({true, false})));
    EXPECT_EQ("0,65,255", textOf(arrayOf<UInt8>({0, 65, 255})));
    EXPECT_EQ("-1,65", textOf(arrayOf<Int8>({-1, 65})));
    EXPECT_EQ("1,65535", textOf(arrayOf<UInt16>({1, 65535})));
    EXPECT_EQ("1,18446744073709551615", textOf(arrayOf<UInt64>({1, ~UInt64(0)})));
    EXPECT_EQ("0.1,1e+20", textOf(arrayOf<Real64>({0.1, 1e20})));
    EXPECT_EQ("A,\xc3\xa9,\xe2\x82\xac", textOf(arrayOf<Char16>({'A', 0xE9, 0x20AC})));
    EXPECT_EQ("a,b,,c\"d", textOf(arrayOf<String>({"a,b", "", "c\"d"})));
    EXPECT_EQ("", textOf(StringArray()));
    EXPECT_EQ("00000000000000.000000:000,00000000000001.000000:000",
              textOf(arrayOf<CIMDateTime>({CIMDateTime(), CIMDateTime(UInt64(1000000))})));
}

TEST(ValueText, OfAPathQuotesEveryKey) {
    CIMPropertyArray keys;
    keys.push_back(CIMProperty("Name", CIMValue("a\"b")));
    keys.push_back(CIMProperty("Id", CIMValue(UInt32(5))));
    CIMObjectPath path("Foo", keys);
    path.setNameSpace("/root/cimv2");
    EXPECT_EQ("/root/cimv2:Foo.Name=\"a\\\"b\",Id=\"5\"", textOf(path));
    EXPECT_EQ("/root:Foo", textOf(CIMObjectPath("Foo", String("root"))));
    EXPECT_EQ("/:", textOf(CIMObjectPath()));
    path.setHost("myhost");
    EXPECT_EQ("http://myhost/root/cimv2:Foo.Name=\"a\\\"b\",Id=\"5\"", textOf(path));
}

TEST(ValueText, OfAnEmbeddedInstanceListsItsProperties) {
    CIMInstance instance("Foo");
    instance.setProperty(CIMProperty("A", CIMValue("x")));
    instance.setProperty(CIMProperty("B"));
    instance.setProperty(CIMProperty("C", CIMValue(arrayOf<UInt16>({7, 7}))));
    EXPECT_EQ("instance of Foo {\nA = x;\nB = null;\nC = 7,7;\n}\n", textOf(instance));
}

TEST(Value, HasATypeAndArrayness) {
    EXPECT_EQ(CIMDataType::UINT16, CIMValue(UInt16(1)).getType());
    EXPECT_FALSE(CIMValue(UInt16(1)).isArray());
    EXPECT_EQ(1U, CIMValue(UInt16(1)).getArraySize());
    const CIMValue array(arrayOf<Int64>({1, 2, 3}));
    EXPECT_EQ(CIMDataType::SINT64, array.getType());
    EXPECT_TRUE(array.isArray());
    EXPECT_EQ(3U, array.getArraySize());
    EXPECT_TRUE(array.getCIMDataType().isArrayType());
}

TEST(Value, GetReturnsContentOfTheSameType) {
    UInt16Array elements;
    CIMValue(arrayOf<UInt16>({1, 2})).get(elements);
    EXPECT_EQ(arrayOf<UInt16>({1, 2}), elements);
    String text;
    CIMValue("x").get(text);
    EXPECT_EQ("x", text);
}

template <class T>
std::string messageOfGet(const CIMValue& value) {
    T out;
    try {
        value.get(out);
    } catch (const ValueCastException& e) {
        EXPECT_STREQ("ValueCastException", e.type());
        return e.getMessage();
    }
    return "no exception";
}

TEST(Value, GetOfAnotherTypeThrows) {
    const std::string start = "CIMValue::CIMValueImpl::get - Value is not a ";
    EXPECT_EQ(start + "UINT16", messageOfGet<UInt16>(CIMValue(UInt32(1))));
    EXPECT_EQ(start + "STRING", messageOfGet<String>(CIMValue(UInt32(1))));
    EXPECT_EQ(start + "UINT16 ARRAY", messageOfGet<UInt16Array>(CIMValue(UInt16(1))));
    EXPECT_EQ(start + "OBJECTPATH ARRAY", messageOfGet<CIMObjectPathArray>(CIMValue(UInt16(1))));
    EXPECT_EQ(start + "BOOLEAN", messageOfGet<Bool>(CIMValue(Int64(1))));
}

TEST(Value, ASingleSint64ConvertsToEveryNumericTypeTruncated) {
    UInt16 number = 0;
    CIMValue(Int64(70000)).get(number);
    EXPECT_EQ(4464, number);
}

template <class Call>
void expectNullReference(Call call) {
    try {
        call();
        FAIL() << "no exception";
    } catch (const OpenWBEM::Exception& e) {
        EXPECT_STREQ("NULLCOWIntrusiveReferenceException", e.type());
        EXPECT_STREQ("NULL COWReference dereferenced", e.getMessage());
        EXPECT_EQ(47, e.getSubClassId());
        EXPECT_EQ(-1, e.getErrorCode());
    }
}

TEST(ValueMOF, QuotesAndEscapesStringsAndEnclosesArraysInBraces) {
    StringArray texts;
    texts.push_back("a,b");
    texts.push_back("");
    texts.push_back("c\"d");
    EXPECT_EQ("{\"a,b\",\"\",\"c\\\"d\"}", CIMValue(texts).toMOF());
    EXPECT_EQ("{}", CIMValue(StringArray()).toMOF());
    EXPECT_EQ("12", CIMValue(UInt16(12)).toMOF());
    EXPECT_EQ("\"00000000000001.000000:000\"", CIMValue(CIMDateTime(UInt64(1000000))).toMOF());
    EXPECT_EQ(
        "/root:Foo.a=\\\"1\\\"",
        CIMValue(
            CIMObjectPath("Foo", CIMPropertyArray(1, CIMProperty("a", CIMValue("1")))).setNameSpace("root"))
            .toMOF());
    CIMInstance instance("Foo");
    instance.setProperty("a", CIMValue("1")).setProperty("b", CIMValue(CIMNULL));
    EXPECT_EQ("instance of Foo\n{\n    a = \"1\";\n};\n", instance.toMOF());
}

TEST(Value, ReturnsItsContentByValue) {
    EXPECT_TRUE(CIMValue(true).toBool());
    EXPECT_EQ(5U, CIMValue(UInt16(5)).toUInt16());
    EXPECT_EQ(5U, CIMValue(Int64(5)).toUInt8());
    EXPECT_EQ(2U, CIMValue(UInt8Array(2)).toUInt8Array().size());
    EXPECT_EQ("Foo", CIMValue(CIMClass("Foo")).toCIMClass().getName());
    EXPECT_EQ("ValueCastException: CIMValue::CIMValueImpl::get - Value is not a EMBEDDEDCLASS ARRAY",
              failureOf([] { CIMValue(CIMClass("Foo")).toCIMClassArray(); }));
}

TEST(Value, IsParsedFromATextByTheNameOfItsType) {
    EXPECT_TRUE(CIMValue::createSimpleValue("Uint16", "12") == CIMValue(UInt16(12)));
    EXPECT_TRUE(CIMValue::createSimpleValue("string", "x") == CIMValue("x"));
    EXPECT_FALSE(CIMValue::createSimpleValue("nothing", "12"));
}

TEST(Value, ComparesTypeArraynessAndContent) {
    EXPECT_TRUE(CIMValue(UInt16(1)) == CIMValue(UInt16(1)));
    EXPECT_TRUE(CIMValue(UInt16(1)) != CIMValue(UInt16(2)));
    EXPECT_TRUE(CIMValue(UInt16(1)) != CIMValue(UInt32(1)));
    EXPECT_TRUE(CIMValue(UInt16(1)) != CIMValue(UInt16Array(1, UInt16(1))));
    EXPECT_TRUE(CIMValue(CIMNULL) == CIMValue(CIMNULL));
    EXPECT_TRUE(CIMValue(CIMNULL) != CIMValue(""));
    EXPECT_TRUE(CIMValue(CIMInstance("Foo")) == CIMValue(CIMInstance("Foo")));
    EXPECT_TRUE(CIMValue(UInt16(1)) < CIMValue(UInt32(0)));
    EXPECT_TRUE(CIMValue("a") < CIMValue("b"));
    EXPECT_TRUE(CIMValue(CIMNULL) < CIMValue("a"));
}

TEST(Value, SurvivesCopyMoveAndSelfAssignment) {
    CIMValue text("some text that is longer than most");
    CIMValue number(UInt64(7));
    CIMValue array(StringArray(3, String("x")));
    CIMValue moved(std::move(text));
    EXPECT_FALSE(text);
    text = array;
    array = number;
    number = moved;
    CIMValue& same = moved;
    moved = same;
    moved = std::move(same);
    EXPECT_EQ("x,x,x", text.toString());
    EXPECT_EQ("7", array.toString());
    EXPECT_EQ("some text that is longer than most", number.toString());
    EXPECT_EQ("some text that is longer than most", moved.toString());
    moved.setNull();
    EXPECT_FALSE(moved);
}

TEST(Value, ReportsWhetherItIsANumber) {
    EXPECT_TRUE(CIMValue(UInt8(1)).isNumericType());
    EXPECT_TRUE(CIMValue(Real64(1)).isNumericType());
    EXPECT_FALSE(CIMValue("1").isNumericType());
    EXPECT_FALSE(CIMValue(Bool(true)).isNumericType());
}

TEST(DataType, HasANameAndIsParsedFromIt) {
    const std::pair<CIMDataType::Type, const char*> names[] = {
        {CIMDataType::UINT8, "uint8"},   {CIMDataType::SINT64, "sint64"},
        {CIMDataType::STRING, "string"}, {CIMDataType::BOOLEAN, "boolean"},
        {CIMDataType::REAL32, "real32"}, {CIMDataType::DATETIME, "datetime"},
        {CIMDataType::CHAR16, "char16"}, {CIMDataType::REFERENCE, "REF"},
    };
    for (const auto& [type, name] : names) {
        EXPECT_EQ(name, CIMDataType(type).toString());
        EXPECT_EQ(name, CIMDataType(type).toMOF());
        EXPECT_EQ(type, CIMDataType::strToSimpleType(name));
    }
    EXPECT_EQ("string", CIMDataType(CIMDataType::EMBEDDEDINSTANCE).toString());
    EXPECT_EQ("** INVALID DATA TYPE IN CIMDATATYPE - toString **", CIMDataType().toString());
    EXPECT_EQ(CIMDataType::UINT8, CIMDataType::strToSimpleType("UINT8"));
    EXPECT_EQ(CIMDataType::INVALID, CIMDataType::strToSimpleType("uint"));
}

TEST(DataType, BecomesAnArrayTypeAndSyncsWithAValue) {
    CIMDataType type(CIMDataType::UINT8);
    EXPECT_TRUE(type.setToArrayType(4));
    EXPECT_EQ("[4]", type.getArrayMOF());
    EXPECT_TRUE(type.setToArrayType(0));
    EXPECT_EQ("[]", type.getArrayMOF());
    EXPECT_FALSE(CIMDataType().setToArrayType(4));
    EXPECT_FALSE(type.syncWithValue(CIMValue(CIMNULL)));
    EXPECT_TRUE(type.syncWithValue(CIMValue("x")));
    EXPECT_TRUE(type == CIMDataType(CIMDataType::STRING));
    EXPECT_TRUE(type != CIMDataType(CIMDataType::STRING, 4));
    EXPECT_TRUE(CIMDataType(CIMDataType::STRING, 3).equals(CIMDataType(CIMDataType::STRING, 4)));
}

TEST(NullHandle, ThrowsOnAccessToItsData) {
    expectNullReference([] { CIMValue(CIMNULL).getType(); });
    expectNullReference([] { CIMValue(CIMNULL).isArray(); });
    expectNullReference([] { CIMProperty(CIMNULL).getName(); });
    expectNullReference([] { CIMInstance(CIMNULL).getProperties(); });
    expectNullReference([] { CIMObjectPath(CIMNULL).toString(); });
    expectNullReference([] { CIMDateTime(CIMNULL).toString(); });
    expectNullReference([] { CIMProperty("x", CIMValue(CIMNULL)); });
    expectNullReference([] { CIMProperty(CIMNULL).setName("x"); });
}

TEST(NullHandle, ItsExceptionIsClonedAsItsOwnClass) {
    try {
        CIMProperty(CIMNULL).getName();
        FAIL() << "no exception";
    } catch (const OpenWBEM::Exception& e) {
        const std::unique_ptr<OpenWBEM::Exception> copy(e.clone());
        EXPECT_STREQ("NULLCOWIntrusiveReferenceException", copy->type());
        EXPECT_STREQ(e.getMessage(), copy->getMessage());
    }
}

/** Sets a non-null handle to null. */
template <class Object>
void expectToBecomeNull(Object object) {
    EXPECT_TRUE(object);
    object.setNull();
    EXPECT_FALSE(object);
}

TEST(NullHandle, IsTheResultOfSetNull) {
    expectToBecomeNull(CIMProperty("x"));
    expectToBecomeNull(CIMInstance("Foo"));
    expectToBecomeNull(CIMClass("Foo"));
    expectToBecomeNull(CIMObjectPath("Foo"));
    expectToBecomeNull(CIMDataType(CIMDataType::UINT8));
    EXPECT_FALSE(CIMDataType(CIMNULL));
}

TEST(NullHandle, DiffersFromAnEmptyHandle) {
    EXPECT_TRUE(CIMInstance());
    EXPECT_FALSE(CIMInstance(CIMNULL));
    EXPECT_TRUE(CIMInstance(CIMNULL) == NULL);
    EXPECT_TRUE(!CIMProperty(CIMNULL));
    EXPECT_TRUE(CIMProperty());
}

} // namespace
