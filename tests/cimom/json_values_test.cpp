#include "Failure.hpp"
#include "OW_CIMDateTime.hpp"
#include "OW_CIMObjectPath.hpp"
#include "site/JsonValues.hpp"

#include <gtest/gtest.h>

using namespace cimom;
using namespace OpenWBEM;

namespace {

using Type = CIMDataType;

const ClassDeclaration lamp{"QAV_Lamp",
                            {{"Colour", Type::STRING, Role::key},
                             {"Number", Type::UINT32, Role::key},
                             {"Room", Type::STRING, Role::site}}};
const ClassDeclaration wiring{
    "QAV_Wiring",
    {{"Switch", Type::STRING, Role::key}, {"Lamp", Type::REFERENCE, Role::key, false, "QAV_Lamp"}}};

const bool isArray = true;

/** The type of a property. */
struct Declared {
    Declared(Type::Type of, bool array = false)
        : property{"Property", of, Role::state, array, "QAV_Lamp"} {}
    PropertyDeclaration property;
};

CIMValue valueOf(const Declared& declared, const std::string& json) {
    return cimom::valueOf(json::parse(json), declared.property, ServedClasses({&lamp, &wiring}));
}

std::string text(const Declared& declared, const std::string& json) {
    return valueOf(declared, json).toString().c_str();
}

/** Why a value on the second line is rejected. */
std::string rejectionOf(const Declared& declared, const std::string& json) {
    try {
        valueOf(declared, "\n" + json);
        return "not rejected";
    } catch (const json::Error& e) {
        EXPECT_EQ(2u, e.line());
        return e.what();
    }
}

CIMObjectPath lampPath(const char* colour, UInt32 number) {
    CIMObjectPath path("QAV_Lamp", "root/cimv2");
    return path.setKeyValue("Colour", CIMValue(colour)).setKeyValue("Number", CIMValue(number));
}

} // namespace

TEST(JsonValues, NumbersCoverTheRangeOfTheirType) {
    EXPECT_EQ("255", text(Type::UINT8, "255"));
    EXPECT_EQ("-128", text(Type::SINT8, "-128"));
    EXPECT_EQ("65535", text(Type::UINT16, "65535"));
    EXPECT_EQ("-32768", text(Type::SINT16, "-32768"));
    EXPECT_EQ("4294967295", text(Type::UINT32, "4294967295"));
    EXPECT_EQ("-2147483648", text(Type::SINT32, "-2147483648"));
    EXPECT_EQ("18446744073709551615", text(Type::UINT64, "18446744073709551615"));
    EXPECT_EQ("-9223372036854775808", text(Type::SINT64, "-9223372036854775808"));
    EXPECT_EQ("0", text(Type::UINT64, "0"));
    EXPECT_EQ("0.5", text(Type::REAL32, "0.5"));
    EXPECT_EQ("-3e+300", text(Type::REAL64, "-3E300"));
    EXPECT_EQ("7", text(Type::REAL64, "7"));
}

TEST(JsonValues, OtherValuesAreReadAccordingToTheirType) {
    EXPECT_EQ("true", text(Type::BOOLEAN, "true"));
    EXPECT_EQ("false", text(Type::BOOLEAN, "false"));
    EXPECT_EQ(0x4E16, valueOf(Type::CHAR16, R"("\u4e16")").toChar16().getValue());
    EXPECT_EQ(0xFFFF, valueOf(Type::CHAR16, R"("\uffff")").toChar16().getValue());
    EXPECT_EQ("d\xc3\xbcne \"\\\n \xf0\x9f\x92\xa1",
              text(Type::STRING, R"("d\u00fcne \"\\\n \ud83d\udca1")"));
    EXPECT_EQ("", text(Type::STRING, "\"\""));
}

TEST(JsonValues, TimesAreReadInTheFormOfDSP0004) {
    for (const char* const time :
         {"20261121154500.123456+060", "20240229235960.000000-720", "20260101000000.000000+840",
          "20000229000000.000000+000", "20260430000000.000000+000", "20261231000000.000000+000",
          "99999999235959.999999:000", "00000000000000.000000:000"})
        EXPECT_EQ(time, text(Type::DATETIME, std::string("\"") + time + "\""));
}

TEST(JsonValues, AReferenceIsConvertedToItsCanonicalForm) {
    const CIMValue value = valueOf(Type::REFERENCE, R"("qav_lamp.NUMBER=7,colour=\"00:11\"")");
    EXPECT_EQ(Type::REFERENCE, value.getType());
    EXPECT_STREQ("/root/cimv2:QAV_Lamp.Colour=\"00:11\",Number=\"7\"",
                 value.toCIMObjectPath().toString().c_str());
    EXPECT_EQ(
        lampPath("red", 7),
        valueOf(Type::REFERENCE, R"("/root/cimv2:QAV_Lamp.Colour=\"red\",Number=7")").toCIMObjectPath());
    EXPECT_EQ(lampPath("red", 7),
              valueOf(Type::REFERENCE, R"("root/cimv2:QAV_Lamp.Colour=\"red\",Number=7,Room=\"x\"")")
                  .toCIMObjectPath());
}

TEST(JsonValues, ArraysHoldValuesOfTheirType) {
    EXPECT_EQ("a,b", text({Type::STRING, isArray}, R"(["a", "b"])"));
    const CIMValue numbers = valueOf({Type::UINT16, isArray}, "[1, 65535]");
    EXPECT_TRUE(numbers.isArray());
    EXPECT_EQ(Type::UINT16, numbers.getType());
    EXPECT_EQ("1,65535", text({Type::UINT16, isArray}, "[1, 65535]"));
    EXPECT_EQ(2u, valueOf({Type::BOOLEAN, isArray}, "[true, false]").getArraySize());
    EXPECT_EQ(1u, valueOf({Type::DATETIME, isArray}, R"(["20261121154500.123456+060"])").getArraySize());
    EXPECT_EQ(0u, valueOf({Type::UINT16, isArray}, "[]").getArraySize());
    EXPECT_FALSE(valueOf({Type::UINT16, isArray}, "null"));
}

TEST(JsonValues, AnIntegerOutOfRangeIsRejected) {
    EXPECT_EQ("expected an integer from 0 to 255 (uint8)", rejectionOf(Type::UINT8, "256"));
    EXPECT_EQ("expected an integer from -128 to 127 (sint8)", rejectionOf(Type::SINT8, "128"));
    EXPECT_EQ("expected an integer from 0 to 65535 (uint16)", rejectionOf(Type::UINT16, "-1"));
    EXPECT_EQ("expected an integer from -32768 to 32767 (sint16)", rejectionOf(Type::SINT16, "1.0"));
    EXPECT_EQ("expected an integer from 0 to 4294967295 (uint32)", rejectionOf(Type::UINT32, "1e3"));
    EXPECT_EQ("expected an integer from -2147483648 to 2147483647 (sint32)",
              rejectionOf(Type::SINT32, "\"5\""));
    EXPECT_EQ("expected an integer from 0 to 18446744073709551615 (uint64)",
              rejectionOf(Type::UINT64, "18446744073709551616"));
    EXPECT_EQ("expected an integer from -9223372036854775808 to 9223372036854775807 (sint64)",
              rejectionOf(Type::SINT64, "true"));
}

TEST(JsonValues, ARealOutOfRangeIsRejected) {
    EXPECT_EQ("expected a number in the range of real32", rejectionOf(Type::REAL32, "1e39"));
    EXPECT_EQ("expected a number in the range of real32", rejectionOf(Type::REAL32, "\"1\""));
    EXPECT_EQ("expected a number in the range of real64", rejectionOf(Type::REAL64, "[1]"));
}

TEST(JsonValues, AValueOfAnotherKindIsRejected) {
    EXPECT_EQ("expected a string", rejectionOf(Type::STRING, "5"));
    EXPECT_EQ("expected a string without U+0000", rejectionOf(Type::STRING, R"("a\u0000b")"));
    EXPECT_EQ("expected true or false (boolean)", rejectionOf(Type::BOOLEAN, "1"));
    EXPECT_EQ("expected true or false (boolean)", rejectionOf(Type::BOOLEAN, "\"true\""));
    const std::string letter = "expected a string of one character up to U+FFFF (char16)";
    EXPECT_EQ(letter, rejectionOf(Type::CHAR16, "\"\""));
    EXPECT_EQ(letter, rejectionOf(Type::CHAR16, "\"ab\""));
    EXPECT_EQ(letter, rejectionOf(Type::CHAR16, R"("\ud83d\udca1")"));
    EXPECT_EQ(letter, rejectionOf(Type::CHAR16, "65"));
    EXPECT_EQ("expected null (values of this type are not supported)",
              rejectionOf(Type::EMBEDDEDINSTANCE, "{}"));
}

TEST(JsonValues, AnArrayIsNotASingleValue) {
    EXPECT_EQ("expected an array", rejectionOf({Type::UINT16, isArray}, "1"));
    EXPECT_EQ("expected an integer from 0 to 65535 (uint16)", rejectionOf(Type::UINT16, "[1]"));
    EXPECT_EQ("expected an integer from 0 to 65535 (uint16)", rejectionOf({Type::UINT16, isArray}, "[null]"));
    EXPECT_EQ("expected a string", rejectionOf({Type::STRING, isArray}, "[[\"a\"]]"));
}

TEST(JsonValues, AnImpossibleTimeIsRejected) {
    const std::string expected = "expected a date yyyymmddhhmmss.mmmmmm+uuu or an interval "
                                 "ddddddddhhmmss.mmmmmm:000 (datetime)";
    for (const char* const time : {"",
                                   "2026-11-21",
                                   "20261121154500.123456+06",
                                   "20261121154500.123456+0600",
                                   "20261121154500.123456+060 ",
                                   "20261121154500,123456+060",
                                   "2026112115****.******+060",
                                   "20261321154500.123456+060",
                                   "20260021154500.123456+060",
                                   "20260431154500.123456+060",
                                   "20260229154500.123456+060",
                                   "19000229154500.123456+060",
                                   "20261100154500.123456+060",
                                   "20261121244500.123456+060",
                                   "20261121156000.123456+060",
                                   "20261131154500.123456+060",
                                   "20260631154500.123456+060",
                                   "20260931154500.123456+060",
                                   "20261121154561.123456+060",
                                   "20261121154500.123456+841",
                                   "20261121154500.123456-841",
                                   "00000001240000.000000:000",
                                   "00000001000060.000000:000",
                                   "00000001000000.000000:001"})
        EXPECT_EQ(expected, rejectionOf(Type::DATETIME, std::string("\"") + time + "\"")) << time;
    EXPECT_EQ(expected, rejectionOf(Type::DATETIME, "20261121154500"));
}

TEST(JsonValues, AReferenceToAnImpossibleInstanceIsRejected) {
    const std::string expected = "expected an object path, <class>.<key>=\"<value>\",... (reference)";
    EXPECT_EQ("expected a reference to a served class, not to QAV_Table",
              rejectionOf(Type::REFERENCE, R"("QAV_Table.Colour=\"red\"")"));
    EXPECT_EQ(expected, rejectionOf(Type::REFERENCE, "7"));
    EXPECT_EQ(0u, rejectionOf(Type::REFERENCE, R"("")").find(expected + ": "));
    EXPECT_EQ(0u, rejectionOf(Type::REFERENCE, R"("red")").find(expected + ": "));
    EXPECT_EQ(0u, rejectionOf(Type::REFERENCE, R"("QAV_Lamp.Colour=\"red\"")").find(expected + ": "));
    EXPECT_EQ(
        0u, rejectionOf(Type::REFERENCE, R"("QAV_Lamp.Colour=\"red\",Number=\"x\"")").find(expected + ": "));
    EXPECT_EQ(
        0u, rejectionOf(Type::REFERENCE, R"("QAV_Wiring.Switch=\"s\",Lamp=\"red\"")").find(expected + ": "));
}

TEST(ServedClasses, AnInvalidPathReportsWhyItIsInvalid) {
    const ServedClasses classes({&lamp, &wiring});
    const auto errorOf = [&](const CIMObjectPath& path) {
        return cimErrorOf([&] { classes.canonical(path); }).substr(0, 2);
    };
    CIMObjectPath path("QAV_Table");
    EXPECT_EQ("5 ", errorOf(path)) << "invalid class";
    path = CIMObjectPath("QAV_Wiring");
    path.setKeyValue("Switch", CIMValue("s"));
    EXPECT_EQ("4 ", errorOf(path)) << "invalid parameter";
    path.setKeyValue("Lamp", CIMValue(CIMNULL));
    EXPECT_EQ("4 ", errorOf(path));
    path = CIMObjectPath("QAV_Wiring");
    path.setKeyValue("Switch", CIMValue("s")).setKeyValue("Lamp", CIMValue(true));
    EXPECT_EQ("13", errorOf(path)) << "type mismatch";
}
