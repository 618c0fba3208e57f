#include "Instances.hpp" // first: it includes what OW_Array.hpp needs before it

#include "OW_Array.hpp"
#include "OW_Bool.hpp"
#include "OW_CIMDataType.hpp"
#include "OW_CIMDateTime.hpp"
#include "OW_CIMFwd.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMNULL.hpp"
#include "OW_CIMObjectPath.hpp"
#include "OW_CIMProperty.hpp"
#include "OW_CIMValue.hpp"
#include "OW_Char16.hpp"
#include "OW_Exception.hpp"
#include "OW_String.hpp"
#include "OW_Types.hpp"

#include "owb.h"

#include "TestQueue.hpp"
#include "support/FakeLocale.hpp"

#include <gtest/gtest.h>
#include <string>
#include <strings.h>

namespace {

using namespace OpenWBEM;

Items itemsOf(long group, std::initializer_list<CIMProperty> properties) {
    TestQueue q;
    CIMInstance instance = instanceOf(properties);
    EXPECT_EQ(0, OWB_getInstanceData(group, instance, 7, q.head()));
    EXPECT_TRUE(q.isConsistent());
    return q.items();
}

TEST(InstanceData, AnInstanceWithoutPropertiesGivesNoItem) {
    EXPECT_EQ(Items{}, itemsOf(0, {}));
}

TEST(InstanceData, AScalarGivesOneItemWithArrayIndex0) {
    EXPECT_EQ(Items{"0/1/7/0=K70"}, itemsOf(0, {CIMProperty("Model", CIMValue("K70"))}));
}

TEST(InstanceData, AScalarOfEveryTypeGivesItsClientLibraryText) {
    EXPECT_EQ(Items{"0/1/7/0=255"}, itemsOf(0, {CIMProperty("Model", CIMValue(UInt8(255)))}));
    EXPECT_EQ(Items{"0/1/7/0=-128"}, itemsOf(0, {CIMProperty("Model", CIMValue(Int8(-128)))}));
    EXPECT_EQ(Items{"0/1/7/0=65535"}, itemsOf(0, {CIMProperty("Model", CIMValue(UInt16(65535)))}));
    EXPECT_EQ(Items{"0/1/7/0=-32768"}, itemsOf(0, {CIMProperty("Model", CIMValue(Int16(-32768)))}));
    EXPECT_EQ(Items{"0/1/7/0=4294967295"}, itemsOf(0, {CIMProperty("Model", CIMValue(UInt32(4294967295U)))}));
    EXPECT_EQ(Items{"0/1/7/0=-1"}, itemsOf(0, {CIMProperty("Model", CIMValue(Int32(-1)))}));
    EXPECT_EQ(Items{"0/1/7/0=18446744073709551615"},
              itemsOf(0, {CIMProperty("Model", CIMValue(~UInt64(0)))}));
    EXPECT_EQ(Items{"0/1/7/0=-1"}, itemsOf(0, {CIMProperty("Model", CIMValue(Int64(-1)))}));
    EXPECT_EQ(Items{"0/1/7/0=true"}, itemsOf(0, {CIMProperty("Model", CIMValue(Bool(true)))}));
    EXPECT_EQ(Items{"0/1/7/0=0.1"}, itemsOf(0, {CIMProperty("Model", CIMValue(Real32(0.1F)))}));
    EXPECT_EQ(Items{"0/1/7/0=1e+06"}, itemsOf(0, {CIMProperty("Model", CIMValue(Real64(1e6)))}));
    EXPECT_EQ(Items{"0/1/7/0=A"}, itemsOf(0, {CIMProperty("Model", CIMValue(Char16(0x41)))}));
    EXPECT_EQ(Items{"0/1/7/0=/:Other"}, itemsOf(0, {CIMProperty("Model", CIMValue(CIMObjectPath("Other")))}));
    EXPECT_EQ(Items{"0/1/7/0=instance of E {\n}\n"},
              itemsOf(0, {CIMProperty("Model", CIMValue(CIMInstance("E")))}));
}

TEST(InstanceData, ADateKeepsItsCimText) {
    const CIMDateTime date(String("20051128153917.123456+060"));
    EXPECT_EQ(Items{"4/0/7/0=20051128153917.123456+060"},
              itemsOf(4, {CIMProperty("LastBootUpTime", CIMValue(date))}));
}

TEST(InstanceData, AnEmptyTextGivesAnItem) {
    EXPECT_EQ(Items{"0/1/7/0="}, itemsOf(0, {CIMProperty("Model", CIMValue(""))}));
}

TEST(InstanceData, NamesMatchInAnyCase) {
    EXPECT_EQ(Items{"0/10/7/0=s"}, itemsOf(0, {CIMProperty("serialnumber", CIMValue("s"))}));
}

TEST(InstanceData, EveryRowOfTheTableIsFoundInAnyCase) {
    for (const ExtItem* row = ExtItemList; row->group >= 0; ++row) {
        std::string lower = row->property;
        std::string upper = row->property;
        for (std::size_t i = 0; i < lower.size(); ++i) {
            lower[i] = static_cast<char>(std::tolower(lower[i]));
            upper[i] = static_cast<char>(std::toupper(upper[i]));
        }
        const Items expected{std::to_string(row->group) + "/" + std::to_string(row->nom) + "/7/0=v"};
        EXPECT_EQ(expected, itemsOf(row->group, {CIMProperty(lower.c_str(), CIMValue("v"))})) << lower;
        EXPECT_EQ(expected, itemsOf(row->group, {CIMProperty(upper.c_str(), CIMValue("v"))})) << upper;
    }
}

TEST(InstanceData, NamesMatchLikeStrcasecmpInTheLocaleOfTheAgent) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer's strcasecmp() knows no locale";
#endif
    if (!support::runInFakeLocale("tr_TR", "UTF-8", [] {
            const std::string name = "SerialNumber";
            ASSERT_NE(0, ::strcasecmp(name.c_str(), "SERIALNUMBER")) << "i is no I in lower case";
            EXPECT_EQ((Items{"0/10/7/0=s"}), itemsOf(0, {CIMProperty("SERIALNUMBER", CIMValue("no")),
                                                         CIMProperty("SerialNUMBER", CIMValue("s"))}));
        }))
        GTEST_SKIP() << "no sources of locales";
}

TEST(InstanceData, AGroupWithoutRowsGivesNothing) {
    for (const long group : {-2L, -1L, 31L, 1000L})
        EXPECT_EQ(Items{},
                  itemsOf(group, {CIMProperty("", CIMValue("v")), CIMProperty("Model", CIMValue("v"))}))
            << group;
}

TEST(InstanceData, OnlyTheRowsOfTheGroupAreUsed) {
    EXPECT_EQ(Items{}, itemsOf(17, {CIMProperty("NumberOfUsers", CIMValue(UInt32(3)))}))
        << "a row of group 4";
    EXPECT_EQ(Items{"26/7/7/0=v"}, itemsOf(26, {CIMProperty("Version", CIMValue("v"))}))
        << "also a row of group 0";
}

TEST(InstanceData, APseudoNameIsMatchedLikeAnyOther) {
    EXPECT_EQ(Items{"0/0/7/0=5"}, itemsOf(0, {CIMProperty("_INDEX", CIMValue(UInt16(5)))}));
}

TEST(InstanceData, ItemsAreInTheOrderOfTheProperties) {
    EXPECT_EQ((Items{"0/12/7/0=p", "0/1/7/0=m", "0/6/7/0=e"}),
              itemsOf(0, {CIMProperty("PartNumber", CIMValue("p")), CIMProperty("Unknown", CIMValue("u")),
                          CIMProperty("Model", CIMValue("m")), CIMProperty("ElementName", CIMValue("e"))}));
}

TEST(InstanceData, AStringArrayGivesAnItemForEachElement) {
    EXPECT_EQ(
        (Items{"0/13/7/0=one", "0/13/7/1=", "0/13/7/2=%s"}),
        itemsOf(0, {CIMProperty("OtherIdentifyingInfo", CIMValue(arrayOf<String>({"one", "", "%s"})))}));
}

TEST(InstanceData, AUint16ArrayGivesAnItemForEachElement) {
    EXPECT_EQ((Items{"18/0/7/0=0", "18/0/7/1=1", "18/0/7/2=65535"}),
              itemsOf(18, {CIMProperty("Capabilities", CIMValue(arrayOf<UInt16>({0, 1, 65535})))}));
}

TEST(InstanceData, AUint64ArrayGivesAnItemForEachElement) {
    EXPECT_EQ((Items{"18/0/7/0=0", "18/0/7/1=18446744073709551615"}),
              itemsOf(18, {CIMProperty("Capabilities", CIMValue(arrayOf<UInt64>({0, ~UInt64(0)})))}));
}

TEST(InstanceData, AnEmptyArrayGivesNothing) {
    EXPECT_EQ(Items{}, itemsOf(18, {CIMProperty("Capabilities", CIMValue(UInt16Array())),
                                    CIMProperty("StorageType", CIMValue(StringArray()))}));
}

TEST(InstanceData, ArraysOfOtherTypesGiveNothing) {
    const CIMValue others[] = {
        CIMValue(arrayOf<UInt8>({1})),    CIMValue(arrayOf<Int8>({1})),   CIMValue(arrayOf<Int16>({1})),
        CIMValue(arrayOf<UInt32>({1})),   CIMValue(arrayOf<Int32>({1})),  CIMValue(arrayOf<Int64>({1})),
        CIMValue(arrayOf<Bool>({true})),  CIMValue(arrayOf<Real32>({1})), CIMValue(arrayOf<Real64>({1})),
        CIMValue(arrayOf<Char16>({'a'})), CIMValue(CIMDateTimeArray(1)),  CIMValue(CIMObjectPathArray(1)),
        CIMValue(CIMInstanceArray(1)),
    };
    for (const CIMValue& other : others)
        EXPECT_EQ(Items{}, itemsOf(18, {CIMProperty("Capabilities", other)})) << other.getType();
}

TEST(InstanceData, ANullValueGivesNoItemEvenOfAnArray) {
    EXPECT_EQ(Items{}, itemsOf(18, {CIMProperty("StorageType", CIMDataType(CIMDataType::UINT16)),
                                    CIMProperty("Capabilities", CIMDataType(CIMDataType::UINT16, -1))}));
}

TEST(InstanceData, ANullQueueDoesNotChangeTheResult) {
    CIMInstance instance = instanceOf({CIMProperty("Model", CIMValue("m"))});
    EXPECT_EQ(0, OWB_getInstanceData(0, instance, 0, nullptr));
}

TEST(InstanceData, ANullInstanceThrows) {
    CIMInstance instance(CIMNULL);
    TestQueue q;
    EXPECT_THROW(OWB_getInstanceData(0, instance, 0, q.head()), OpenWBEM::Exception);
}

} // namespace
