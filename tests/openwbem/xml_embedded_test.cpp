// Embedded objects: parsed from texts in XML, limited in depth and cost.
#include "OW_CIMClass.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMProperty.hpp"
#include "OW_CIMValue.hpp"

#include "Xml.hpp"
#include "io/Limits.hpp"
#include "xml/Entities.hpp"

#include <gtest/gtest.h>
#include <string>

namespace {

using namespace OpenWBEM;
using xml_test::instance;
using xml_test::property;
using xml_test::repeated;
using xml_test::text;

std::string escaped(const std::string& text) {
    std::string result;
    xml::appendEscaped(result, text);
    return result;
}

const std::string byAttribute = "<PROPERTY NAME=\"p\" TYPE=\"string\" EmbeddedObject=\"object\">";
const std::string inner = "<INSTANCE CLASSNAME=\"I\"><PROPERTY NAME=\"q\" TYPE=\"string\"><VALUE>a &lt; "
                          "b</VALUE></PROPERTY></INSTANCE>";

std::string holding(const std::string& property) {
    return "<INSTANCE CLASSNAME=\"O\">" + property + "</INSTANCE>";
}

TEST(Embedded, InstanceIsParsedIfAQualifierDeclaresIt) {
    const CIMProperty read =
        property("<PROPERTY NAME=\"p\" TYPE=\"string\"><QUALIFIER NAME=\"EMBEDDEDOBJECT\" "
                 "TYPE=\"boolean\"><VALUE>true</VALUE></QUALIFIER><VALUE>" +
                 escaped(inner) + "</VALUE></PROPERTY>");
    EXPECT_EQ(CIMDataType::STRING, read.getDataType().getType());
    EXPECT_EQ(CIMDataType::EMBEDDEDINSTANCE, read.getValue().getType());
    EXPECT_EQ("instance of I {\nq = a < b;\n}\n", text(read.getValue()));
}

TEST(Embedded, InstanceIsParsedIfAnAttributeDeclaresItInEitherCase) {
    for (const char* name : {"EmbeddedObject", "EMBEDDEDOBJECT"}) {
        const CIMProperty read = property(std::string("<PROPERTY NAME=\"p\" TYPE=\"string\" ") + name +
                                          "=\"instance\"><VALUE>" + escaped(inner) + "</VALUE></PROPERTY>");
        EXPECT_EQ(CIMDataType::EMBEDDEDINSTANCE, read.getValue().getType()) << name;
    }
}

TEST(Embedded, TextWithoutADeclarationIsAString) {
    EXPECT_EQ(inner,
              text(property("<PROPERTY NAME=\"p\" TYPE=\"string\"><QUALIFIER NAME=\"EmbeddedObject\" TYPE=\""
                            "boolean\"><VALUE>false</VALUE></QUALIFIER><VALUE>" +
                            escaped(inner) + "</VALUE></PROPERTY>")
                       .getValue()));
}

TEST(Embedded, ClassIsParsedByItsElement) {
    const CIMValue value =
        property(byAttribute + "<VALUE>&lt;CLASS NAME=\"C\"/&gt;</VALUE></PROPERTY>").getValue();
    EXPECT_EQ(CIMDataType::EMBEDDEDCLASS, value.getType());
    EXPECT_EQ(String("C"), value.toCIMClass().getName());
}

TEST(Embedded, ObjectMayBeCharacterData) {
    EXPECT_EQ(CIMDataType::EMBEDDEDINSTANCE,
              property(byAttribute + "<VALUE><![CDATA[" + holding("") + "]]></VALUE></PROPERTY>")
                  .getValue()
                  .getType());
}

TEST(Embedded, ObjectIsNullForABlankText) {
    EXPECT_FALSE(property(byAttribute + "<VALUE></VALUE></PROPERTY>").getValue());
    EXPECT_FALSE(property(byAttribute + "<VALUE> </VALUE></PROPERTY>").getValue());
}

TEST(Embedded, ObjectsMayBeElementsOfArrays) {
    const std::string begin =
        "<PROPERTY.ARRAY NAME=\"p\" TYPE=\"string\" EmbeddedObject=\"object\"><VALUE.ARRAY>";
    const std::string end = "</VALUE.ARRAY></PROPERTY.ARRAY>";
    const std::string one = "<VALUE>" + escaped(inner) + "</VALUE>";
    const std::string classElement = "<VALUE>&lt;CLASS NAME=\"C\"/&gt;</VALUE>";
    const CIMValue instances = property(begin + one + "<VALUE.NULL/><EXTRA/>" + one + end).getValue();
    EXPECT_EQ(CIMDataType::EMBEDDEDINSTANCE, instances.getType());
    ASSERT_EQ(3U, instances.getArraySize());
    EXPECT_EQ(String("I"), instances.toCIMInstanceArray()[2].getClassName());
    const CIMValue classes = property(begin + classElement + classElement + end).getValue();
    EXPECT_EQ(CIMDataType::EMBEDDEDCLASS, classes.getType());
    EXPECT_EQ(2U, classes.getArraySize());
    EXPECT_EQ("CIMException: invalid parameter passed to method (Classes and instances in one array)",
              failureOf([&] { property(begin + one + classElement + end); }));
}

TEST(Embedded, TextThatIsNotAnObjectIsRejected) {
    const auto failure = [](const std::string& content) {
        return failureOf(
            [&] { property("\n" + byAttribute + "<VALUE>" + escaped(content) + "</VALUE></PROPERTY>"); });
    };
    EXPECT_EQ(
        "CIMException: invalid parameter passed to method (An embedded object is neither instance nor class)",
        failure("<VALUE/>"));
    EXPECT_EQ("XMLParseException: Line 2: Text before the document: n", failure("no XML"));
    EXPECT_EQ("XMLParseException: Line 2: Text after the document: <",
              failure("<CLASS NAME=\"C\"/><CLASS/>"));
    EXPECT_EQ("XMLParseException: Line 2: Premature end: the document is truncated",
              failure("<CLASS NAME=\"C\">"));
}

// Nested instances, this many in all; the innermost contains a text.
std::string nested(unsigned levels, const std::string& text = "") {
    std::string element =
        holding("<PROPERTY NAME=\"p\" TYPE=\"string\"><VALUE>" + text + "</VALUE></PROPERTY>");
    while (--levels > 0)
        element = holding(byAttribute + "<VALUE>" + escaped(element) + "</VALUE></PROPERTY>");
    return element;
}

TEST(Embedded, ObjectsMayNestToTheMaximumDepth) {
    CIMInstance read = instance(nested(io::maximumDepth, "end"));
    for (unsigned level = 1; level < io::maximumDepth; ++level)
        read = read.getPropertyValue("p").toCIMInstance();
    EXPECT_EQ("end", text(read.getPropertyValue("p")));
}

TEST(Embedded, ObjectsBeyondTheMaximumDepthAreRejected) {
    EXPECT_EQ("XMLParseException: Line 1: Too deep: objects are nested too deeply",
              failureOf([] { instance(nested(io::maximumDepth + 1)); }));
}

TEST(Embedded, ObjectsCostASmallMultipleOfTheReceivedBytes) {
    const std::string megabyte(1024 * 1024, 'x');
    EXPECT_NO_THROW(instance(nested(5, megabyte)));
    EXPECT_EQ("XMLParseException: Line 1: Too long: embedded objects",
              failureOf([&] { instance(nested(20, megabyte)); }));
}

TEST(Embedded, ReferencesHaveTheSameMaximumDepth) {
    const std::string begin = "<VALUE.REFERENCE><INSTANCENAME CLASSNAME=\"C\"><KEYBINDING NAME=\"k\">";
    const std::string end = "</KEYBINDING></INSTANCENAME></VALUE.REFERENCE>";
    const auto nestedReferences = [&](unsigned levels) {
        return holding("<PROPERTY.REFERENCE NAME=\"p\">" + repeated(begin, levels) + repeated(end, levels) +
                       "</PROPERTY.REFERENCE>");
    };
    EXPECT_NO_THROW(instance(nestedReferences(io::maximumDepth - 1)));
    for (const unsigned levels : {io::maximumDepth, 200000U})
        EXPECT_EQ("XMLParseException: Line 1: Too deep: objects are nested too deeply",
                  failureOf([&] { instance(nestedReferences(levels)); }));
}

TEST(Embedded, EndlesslyNestedPathsAreRejected) {
    EXPECT_EQ("XMLParseException: Line 1: Too deep: elements are nested too deeply", failureOf([] {
                  instance(holding("<PROPERTY.REFERENCE NAME=\"p\"><VALUE.REFERENCE>" +
                                   repeated("<INSTANCEPATH>", 200000)));
              }));
}

} // namespace
