// Properties, instances and classes: setters and text forms.
#include "OW_CIMClass.hpp"
#include "OW_CIMDateTime.hpp"
#include "OW_CIMException.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMObjectPath.hpp"
#include "OW_CIMProperty.hpp"
#include "OW_CIMValue.hpp"
#include "OW_NULLValueException.hpp"
#include "OW_NoSuchPropertyException.hpp"

#include "Failure.hpp"

#include <gtest/gtest.h>
#include <string>

namespace {

using namespace OpenWBEM;

TEST(Property, CastsAValueToItsDeclaredType) {
    CIMProperty property("Size", CIMDataType(CIMDataType::UINT32));
    property.setValue(CIMValue("7"));
    EXPECT_EQ(CIMDataType::UINT32, property.getValue().getType());
    EXPECT_EQ("7", property.getValue().toString());
    EXPECT_EQ("CIMException: general error (Unable to convert \"abc\" into UInt32)",
              failureOf([&] { property.setValue(CIMValue("abc")); }));
    EXPECT_EQ("7", property.getValue().toString()) << "a failed cast changes nothing";
    property.setValue(CIMValue(CIMNULL));
    EXPECT_FALSE(property.getValue());
}

TEST(Property, StoresAnEmbeddedObjectDespiteItsDeclaredType) {
    CIMProperty property("x", CIMDataType(CIMDataType::STRING));
    property.setValue(CIMValue(CIMInstance("Foo")));
    EXPECT_EQ(CIMDataType::EMBEDDEDINSTANCE, property.getValue().getType());
    EXPECT_EQ(CIMDataType::STRING, property.getDataType().getType());
}

TEST(Property, CastsItsValueIfItsTypeChanges) {
    CIMProperty property("x", CIMValue("12"));
    property.setDataType(CIMDataType(CIMDataType::UINT16, -1));
    EXPECT_TRUE(property.getValue() == CIMValue(UInt16Array(1, UInt16(12))));
}

TEST(Property, IsAKeyIfItIsAReference) {
    EXPECT_TRUE(CIMProperty("x", CIMDataType(CIMName("Foo"))).isKey());
    EXPECT_FALSE(CIMProperty("x", CIMValue("1")).isKey());
}

TEST(Property, HasATextForm) {
    EXPECT_EQ("uint16:x=1", CIMProperty("x", CIMValue(UInt16(1))).toString());
    EXPECT_EQ("string:x=null", CIMProperty("x", CIMDataType(CIMDataType::STRING)).toString());
}

TEST(Property, GetValueTThrowsWithoutAValue) {
    EXPECT_EQ("NULLValueException: x", failureOf([] { CIMProperty("x").getValueT(); }));
    EXPECT_EQ("7", CIMProperty("x", CIMValue("7")).getValueT().toString());
}

TEST(Element, EqualsAnyElementWithTheSameName) {
    const CIMProperty property("Size");
    const CIMInstance instance("SIZE");
    const CIMClass other("Weight");
    EXPECT_TRUE(static_cast<const CIMElement&>(property) == static_cast<const CIMElement&>(instance));
    EXPECT_FALSE(static_cast<const CIMElement&>(property) != static_cast<const CIMElement&>(instance));
    EXPECT_TRUE(static_cast<const CIMElement&>(property) != static_cast<const CIMElement&>(other));
    EXPECT_EQ("SIZE", instance.CIMElement::toString());
}

TEST(Property, CopiesShareUntilOneIsChanged) {
    const CIMProperty a("x", CIMValue("1"));
    CIMProperty b = a;
    b.setName("y");
    b.setOriginClass("Foo");
    b.setPropagated(true);
    EXPECT_EQ("x", a.getName());
    EXPECT_EQ("", a.getOriginClass());
    EXPECT_FALSE(a.getPropagated());
    EXPECT_EQ("y", b.getName());
    EXPECT_EQ("Foo", b.getOriginClass());
    EXPECT_TRUE(b.getPropagated());
}

TEST(Instance, SetPropertyKeepsIndexLetterCaseAndDeclaredType) {
    CIMInstance instance("Foo");
    instance.setProperty("Name", CIMValue("a")).setProperty("Size", CIMValue(UInt32(1)));
    instance.setProperty("NAME", CIMValue(UInt16(5)));
    const CIMPropertyArray properties = instance.getProperties();
    ASSERT_EQ(2U, properties.size());
    EXPECT_EQ("string:Name=5", properties[0].toString());
    EXPECT_EQ("uint32:Size=1", properties[1].toString());
}

TEST(Instance, APropertyFirstSetToNullNeverGetsAType) {
    CIMInstance instance("Foo");
    instance.setProperty("x", CIMValue(CIMNULL));
    EXPECT_EQ(CIMDataType::CIMNULL, instance.getProperty("x").getDataType().getType());
    instance.setProperty("x", CIMValue(UInt16(5)));
    EXPECT_EQ(CIMDataType::CIMNULL, instance.getProperty("x").getDataType().getType());
    EXPECT_EQ(CIMDataType::UINT16, instance.getPropertyValue("x").getType());
}

TEST(Instance, AnEmptyNameIsANameLikeAnyOther) {
    CIMInstance instance("Foo");
    instance.setProperty("", CIMValue("1")).setProperty("", CIMValue("2"));
    ASSERT_EQ(1U, instance.getProperties().size());
    EXPECT_EQ("2", instance.getPropertyValue("").toString());
}

TEST(Instance, SetPropertyUpdatesTheKey) {
    CIMInstance instance("Foo");
    CIMPropertyArray keys;
    keys.push_back(CIMProperty("Name", CIMValue("a")));
    instance.setKeys(keys).setProperty("Name", CIMValue("a"));
    instance.setProperty("Name", CIMValue("b")).setProperty("Other", CIMValue("c"));
    ASSERT_EQ(1U, instance.getKeyValuePairs().size());
    EXPECT_EQ("b", instance.getKeyValuePairs()[0].getValue().toString());
}

TEST(Instance, GetPropertyTThrowsForAMissingProperty) {
    const CIMInstance instance("Foo");
    EXPECT_FALSE(instance.propertyHasValue("x"));
    try {
        instance.getPropertyT("x");
        FAIL() << "no exception";
    } catch (const NoSuchPropertyException& e) {
        EXPECT_STREQ("x", e.getMessage());
        EXPECT_EQ(CIMInstance::E_INSTANCE_HAS_NO_SUCH_PROPERTY, e.getErrorCode());
    }
    CIMInstance whole("Foo");
    whole.setProperty("x", CIMValue("7"));
    EXPECT_EQ("7", whole.getPropertyT("X").getValue().toString());
}

TEST(Instance, IsNamedAfterItsClass) {
    CIMInstance instance("Foo");
    EXPECT_EQ("Foo", instance.getName());
    instance.setName("Bar");
    EXPECT_EQ("Bar", instance.getClassName());
}

TEST(Instance, KeepsItsLanguage) {
    CIMInstance instance("Foo");
    EXPECT_EQ("", instance.getLanguage());
    instance.setLanguage("en");
    EXPECT_EQ("en", instance.getLanguage());
}

TEST(Instance, IgnoresANullProperty) {
    CIMInstance instance("Foo");
    instance.setProperty(CIMProperty("a", CIMValue("1"))).setProperty(CIMProperty(CIMNULL));
    EXPECT_EQ("instance of Foo {\na = 1;\n}\n", instance.toString());
}

TEST(Instance, RemovesAProperty) {
    CIMInstance instance("Foo");
    instance.setProperty("a", CIMValue("1")).setProperty("b", CIMValue("2")).removeProperty("A");
    ASSERT_EQ(1U, instance.getProperties().size());
    EXPECT_EQ("b", instance.getProperties()[0].getName());
}

TEST(Instance, CopiesShareUntilOneIsChanged) {
    CIMInstance a("Foo");
    a.setProperty(CIMProperty("A", CIMValue("1")));
    CIMInstance b = a;
    b.setProperty(CIMProperty("a", CIMValue("2")));
    EXPECT_EQ("1", a.getPropertyValue("A").toString());
    EXPECT_EQ("2", b.getPropertyValue("A").toString());
    EXPECT_EQ(1U, b.getProperties().size()) << "names are compared without regard to case";
}

TEST(Instance, AMissingPropertyIsNullAndSoIsItsValue) {
    const CIMInstance instance("Foo");
    EXPECT_FALSE(instance.getProperty("X"));
    EXPECT_FALSE(instance.getPropertyValue("X"));
}

TEST(Instance, PropertiesAreFilteredByTheirDeclaredType) {
    CIMInstance instance("Foo");
    instance.setProperty(CIMProperty("A", CIMValue("1")));
    instance.setProperty(CIMProperty("B", CIMValue(UInt16(1))));
    EXPECT_EQ(2U, instance.getProperties(CIMDataType::INVALID).size());
    ASSERT_EQ(1U, instance.getProperties(CIMDataType::UINT16).size());
    EXPECT_EQ("B", instance.getProperties(CIMDataType::UINT16)[0].getName());
}

TEST(Class, CreatesAnInstanceWithItsPropertiesAndDefaults) {
    CIMPropertyArray properties;
    properties.push_back(CIMProperty("Size", CIMDataType(CIMDataType::UINT32)));
    properties.push_back(CIMProperty("Unit", CIMValue("kB")));
    const CIMInstance instance = CIMClass("Foo").setProperties(properties).newInstance();
    EXPECT_EQ("instance of Foo {\nSize = null;\nUnit = kB;\n}\n", instance.toString());
    EXPECT_EQ(0U, instance.getKeyValuePairs().size());
}

TEST(Class, CreatedFromANameIsEmpty) {
    const CIMInstance instance = CIMClass("Foo").newInstance();
    EXPECT_TRUE(instance);
    EXPECT_EQ("Foo", instance.getClassName());
    EXPECT_EQ(0U, instance.getProperties().size());
    EXPECT_EQ("NULLCOWIntrusiveReferenceException: NULL COWReference dereferenced",
              failureOf([] { CIMClass(CIMNULL).newInstance(); }));
}

TEST(Class, HasASuperclass) {
    EXPECT_FALSE(CIMClass("Foo").getSuperClass());
    EXPECT_EQ("Base", CIMClass("Foo").setSuperClass("Base").getSuperClass().toString());
}

TEST(Class, TextFormIsItsDeclaration) {
    EXPECT_EQ("class Foo\n{\n};\n", CIMClass("Foo").toString());
    EXPECT_EQ("class Foo\n{\n};\n", CIMValue(CIMClass("Foo")).toString());
    CIMPropertyArray properties;
    properties.push_back(CIMProperty("Sizes", CIMDataType(CIMDataType::UINT32, 4)));
    properties.push_back(CIMProperty("Unit", CIMValue("k\"B")));
    properties.push_back(CIMProperty("Of", CIMDataType(CIMName("Bar"))));
    EXPECT_EQ(
        "class Foo : Base\n{\n    uint32 Sizes[4];\n    string Unit = \"k\\\"B\";\n    Bar REF Of;\n};\n",
        CIMClass("Foo").setSuperClass("Base").setProperties(properties).toMOF());
}

} // namespace
