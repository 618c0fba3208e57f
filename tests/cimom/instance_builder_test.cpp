#include "HostTree.hpp"
#include "schema/InstanceBuilder.hpp"

#include <gtest/gtest.h>
#include <stdexcept>

using namespace cimom;
using namespace OpenWBEM;

namespace {

const ClassDeclaration lamp{"QAV_Lamp",
                            {{"Name", CIMDataType::STRING, Role::key},
                             {"Watts", CIMDataType::UINT16},
                             {"Colours", CIMDataType::STRING, Role::state, true}}};

} // namespace

TEST(InstanceBuilder, DeclaredPropertiesAreNullUntilTheyAreSet) {
    const CIMInstance instance = InstanceBuilder(lamp).build();
    EXPECT_EQ("QAV_Lamp", instance.getClassName());
    EXPECT_EQ("Name Watts Colours", names(instance.getProperties()));
    for (const CIMProperty& property : instance.getProperties())
        EXPECT_FALSE(property.getValue()) << property.getName();
}

TEST(InstanceBuilder, NullPropertiesHaveTheDeclaredType) {
    const CIMInstance instance = InstanceBuilder(lamp).build();
    EXPECT_EQ(CIMDataType::UINT16, instance.getProperty("Watts").getDataType().getType());
    EXPECT_FALSE(instance.getProperty("Watts").getDataType().isArrayType());
    EXPECT_EQ(CIMDataType::STRING, instance.getProperty("Colours").getDataType().getType());
    EXPECT_TRUE(instance.getProperty("Colours").getDataType().isArrayType());
}

TEST(InstanceBuilder, SetValuesKeepTheDeclaredOrder) {
    StringArray colours;
    colours.push_back("red");
    colours.push_back("blue");
    const CIMInstance instance = InstanceBuilder(lamp)
                                     .set("Colours", CIMValue(colours))
                                     .set("Watts", std::optional<UInt16>(60))
                                     .build();
    EXPECT_EQ("Name Watts Colours", names(instance.getProperties()));
    EXPECT_EQ("60", text(instance, "Watts"));
    EXPECT_EQ("red,blue", text(instance, "Colours"));
}

TEST(InstanceBuilder, AbsentValuesLeaveThePropertyNull) {
    const CIMInstance instance = InstanceBuilder(lamp)
                                     .set("Name", std::optional<std::string>())
                                     .set("Watts", std::optional<UInt16>())
                                     .set("Colours", CIMValue(CIMNULL))
                                     .build();
    for (const CIMProperty& property : instance.getProperties())
        EXPECT_FALSE(property.getValue()) << property.getName();
}

TEST(InstanceBuilder, KeysAreTheKeyPropertiesThatAreSet) {
    InstanceBuilder builder(lamp);
    EXPECT_TRUE(builder.build().getKeyValuePairs().empty());
    const CIMInstance named = builder.set("Name", std::optional<std::string>("desk")).build();
    EXPECT_EQ("Name", names(named.getKeyValuePairs()));
    EXPECT_EQ("desk", text(named, "Name"));
}

TEST(InstanceBuilder, AnUndeclaredNameThrows) {
    EXPECT_THROW(InstanceBuilder(lamp).set("Volts", CIMValue(UInt16{1})), std::logic_error);
    EXPECT_THROW(InstanceBuilder(lamp).set("watts", CIMValue(UInt16{1})), std::logic_error);
}

TEST(InstanceBuilder, AValueOfAnotherTypeThrows) {
    EXPECT_THROW(InstanceBuilder(lamp).set("Watts", CIMValue(UInt32{60})), std::logic_error);
    EXPECT_THROW(InstanceBuilder(lamp).set("Colours", CIMValue("red")), std::logic_error);
}
