// CIM objects as elements, and the round trip through the reader.
#include "OW_CIMClass.hpp"
#include "OW_CIMDateTime.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMObjectPath.hpp"
#include "OW_CIMProperty.hpp"
#include "OW_CIMValue.hpp"

#include "Xml.hpp"
#include "types/ObjectData.hpp"
#include "xml/ObjectWriter.hpp"

#include <gtest/gtest.h>
#include <string>

namespace {

using namespace OpenWBEM;

template <class Object>
std::string written(const Object& object) {
    std::string out;
    xml::write(out, object);
    return out;
}

CIMInstance readBack(const CIMInstance& instance) {
    return xml_test::instance(written(instance));
}

CIMProperty declared(Declaration* declaration, const CIMValue& value = CIMValue(CIMNULL)) {
    return ObjectAccess::property(detail::Shared<Declaration>(declaration), value);
}

template <class T>
Array<T> two(const T& a, const T& b) {
    Array<T> both;
    both.push_back(a);
    both.push_back(b);
    return both;
}

TEST(XmlWriter, WritesAValueInTheTextFormOfItsType) {
    const std::pair<CIMValue, const char*> examples[] = {
        {CIMValue(UInt8(255)), "<VALUE>255</VALUE>"},
        {CIMValue(Int8(-128)), "<VALUE>-128</VALUE>"},
        {CIMValue(UInt64(18446744073709551615U)), "<VALUE>18446744073709551615</VALUE>"},
        {CIMValue(true), "<VALUE>true</VALUE>"},
        {CIMValue(Real64(0.1)), "<VALUE>0.1</VALUE>"},
        {CIMValue(Real32(1e10F)), "<VALUE>1e+10</VALUE>"},
        {CIMValue(Char16(0x20AC)), "<VALUE>\xE2\x82\xAC</VALUE>"},
        {CIMValue(Char16('<')), "<VALUE>&lt;</VALUE>"},
        {CIMValue(Char16(0)), "<VALUE></VALUE>"},
        {CIMValue(""), "<VALUE></VALUE>"},
        {CIMValue("a<b>&\"'\r\n\t \xC3\xA9"),
         "<VALUE>a&lt;b&gt;&amp;&quot;&apos;&#13;&#10;&#9; \xC3\xA9</VALUE>"},
        {CIMValue(CIMDateTime("20050607080910.123456+060")), "<VALUE>20050607080910.123456+060</VALUE>"},
        {CIMValue(two<UInt16>(1, 2)), "<VALUE.ARRAY><VALUE>1</VALUE><VALUE>2</VALUE></VALUE.ARRAY>"},
        {CIMValue(two<Char16>(UInt16('A'), UInt16(0xE9))),
         "<VALUE.ARRAY><VALUE>A</VALUE><VALUE>\xC3\xA9</VALUE></VALUE.ARRAY>"},
        {CIMValue(StringArray()), "<VALUE.ARRAY></VALUE.ARRAY>"},
        {CIMValue(CIMNULL), ""},
    };
    for (const auto& [value, expected] : examples)
        EXPECT_EQ(expected, written(value));
}

TEST(XmlWriter, WritesTheDeclarationOfAProperty) {
    auto* const declaration = new Declaration;
    declaration->name = "p";
    declaration->type = CIMDataType(CIMDataType::UINT8, 4);
    declaration->originClass = "B";
    declaration->propagated = true;
    EXPECT_EQ(
        "<PROPERTY.ARRAY NAME=\"p\" TYPE=\"uint8\" ARRAYSIZE=\"4\" CLASSORIGIN=\"B\" PROPAGATED=\"true\" >"
        "</PROPERTY.ARRAY>",
        written(declared(declaration)));
}

TEST(XmlWriter, WritesAPropertyWithoutATypeAsAString) {
    EXPECT_EQ("<PROPERTY NAME=\"p\" TYPE=\"string\" ></PROPERTY>", written(CIMProperty("p")));
}

TEST(XmlWriter, WritesAPropertyWithoutATypeWithTheTypeOfItsValue) {
    auto* const declaration = new Declaration;
    declaration->name = "p";
    EXPECT_EQ("<PROPERTY.ARRAY NAME=\"p\" TYPE=\"uint16\" "
              "><VALUE.ARRAY><VALUE>1</VALUE><VALUE>2</VALUE></VALUE.ARRAY>"
              "</PROPERTY.ARRAY>",
              written(declared(declaration, CIMValue(two<UInt16>(1, 2)))));
}

TEST(XmlWriter, WritesQualifiers) {
    auto* const declaration = new Declaration;
    declaration->name = "p";
    declaration->type = CIMDataType(CIMDataType::UINT8);
    Qualifier qualifier;
    qualifier.name = "Key";
    qualifier.value = CIMValue(true);
    declaration->qualifiers.push_back(qualifier);
    qualifier.name = "Values";
    qualifier.value = CIMValue(two<String>("x", "y"));
    qualifier.propagated = true;
    for (const Int32 flavor : {2, 3, 5})
        qualifier.flavors.push_back(flavor);
    qualifier.language = "de";
    declaration->qualifiers.push_back(qualifier);
    EXPECT_EQ(
        "<PROPERTY NAME=\"p\" TYPE=\"uint8\" ><QUALIFIER NAME=\"Key\" TYPE=\"boolean\" ><VALUE>true</VALUE>"
        "</QUALIFIER><QUALIFIER NAME=\"Values\" TYPE=\"string\" PROPAGATED=\"true\" OVERRIDABLE=\"false\" "
        "TOSUBCLASS=\"false\" TRANSLATABLE=\"true\" xml:lang=\"de\" ><VALUE.ARRAY><VALUE>x</VALUE><VALUE>y"
        "</VALUE></VALUE.ARRAY></QUALIFIER></PROPERTY>",
        written(declared(declaration)));
}

TEST(XmlWriter, WritesKeysWithTheirValueType) {
    CIMPropertyArray keys;
    keys.push_back(CIMProperty("n", CIMValue(Int64(-5))));
    keys.push_back(CIMProperty("r", CIMValue(Real64(1.5))));
    keys.push_back(CIMProperty("b", CIMValue(false)));
    keys.push_back(CIMProperty("s", CIMValue("a\"b")));
    keys.push_back(CIMProperty("c", CIMValue(Char16('A'))));
    keys.push_back(CIMProperty("d", CIMValue(CIMDateTime(UInt64(0)))));
    keys.push_back(CIMProperty("u"));
    keys.push_back(CIMProperty("p", CIMValue(CIMObjectPath("D"))));
    const auto key = [](const char* name, const char* type, const char* value) {
        return std::string("<KEYBINDING NAME=\"") + name + "\"><KEYVALUE VALUETYPE=\"" + type + "\">" +
               value + "</KEYVALUE></KEYBINDING>";
    };
    std::string out;
    xml::writeName(out, CIMObjectPath("C", keys));
    EXPECT_EQ(
        "<INSTANCENAME CLASSNAME=\"C\">" + key("n", "numeric", "-5") + key("r", "numeric", "1.5") +
            key("b", "boolean", "false") + key("s", "string", "a&quot;b") + key("c", "string", "A") +
            key("d", "string", "00000000000000.000000:000") + key("u", "string", "") +
            "<KEYBINDING NAME=\"p\"><VALUE.REFERENCE><CLASSNAME NAME=\"D\"></CLASSNAME></VALUE.REFERENCE>"
            "</KEYBINDING></INSTANCENAME>",
        out);
}

TEST(XmlWriter, WritesTheTypesOfKeysOnRequest) {
    CIMPropertyArray inner;
    inner.push_back(CIMProperty("n", CIMValue(UInt16(5))));
    CIMPropertyArray keys;
    keys.push_back(CIMProperty("s", CIMValue("a")));
    keys.push_back(CIMProperty("d", CIMValue(CIMDateTime(UInt64(0)))));
    keys.push_back(CIMProperty("u"));
    keys.push_back(CIMProperty("p", CIMValue(CIMObjectPath("D", inner))));
    const auto key = [](const char* name, const char* kind, const char* type, const char* value) {
        return std::string("<KEYBINDING NAME=\"") + name + "\"><KEYVALUE VALUETYPE=\"" + kind + "\" TYPE=\"" +
               type + "\">" + value + "</KEYVALUE></KEYBINDING>";
    };
    std::string out;
    xml::writeName(out, CIMObjectPath("C", keys), xml::KeyType::written);
    EXPECT_EQ("<INSTANCENAME CLASSNAME=\"C\">" + key("s", "string", "string", "a") +
                  key("d", "string", "datetime", "00000000000000.000000:000") +
                  key("u", "string", "string", "") +
                  "<KEYBINDING NAME=\"p\"><VALUE.REFERENCE><INSTANCENAME CLASSNAME=\"D\">" +
                  key("n", "numeric", "uint16", "5") +
                  "</INSTANCENAME></VALUE.REFERENCE></KEYBINDING></INSTANCENAME>",
              out);
}

TEST(XmlWriter, WritesHostAndNamespaceOfAPathIfItHasAny) {
    CIMPropertyArray keys;
    keys.push_back(CIMProperty("k", CIMValue("v")));
    const std::string name =
        "<INSTANCENAME CLASSNAME=\"C\"><KEYBINDING NAME=\"k\"><KEYVALUE VALUETYPE=\"string\">v"
        "</KEYVALUE></KEYBINDING></INSTANCENAME>";
    const std::string nameSpace =
        "<LOCALNAMESPACEPATH><NAMESPACE NAME=\"root\"></NAMESPACE><NAMESPACE NAME=\"cimv2\">"
        "</NAMESPACE></LOCALNAMESPACEPATH>";
    CIMObjectPath path("C", keys);
    EXPECT_EQ(name, written(path));
    path.setNameSpace("root/cimv2");
    EXPECT_EQ("<LOCALINSTANCEPATH>" + nameSpace + name + "</LOCALINSTANCEPATH>", written(path));
    path.setHost("LocalHost");
    EXPECT_EQ("<LOCALINSTANCEPATH>" + nameSpace + name + "</LOCALINSTANCEPATH>", written(path));
    path.setHost("h.example");
    EXPECT_EQ("<INSTANCEPATH><NAMESPACEPATH><HOST>h.example</HOST>" + nameSpace + "</NAMESPACEPATH>" + name +
                  "</INSTANCEPATH>",
              written(path));

    CIMObjectPath classPath("C");
    EXPECT_EQ("<CLASSNAME NAME=\"C\"></CLASSNAME>", written(classPath));
    classPath.setNameSpace("root/cimv2");
    EXPECT_EQ("<LOCALCLASSPATH>" + nameSpace + "<CLASSNAME NAME=\"C\"></CLASSNAME></LOCALCLASSPATH>",
              written(classPath));
}

TEST(XmlWriter, WritesReferences) {
    auto* const declaration = new Declaration;
    declaration->name = "p";
    declaration->type = CIMDataType(CIMName("D"));
    EXPECT_EQ("<PROPERTY.REFERENCE NAME=\"p\" REFERENCECLASS=\"D\" ><VALUE.REFERENCE><CLASSNAME "
              "NAME=\"C\"></CLASSNAME>"
              "</VALUE.REFERENCE></PROPERTY.REFERENCE>",
              written(declared(declaration, CIMValue(CIMObjectPath("C")))));
}

TEST(XmlWriter, WritesAnEmbeddedObjectAsAQualifiedString) {
    CIMInstance inner("I");
    inner.setProperty(CIMProperty("q", CIMValue("<")));
    EXPECT_EQ(
        "<PROPERTY NAME=\"p\" TYPE=\"string\" ><QUALIFIER NAME=\"EmbeddedObject\" TYPE=\"boolean\" "
        "><VALUE>true"
        "</VALUE></QUALIFIER><VALUE>&lt;INSTANCE CLASSNAME=&quot;I&quot;&gt;&lt;PROPERTY NAME=&quot;q&quot; "
        "TYPE=&quot;string&quot; &gt;&lt;VALUE&gt;&amp;lt;&lt;/VALUE&gt;&lt;/PROPERTY&gt;&lt;/INSTANCE&gt;"
        "</VALUE></PROPERTY>",
        written(CIMProperty("p", CIMValue(inner))));
}

TEST(XmlWriter, WritesTheQualifierOfAnEmbeddedObjectOnce) {
    CIMInstance outer("O");
    outer.setProperty(CIMProperty("p", CIMValue(CIMInstance("I"))));
    EXPECT_EQ(written(outer), written(readBack(outer)));
}

TEST(XmlWriter, WritesClasses) {
    auto* const data = new CIMClass::Data;
    const CIMClass object = ObjectAccess::object<CIMClass>(data);
    data->name = "C";
    data->superClass = "S";
    data->properties.push_back(CIMProperty("p", CIMValue(UInt8(1))));
    Method method;
    method.name = "m";
    method.returnType = CIMDataType(CIMDataType::UINT32);
    Parameter parameter;
    parameter.name = "a";
    parameter.type = CIMDataType(CIMDataType::STRING, -1);
    method.parameters.push_back(parameter);
    data->methods.push_back(method);
    EXPECT_EQ(
        "<CLASS NAME=\"C\" SUPERCLASS=\"S\" ><PROPERTY NAME=\"p\" TYPE=\"uint8\" ><VALUE>1</VALUE></PROPERTY>"
        "<METHOD NAME=\"m\" TYPE=\"uint32\" ><PARAMETER.ARRAY NAME=\"a\" TYPE=\"string\" ></PARAMETER.ARRAY>"
        "</METHOD></CLASS>",
        written(object));
}

TEST(XmlWriter, IsTheInverseOfTheReader) {
    CIMPropertyArray keys;
    keys.push_back(CIMProperty("k", CIMValue("v")));
    CIMInstance inner("I");
    inner.setProperty(CIMProperty("deep", CIMValue(CIMInstance("D"))));
    CIMObjectPath path("C", keys);
    path.setNameSpace("root/cimv2").setHost("h.example");
    const CIMValue values[] = {
        CIMValue(UInt8(255)),
        CIMValue(Int8(-128)),
        CIMValue(Int16(-3)),
        CIMValue(UInt32(7)),
        CIMValue(Int32(-7)),
        CIMValue(UInt64(1) << 63),
        CIMValue(Int64(-1)),
        CIMValue(Real32(0.5F)),
        CIMValue(Real64(-2.5)),
        CIMValue(true),
        CIMValue(Char16(0xE9)),
        CIMValue(Char16(0)),
        CIMValue(" a&b<c> \r\n"),
        CIMValue(""),
        CIMValue(CIMDateTime("20050607080910.123456+060")),
        CIMValue(path),
        CIMValue(inner),
        CIMValue(CIMClass("X")),
        CIMValue(two<Bool>(true, false)),
        CIMValue(two<String>("", "x,y")),
        CIMValue(Int8Array()),
        CIMValue(two<CIMObjectPath>(path, CIMObjectPath("E"))),
        CIMValue(two<CIMInstance>(inner, inner)),
    };
    CIMInstance instance("O");
    for (const CIMValue& value : values)
        instance.setProperty(
            CIMProperty(("p" + std::to_string(instance.getProperties().size())).c_str(), value));
    instance.setProperty(CIMProperty("null", CIMDataType(CIMDataType::UINT32, -1)));

    const CIMInstance read = readBack(instance);
    EXPECT_EQ(instance.toString(), read.toString());
    for (std::size_t i = 0; i < std::size(values); ++i) {
        const CIMValue value = read.getProperties()[i].getValue();
        EXPECT_EQ(values[i].getType(), value.getType()) << i;
        EXPECT_EQ(values[i].isArray(), value.isArray()) << i;
    }
    EXPECT_FALSE(read.getPropertyValue("null"));
    EXPECT_EQ(CIMDataType(CIMDataType::UINT32, -1), read.getProperty("null").getDataType());
}

TEST(XmlWriter, RejectsNullObjects) {
    const std::string message = "NULLCOWIntrusiveReferenceException: NULL COWReference dereferenced";
    EXPECT_EQ(message, failureOf([] { written(CIMInstance(CIMNULL)); }));
    EXPECT_EQ(message, failureOf([] { written(CIMObjectPath(CIMNULL)); }));
    EXPECT_EQ(message, failureOf([] { written(CIMProperty(CIMNULL)); }));
}

} // namespace
