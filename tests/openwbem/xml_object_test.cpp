// Instances, classes and names, read from hand-written elements.
#include "OW_CIMClass.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMObjectPath.hpp"
#include "OW_CIMProperty.hpp"
#include "OW_CIMValue.hpp"

#include "Xml.hpp"
#include "types/ObjectData.hpp"

#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace OpenWBEM;
using xml_test::decode;
using xml_test::instance;
using xml_test::path;
using xml_test::property;
using xml_test::text;

TEST(XmlPath, IsReadAsTheNameOfAnInstance) {
    const CIMObjectPath read =
        path("<INSTANCENAME CLASSNAME=\"C\"><KEYBINDING NAME=\"Id\"><KEYVALUE VALUETYPE=\""
             "numeric\">5</KEYVALUE></KEYBINDING><KEYBINDING NAME=\"Name\"><KEYVALUE "
             "VALUETYPE=\"string\">a&quot;b</KEYVALUE></KEYBINDING></INSTANCENAME>");
    EXPECT_EQ(String("/:C.Id=\"5\",Name=\"a\\\"b\""), read.toString());
}

TEST(XmlPath, HasKeysWithTheTypesOfTheirValues) {
    const struct {
        const char* type;
        const char* text;
        CIMDataType::Type expected;
        const char* value;
    } examples[] = {
        {"numeric", "-5", CIMDataType::SINT64, "-5"},
        {"numeric", "9223372036854775807", CIMDataType::SINT64, "9223372036854775807"},
        {"numeric", "9223372036854775808", CIMDataType::REAL64, "9.22337e+18"},
        {"numeric", "1.5", CIMDataType::REAL64, "1.5"},
        {"boolean", "TRUE", CIMDataType::BOOLEAN, "true"},
        {"string", "5", CIMDataType::STRING, "5"},
        {"other", "5", CIMDataType::STRING, "5"},
    };
    for (const auto& example : examples) {
        const CIMPropertyArray keys =
            path(std::string("<INSTANCENAME CLASSNAME=\"C\"><KEYBINDING NAME=\"k\">"
                             "<KEYVALUE VALUETYPE=\"") +
                 example.type + "\">" + example.text + "</KEYVALUE></KEYBINDING></INSTANCENAME>")
                .getKeys();
        ASSERT_EQ(1U, keys.size());
        EXPECT_EQ(String("k"), keys[0].getName());
        EXPECT_EQ(example.expected, keys[0].getDataType().getType());
        EXPECT_EQ(example.expected, keys[0].getValue().getType());
        EXPECT_EQ(example.value, text(keys[0].getValue()));
    }
}

TEST(XmlPath, RejectsANumericKeyThatIsNotANumber) {
    EXPECT_EQ(
        "CIMException: invalid parameter passed to method (Unable to convert \"x\" into Real64)",
        failureOf([] {
            path("<INSTANCENAME CLASSNAME=\"C\"><KEYVALUE VALUETYPE=\"numeric\">x</KEYVALUE></INSTANCENAME>");
        }));
}

TEST(XmlPath, MayHaveNoKeysOrOneUnnamedKey) {
    EXPECT_EQ(0U, path("<INSTANCENAME CLASSNAME=\"C\"></INSTANCENAME>").getKeys().size());
    EXPECT_EQ(String("/:C.=\"x\""),
              path("<INSTANCENAME CLASSNAME=\"C\"><KEYVALUE>x</KEYVALUE></INSTANCENAME>").toString());
}

TEST(XmlPath, HasTheHostAndNamespaceOfItsElement) {
    const std::string nameSpace =
        "<LOCALNAMESPACEPATH><NAMESPACE NAME=\"root\"></NAMESPACE><NAMESPACE NAME=\"cimv2\"/>"
        "</LOCALNAMESPACEPATH>";
    const std::string name = "<INSTANCENAME CLASSNAME=\"C\"><KEYBINDING NAME=\"k\"><KEYVALUE>v</KEYVALUE>"
                             "</KEYBINDING></INSTANCENAME>";
    const std::string remote = "<NAMESPACEPATH><HOST>h.example</HOST>" + nameSpace + "</NAMESPACEPATH>";
    const std::pair<std::string, const char*> examples[] = {
        {"<LOCALINSTANCEPATH>" + nameSpace + name + "</LOCALINSTANCEPATH>", "/root/cimv2:C.k=\"v\""},
        {"<INSTANCEPATH>" + remote + name + "</INSTANCEPATH>", "http://h.example/root/cimv2:C.k=\"v\""},
        {"<INSTANCEPATH><NAMESPACEPATH><HOST>h:5</HOST></NAMESPACEPATH>" + name + "</INSTANCEPATH>",
         "http://h:5/:C.k=\"v\""},
        {"<CLASSNAME NAME=\"C\"/>", "/:C"},
        {"<LOCALCLASSPATH>" + nameSpace + "<CLASSNAME NAME=\"C\"></CLASSNAME></LOCALCLASSPATH>",
         "/root/cimv2:C"},
        {"<CLASSPATH>" + remote + "<EXTRA><CLASSNAME NAME=\"D\"/></EXTRA><CLASSNAME NAME=\"C\"/></CLASSPATH>",
         "http://h.example/root/cimv2:C"},
    };
    for (const auto& [element, expected] : examples)
        EXPECT_EQ(String(expected), path(element).toString()) << element;
}

TEST(XmlReference, IsTheValueOfAPropertyOrAKey) {
    const CIMProperty read = property(
        "<PROPERTY.REFERENCE NAME=\"p\" REFERENCECLASS=\"D\" ><VALUE.REFERENCE><INSTANCENAME CLASSNAME=\"A\">"
        "<KEYBINDING NAME=\"k\"><VALUE.REFERENCE><INSTANCENAME CLASSNAME=\"B\"><KEYBINDING "
        "NAME=\"l\"><KEYVALUE>v"
        "</KEYVALUE></KEYBINDING></INSTANCENAME></VALUE.REFERENCE></KEYBINDING><KEYBINDING "
        "NAME=\"m\"><KEYVALUE>w"
        "</KEYVALUE></KEYBINDING></INSTANCENAME></VALUE.REFERENCE></PROPERTY.REFERENCE>");
    EXPECT_EQ(CIMDataType::REFERENCE, read.getDataType().getType());
    EXPECT_EQ(String("D"), read.getDataType().getRefClassName());
    EXPECT_EQ("/:A.k=\"/:B.l=\\\"v\\\"\",m=\"w\"", text(read.getValue()));
    EXPECT_EQ(CIMDataType::REFERENCE, read.getValue().toCIMObjectPath().getKeys()[0].getDataType().getType());
}

TEST(XmlReference, MayBeAnElementOfAnArray) {
    const CIMProperty read =
        property("<PROPERTY.REFARRAY NAME=\"p\" "
                 "REFERENCECLASS=\"D\"><VALUE.REFARRAY><VALUE.REFERENCE><CLASSNAME NAME=\"A\"/>"
                 "</VALUE.REFERENCE><VALUE.NULL/></VALUE.REFARRAY></PROPERTY.REFARRAY>");
    EXPECT_TRUE(read.getDataType().isArrayType());
    EXPECT_EQ("/:A,/:", text(read.getValue()));
}

TEST(XmlInstance, HasItsPropertiesInOrder) {
    const CIMInstance read =
        instance("<INSTANCE CLASSNAME=\"C\" xml:lang=\"en\"><PROPERTY NAME=\"b\" TYPE=\"uint8\" >"
                 "<VALUE>1</VALUE></PROPERTY><PROPERTY NAME=\"a\" TYPE=\"string\" "
                 "CLASSORIGIN=\"B\" PROPAGATED=\"true\" ><VALUE>x</VALUE></PROPERTY></INSTANCE>");
    EXPECT_EQ(String("instance of C {\nb = 1;\na = x;\n}\n"), read.toString());
    EXPECT_EQ(String("en"), ObjectAccess::data(read).language);
    const Declaration& declaration = ObjectAccess::declaration(read.getProperty("a"));
    EXPECT_EQ(String("B"), declaration.originClass.toString());
    EXPECT_TRUE(declaration.propagated);
}

TEST(XmlInstance, IgnoresUnknownElements) {
    const CIMInstance read = instance(
        "<INSTANCE CLASSNAME=\"C\" NEW=\"1\"><EXTRA><PROPERTY NAME=\"no\"/></EXTRA><PROPERTY NAME=\"a\" "
        "TYPE=\"uint8\" "
        "OTHER=\"x\"><EXTRA><VALUE>2</VALUE></EXTRA>text<VALUE UNIT=\"m\">1</VALUE></PROPERTY></INSTANCE>");
    EXPECT_EQ(String("instance of C {\na = 1;\n}\n"), read.toString());
}

TEST(XmlInstance, HasTheKeysOfItsName) {
    const CIMInstance read = decode(
        "<VALUE.NAMEDINSTANCE><INSTANCENAME CLASSNAME=\"C\"><KEYBINDING NAME=\"a\"><KEYVALUE VALUETYPE=\""
        "numeric\">1</KEYVALUE></KEYBINDING></INSTANCENAME><INSTANCE CLASSNAME=\"C\"><PROPERTY NAME=\"a\" "
        "TYPE=\"uint8\"><VALUE>1</VALUE></PROPERTY></INSTANCE><EXTRA/></VALUE.NAMEDINSTANCE>",
        &xml::ObjectReader::namedInstance);
    ASSERT_EQ(1U, read.getKeyValuePairs().size());
    EXPECT_EQ(String("a"), read.getKeyValuePairs()[0].getName());
    EXPECT_EQ(CIMDataType::SINT64, read.getKeyValuePairs()[0].getValue().getType());
}

TEST(XmlInstance, IsRequiredInANamedInstance) {
    EXPECT_EQ("XMLParseException: Line 2: Missing element: VALUE.NAMEDINSTANCE without INSTANCE",
              failureOf([] {
                  decode("<VALUE.NAMEDINSTANCE>\n<EXTRA/></VALUE.NAMEDINSTANCE>",
                         &xml::ObjectReader::namedInstance);
              }));
}

const char* const keyQualifier = "<QUALIFIER NAME=\"Key\" TYPE=\"boolean\" ><VALUE>true</VALUE></QUALIFIER>";

TEST(XmlInstance, WithoutANameHasThePropertiesWithAKeyQualifierAsKeys) {
    const CIMInstance read = instance(
        std::string("<INSTANCE CLASSNAME=\"C\"><PROPERTY NAME=\"a\" TYPE=\"uint8\">") + keyQualifier +
        "<VALUE>1</VALUE></PROPERTY><PROPERTY NAME=\"b\" TYPE=\"uint8\"/>"
        "</INSTANCE>");
    ASSERT_EQ(1U, read.getKeyValuePairs().size());
    EXPECT_EQ(String("a"), read.getKeyValuePairs()[0].getName());
    EXPECT_EQ("1", text(read.getKeyValuePairs()[0].getValue()));
}

TEST(XmlQualifier, KeepsAllItsAttributes) {
    const CIMInstance read =
        instance("<INSTANCE CLASSNAME=\"C\"><QUALIFIER NAME=\"Values\" TYPE=\"string\" PROPAGATED=\"true\" "
                 "OVERRIDABLE=\"false\" "
                 "TOSUBCLASS=\"false\" TRANSLATABLE=\"true\" "
                 "xml:lang=\"de\"><VALUE.ARRAY><VALUE>x</VALUE><VALUE>y</VALUE>"
                 "</VALUE.ARRAY></QUALIFIER><QUALIFIER NAME=\"Plain\" TYPE=\"uint32\"/></INSTANCE>");
    const QualifierArray& qualifiers = ObjectAccess::data(read).qualifiers;
    ASSERT_EQ(2U, qualifiers.size());
    EXPECT_EQ(String("Values"), qualifiers[0].name.toString());
    EXPECT_EQ("x,y", text(qualifiers[0].value));
    EXPECT_TRUE(qualifiers[0].type.isArrayType());
    EXPECT_TRUE(qualifiers[0].propagated);
    EXPECT_EQ(String("de"), qualifiers[0].language);
    EXPECT_EQ((std::vector<Int32>{2, 3, 5}),
              std::vector<Int32>(qualifiers[0].flavors.begin(), qualifiers[0].flavors.end()));
    EXPECT_FALSE(qualifiers[1].value);
    EXPECT_EQ(CIMDataType::UINT32, qualifiers[1].type.getType());
    EXPECT_TRUE(qualifiers[1].flavors.empty());
}

// The declarations of the property p in consecutive instances.
std::vector<const Declaration*> declarations(const std::vector<std::string>& properties,
                                             CIMInstanceArray& instances) {
    std::string document = "<ALL>";
    for (const std::string& property : properties)
        document += "<INSTANCE CLASSNAME=\"C\">" + property + "</INSTANCE>";
    document += "</ALL>";
    io::Window window(document.data(), document.size());
    xml::Tokenizer in(window);
    xml::ObjectReader objects(in);
    std::vector<const Declaration*> result;
    in.next();
    while (in.next() == xml::Tag::start) {
        instances.push_back(objects.instance());
        result.push_back(&ObjectAccess::declaration(instances.back().getProperty("p")));
    }
    return result;
}

TEST(XmlQualifier, InvisibleHidesAPropertyInTheText) {
    const CIMInstance read = instance(
        "<INSTANCE CLASSNAME=\"C\"><PROPERTY NAME=\"hidden\" TYPE=\"string\"><QUALIFIER "
        "NAME=\"Invisible\" TYPE=\"boolean\"><VALUE>true</VALUE></QUALIFIER><VALUE>x</VALUE></PROPERTY>"
        "<PROPERTY NAME=\"shown\" TYPE=\"string\"><VALUE>y</VALUE></PROPERTY></INSTANCE>");
    EXPECT_EQ("instance of C {\nshown = y;\n}\n", read.toString());
    EXPECT_EQ("x", text(read.getPropertyValue("hidden")));
}

TEST(XmlProperty, ReportsTheSizeAttributeOfItsArray) {
    EXPECT_EQ(4, property("<PROPERTY.ARRAY NAME=\"p\" TYPE=\"uint8\" ARRAYSIZE=\"4\"/>").getSize());
    EXPECT_EQ(-1, property("<PROPERTY.ARRAY NAME=\"p\" TYPE=\"uint8\"/>").getSize());
}

TEST(XmlDeclaration, IsSharedByConsecutiveInstances) {
    const std::string property = "<PROPERTY NAME=\"p\" TYPE=\"uint8\"><VALUE>1</VALUE></PROPERTY>";
    CIMInstanceArray instances;
    const auto all = declarations({property, property, property}, instances);
    EXPECT_EQ(all[0], all[1]);
    EXPECT_EQ(all[0], all[2]);
}

TEST(XmlDeclaration, IsNotSharedIfItDiffers) {
    CIMInstanceArray instances;
    const auto all =
        declarations({"<PROPERTY NAME=\"p\" TYPE=\"uint8\"/>", "<PROPERTY NAME=\"p\" TYPE=\"uint16\"/>",
                      "<PROPERTY.ARRAY NAME=\"p\" TYPE=\"uint16\"/>",
                      "<PROPERTY NAME=\"q\" TYPE=\"uint8\"/><PROPERTY NAME=\"p\" TYPE=\"uint16\"/>"},
                     instances);
    EXPECT_EQ(CIMDataType::UINT8, all[0]->type.getType());
    EXPECT_EQ(CIMDataType::UINT16, all[1]->type.getType());
    EXPECT_TRUE(all[2]->type.isArrayType());
    EXPECT_FALSE(all[3]->type.isArrayType());
}

TEST(XmlDeclaration, HasOnlyTheQualifiersOfItsProperty) {
    const std::string begin = "<PROPERTY NAME=\"p\" TYPE=\"uint8\">";
    CIMInstanceArray instances;
    const auto all = declarations(
        {begin + "</PROPERTY>", begin + keyQualifier + "</PROPERTY>", begin + "</PROPERTY>"}, instances);
    EXPECT_TRUE(all[0]->qualifiers.empty());
    EXPECT_EQ(1U, all[1]->qualifiers.size());
    EXPECT_TRUE(all[2]->qualifiers.empty());
}

TEST(XmlClass, HasPropertiesMethodsAndQualifiers) {
    const CIMClass read = decode(
        std::string(
            "<CLASS NAME=\"C\" SUPERCLASS=\"S\"><QUALIFIER NAME=\"Association\" TYPE=\"boolean\"><VALUE>true"
            "</VALUE></QUALIFIER><PROPERTY NAME=\"p\" TYPE=\"uint8\">") +
            keyQualifier +
            "<VALUE>7</VALUE></PROPERTY><METHOD NAME=\"m\" TYPE=\"uint32\" CLASSORIGIN=\"S\" "
            "PROPAGATED=\"true\">"
            "<QUALIFIER NAME=\"Q\" TYPE=\"string\"/><PARAMETER NAME=\"a\" TYPE=\"uint16\"><QUALIFIER "
            "NAME=\"In\" "
            "TYPE=\"boolean\"/><EXTRA/></PARAMETER><PARAMETER.ARRAY NAME=\"b\" TYPE=\"string\" "
            "ARRAYSIZE=\"3\"/>"
            "<PARAMETER.REFERENCE NAME=\"c\" REFERENCECLASS=\"R\"/><PARAMETER.REFARRAY "
            "NAME=\"d\"/><EXTRA/></METHOD>"
            "<EXTRA/></CLASS>",
        &xml::ObjectReader::classObject);
    const CIMClass::Data& data = ObjectAccess::data(read);
    EXPECT_EQ(String("C"), data.name.toString());
    EXPECT_EQ(String("S"), data.superClass.toString());
    EXPECT_TRUE(data.isAssociation);
    EXPECT_TRUE(data.isKeyed);
    ASSERT_EQ(1U, data.properties.size());
    EXPECT_EQ("7", text(data.properties[0].getValue()));
    ASSERT_EQ(1U, data.methods.size());
    const Method& method = data.methods[0];
    EXPECT_EQ(CIMDataType::UINT32, method.returnType.getType());
    EXPECT_EQ(String("S"), method.originClass.toString());
    EXPECT_TRUE(method.propagated);
    EXPECT_EQ(1U, method.qualifiers.size());
    ASSERT_EQ(4U, method.parameters.size());
    EXPECT_EQ(1U, method.parameters[0].qualifiers.size());
    EXPECT_EQ(CIMDataType(CIMDataType::STRING, 3), method.parameters[1].type);
    EXPECT_EQ(CIMDataType(CIMName("R")), method.parameters[2].type);
    EXPECT_TRUE(method.parameters[3].type.isReferenceType() && method.parameters[3].type.isArrayType());
}

TEST(XmlClass, MayHaveNoKeys) {
    const CIMClass read = decode("<CLASS NAME=\"C\"/>", &xml::ObjectReader::classObject);
    EXPECT_FALSE(ObjectAccess::data(read).isKeyed);
    EXPECT_FALSE(ObjectAccess::data(read).isAssociation);
}

TEST(XmlInstanceName, KeepsAnyNumberOfKeysApart) {
    const std::string plain = "<KEYBINDING NAME=\"a\"><KEYVALUE>1</KEYVALUE></KEYBINDING>";
    const std::string reference =
        "<KEYBINDING NAME=\"OUTER\"><VALUE.REFERENCE><INSTANCENAME CLASSNAME=\"C\"><KEYBINDING "
        "NAME=\"INNER\"><KEYVALUE>2</KEYVALUE></KEYBINDING></INSTANCENAME></VALUE.REFERENCE></KEYBINDING>";
    const CIMObjectPath path =
        xml_test::decode("<INSTANCENAME CLASSNAME=\"Foo\">" + xml_test::repeated(plain, 300) + reference +
                             plain + "</INSTANCENAME>",
                         &xml::ObjectReader::objectPath);
    const CIMPropertyArray keys = path.getKeys();
    ASSERT_EQ(302U, keys.size());
    EXPECT_EQ("a", keys[299].getName());
    EXPECT_EQ("OUTER", keys[300].getName());
    EXPECT_EQ(CIMDataType::REFERENCE, keys[300].getDataType().getType());
    EXPECT_EQ("a", keys[301].getName());
    EXPECT_EQ(CIMDataType::STRING, keys[301].getDataType().getType());
}

// Takes minutes if each qualifier searches all others.
TEST(XmlProperty, MayHaveAnyNumberOfQualifiers) {
    const std::string qualifier = "<QUALIFIER NAME=\"q\" TYPE=\"boolean\"><VALUE>true</VALUE></QUALIFIER>";
    const CIMProperty property =
        xml_test::property("<PROPERTY NAME=\"p\" TYPE=\"string\">" + xml_test::repeated(qualifier, 100000) +
                           "<VALUE>x</VALUE></PROPERTY>");
    EXPECT_EQ("x", property.getValue().toString());
    EXPECT_EQ(100000U, ObjectAccess::declaration(property).qualifiers.size());
}

} // namespace
