// Requests: equal to the recorded ones, and cases without a recording.
#include "OW_Array.hpp"
#include "OW_CIMException.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMObjectPath.hpp"
#include "OW_CIMProperty.hpp"
#include "OW_CIMValue.hpp"

#include "Record.hpp"
#include "Xml.hpp"
#include "io/Window.hpp"
#include "types/ObjectData.hpp"
#include "xml/Reply.hpp"
#include "xml/Request.hpp"

#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace OpenWBEM;
using record::Conversation;

// The document of one request of a conversation.
std::string recordedRequest(const char* directory, std::size_t number = 0) {
    return record::bodyOf(record::splitReplies(Conversation{directory}.sent()).at(number));
}

std::string recordedReply(const char* directory, std::size_t number = 0) {
    return record::bodyOf(record::splitReplies(Conversation{directory}.received()).at(number));
}

std::string enumerate(const char* className, const char* nameSpace = "root/cimv2",
                      WBEMFlags::EDeepFlag deep = WBEMFlags::E_DEEP) {
    return xml::enumerateInstances(1, nameSpace, className, deep).body;
}

CIMPropertyArray keys(const std::vector<std::pair<const char*, const char*>>& pairs) {
    CIMPropertyArray all;
    for (const auto& [name, value] : pairs)
        all.push_back(CIMProperty(name, CIMValue(value)));
    return all;
}

std::string get(const char* className, const CIMPropertyArray& keys, UInt32 messageId = 1) {
    return xml::getInstance(messageId, "root/cimv2", CIMObjectPath(className, keys)).body;
}

/** Options that request everything. */
ReadOptions everything(const StringArray* properties) {
    return {WBEMFlags::E_NOT_LOCAL_ONLY, WBEMFlags::E_INCLUDE_QUALIFIERS, WBEMFlags::E_INCLUDE_CLASS_ORIGIN,
            properties};
}

CIMPropertyArray chassisKeys(const char* tag) {
    return keys({{"Tag", tag}, {"CreationClassName", "QAV_K70Chassis"}});
}

CIMInstance fetched(const std::string& body) {
    io::Window window(body.data(), body.size());
    xml::Reply reply(window, 1, "GetInstance");
    CIMInstance instance(CIMNULL);
    EXPECT_TRUE(reply.next(instance));
    reply.finish();
    return instance;
}

// A new instance: keys with a Key qualifier, and one more property.
CIMInstance newInstance(const char* className, const CIMPropertyArray& itsKeys, const char* name,
                        const char* value) {
    Qualifier qualifier;
    qualifier.name = "Key";
    qualifier.value = CIMValue(true);
    CIMPropertyArray qualified;
    for (const CIMProperty& key : itsKeys) {
        detail::Shared<Declaration> declaration(new Declaration(ObjectAccess::declaration(key)));
        declaration.edit().qualifiers.push_back(qualifier);
        qualified.push_back(ObjectAccess::property(declaration, key.getValue()));
    }
    CIMInstance instance(className);
    instance.setKeys(qualified);
    for (const CIMProperty& key : std::as_const(qualified))
        instance.setProperty(key);
    instance.setProperty(CIMProperty(name, CIMValue(value)));
    return instance;
}

xml::Request modify(const CIMInstance& instance,
                    WBEMFlags::EIncludeQualifiersFlag qualifiers = WBEMFlags::E_INCLUDE_QUALIFIERS,
                    const StringArray* properties = nullptr, UInt32 messageId = 1) {
    return xml::modifyInstance(messageId, "root/cimv2", instance, qualifiers, properties);
}

TEST(Request, ForAnEnumerationEqualsTheRecordedOne) {
    const std::pair<const char*, const char*> examples[] = {
        {"xml-tcp-anon/enum_AllTypes", "QAV_AllTypes"},
        {"xml-tcp-anon/enum_Many", "QAV_Many"},
        {"xml-tcp-anon/enum_badclass", "QAV_Nope"},
        {"http-tcp-anon/enum_OperatingSystem", "QAV_OperatingSystem"},
    };
    for (const auto& [directory, className] : examples)
        EXPECT_EQ(recordedRequest(directory), enumerate(className)) << directory;
    EXPECT_EQ(recordedRequest("xml-tcp-anon/enum_shallow"),
              enumerate("QAV_Base", "root/cimv2", WBEMFlags::E_SHALLOW));
    EXPECT_EQ(recordedRequest("xml-tcp-anon/enum_badnamespace"),
              enumerate("QAV_OperatingSystem", "root/nosuch"));
}

TEST(Request, ForAnInstanceEqualsTheRecordedOne) {
    EXPECT_EQ(recordedRequest("xml-tcp-anon/get_alltypes_max"), get("QAV_AllTypes", keys({{"Id", "max"}})));
    EXPECT_EQ(recordedRequest("xml-tcp-anon/get_badclass"), get("QAV_Nope", keys({{"Name", "x"}})));
    EXPECT_EQ(recordedRequest("xml-tcp-anon/get_ok"),
              get("QAV_OperatingSystem",
                  keys({{"CreationClassName", "QAV_OperatingSystem"}, {"Name", "linux-box.example.org"}})));
    EXPECT_EQ(recordedRequest("xml-tcp-anon/modify_ok", 2),
              get("QAV_K70Chassis", chassisKeys("chassis-1"), 3));
}

TEST(Request, ToModifyAFetchedInstanceEqualsTheRecordedOne) {
    CIMInstance changed = fetched(recordedReply("xml-tcp-anon/modify_ok"));
    changed.setProperty(CIMProperty("Model", CIMValue("changed \"model\" & <more>")));
    EXPECT_EQ(recordedRequest("xml-tcp-anon/modify_ok", 1),
              modify(changed, WBEMFlags::E_INCLUDE_QUALIFIERS, nullptr, 2).body);

    CIMInstance extended = fetched(recordedReply("xml-tcp-anon/modify_badprop"));
    extended.setProperty(CIMProperty("NoSuchProp", CIMValue("x")));
    EXPECT_EQ(recordedRequest("xml-tcp-anon/modify_badprop", 1),
              modify(extended, WBEMFlags::E_INCLUDE_QUALIFIERS, nullptr, 2).body);
}

TEST(Request, ToModifyANewInstanceEqualsTheRecordedOne) {
    const auto without = WBEMFlags::E_EXCLUDE_QUALIFIERS;
    EXPECT_EQ(
        recordedRequest("xml-tcp-anon/modify_bare_ok"),
        modify(newInstance("QAV_K70Chassis", chassisKeys("chassis-1"), "ElementName", "bare"), without).body);
    EXPECT_EQ(recordedRequest("xml-tcp-anon/modify_notfound"),
              modify(newInstance("QAV_K70Chassis", chassisKeys("nope"), "Model", "x"), without).body);
    EXPECT_EQ(recordedRequest("xml-tcp-anon/modify_badclass"),
              modify(newInstance("QAV_Nope", keys({{"Name", "x"}}), "Model", "x"), without).body);
}

TEST(Request, NamesItsOperation) {
    const xml::Request request = modify(CIMInstance("C"));
    EXPECT_STREQ("ModifyInstance", request.method);
    EXPECT_STREQ("1.0", request.protocolVersion);
}

TEST(Request, ToModifyPartOfAnInstanceNeedsProtocolVersion11) {
    const StringArray properties(1, String("a"));
    const auto version = [](const xml::Request& request) {
        EXPECT_NE(std::string::npos,
                  request.body.find(std::string("PROTOCOLVERSION=\"") + request.protocolVersion + "\""));
        return std::string(request.protocolVersion);
    };
    EXPECT_EQ("1.0", version(modify(CIMInstance("C"))));
    EXPECT_EQ("1.1", version(modify(CIMInstance("C"), WBEMFlags::E_EXCLUDE_QUALIFIERS)));
    EXPECT_EQ("1.1", version(modify(CIMInstance("C"), WBEMFlags::E_INCLUDE_QUALIFIERS, &properties)));
}

const std::string begin =
    "<?xml version=\"1.0\" encoding=\"utf-8\" ?><CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\">"
    "<MESSAGE ID=\"65535\" PROTOCOLVERSION=\"1.0\"><SIMPLEREQ><IMETHODCALL NAME=\"";
const std::string inRoot =
    "\"><LOCALNAMESPACEPATH><NAMESPACE NAME=\"root\"></NAMESPACE></LOCALNAMESPACEPATH>";
const std::string end = "</IMETHODCALL></SIMPLEREQ></MESSAGE></CIM>\r\n";

std::string flag(const char* name, const char* value) {
    return std::string("<IPARAMVALUE NAME=\"") + name + "\"><VALUE>" + value + "</VALUE></IPARAMVALUE>";
}

std::string propertyList(const char* elements) {
    return std::string("<IPARAMVALUE NAME=\"PropertyList\"><VALUE.ARRAY>") + elements +
           "</VALUE.ARRAY></IPARAMVALUE>";
}

StringArray twoProperties() {
    StringArray properties;
    properties.push_back("a");
    properties.push_back("b<");
    return properties;
}

TEST(Request, ToEnumerateContainsEveryNonDefaultArgument) {
    const StringArray properties = twoProperties();
    ReadOptions localOnly;
    localOnly.localOnly = WBEMFlags::E_LOCAL_ONLY;
    EXPECT_EQ(
        begin + "EnumerateInstances" + inRoot +
            "<IPARAMVALUE NAME=\"ClassName\"><CLASSNAME NAME=\"C\"/></IPARAMVALUE>" +
            flag("DeepInheritance", "FALSE") + flag("LocalOnly", "FALSE") +
            flag("IncludeQualifiers", "TRUE") + flag("IncludeClassOrigin", "TRUE") +
            propertyList("<VALUE>a</VALUE><VALUE>b&lt;</VALUE>") + end,
        xml::enumerateInstances(65535, "root", "C", WBEMFlags::E_SHALLOW, everything(&properties)).body);
    EXPECT_EQ(begin + "EnumerateInstances" + inRoot +
                  "<IPARAMVALUE NAME=\"ClassName\"><CLASSNAME NAME=\"a&quot;b\"/></IPARAMVALUE>" + end,
              xml::enumerateInstances(65535, "root", "a\"b", WBEMFlags::E_DEEP, localOnly).body);
}

TEST(Request, ToGetContainsEveryNonDefaultArgument) {
    const StringArray none;
    CIMObjectPath path("C", String("some/where"));
    path.setHost("else.example");
    EXPECT_EQ(
        begin + "GetInstance" + inRoot + flag("LocalOnly", "FALSE") + flag("IncludeQualifiers", "TRUE") +
            flag("IncludeClassOrigin", "TRUE") +
            "<IPARAMVALUE NAME=\"InstanceName\"><INSTANCENAME CLASSNAME=\"C\"></INSTANCENAME></IPARAMVALUE>" +
            propertyList("") + end,
        xml::getInstance(65535, "root", path, everything(&none)).body);
}

TEST(Request, ToModifyNamesAnInstanceWithoutKeysByItsClass) {
    CIMInstance instance("C");
    instance.setProperty(CIMProperty("p", CIMValue("v")));
    EXPECT_EQ(
        begin + "ModifyInstance" + inRoot +
            "<IPARAMVALUE NAME=\"ModifiedInstance\"><VALUE.NAMEDINSTANCE><INSTANCENAME CLASSNAME=\"C\">"
            "</INSTANCENAME><INSTANCE CLASSNAME=\"C\"><PROPERTY NAME=\"p\" TYPE=\"string\" ><VALUE>v</VALUE>"
            "</PROPERTY></INSTANCE></VALUE.NAMEDINSTANCE></IPARAMVALUE>" +
            end,
        xml::modifyInstance(65535, "root", instance, WBEMFlags::E_INCLUDE_QUALIFIERS, nullptr).body);
}

TEST(Request, SplitsTheNamesOfANamespace) {
    const std::string expected = enumerate("C");
    for (const char* nameSpace : {"/root/cimv2", "//root//cimv2/", "root\\cimv2", "\\root/cimv2"})
        EXPECT_EQ(expected, enumerate("C", nameSpace)) << nameSpace;
    EXPECT_NE(std::string::npos, enumerate("C", "").find("<LOCALNAMESPACEPATH></LOCALNAMESPACEPATH>"));
}

TEST(Request, OfANullOrNamelessObjectThrows) {
    EXPECT_EQ("CIMException: requested object could not be found", failureOf([] { enumerate(""); }));
    EXPECT_EQ("NULLCOWIntrusiveReferenceException: NULL COWReference dereferenced",
              failureOf([] { xml::getInstance(1, "root", CIMObjectPath(CIMNULL)); }));
    EXPECT_EQ("NULLCOWIntrusiveReferenceException: NULL COWReference dereferenced",
              failureOf([] { modify(CIMInstance(CIMNULL)); }));
    CIMInstance nameless("C");
    nameless.setProperty(CIMProperty("", CIMDataType()));
    EXPECT_EQ("CIMException: general error (property must have a name)",
              failureOf([&] { modify(nameless); }));
}

} // namespace
