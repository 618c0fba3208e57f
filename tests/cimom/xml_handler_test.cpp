#include "OW_WBEMFlags.hpp"
#include "XmlCalls.hpp"
#include "xml/Reply.hpp"
#include "xml/Request.hpp"

#include <gtest/gtest.h>

using namespace cimom;
using namespace OpenWBEM;
using namespace xml_calls;

namespace {

/** The result of an operation, without the elements that must enclose it. */
std::string returned(const std::string& operation, const OperationReply& reply) {
    const std::string before = "<?xml version=\"1.0\" encoding=\"utf-8\" ?><CIM CIMVERSION=\"2.0\" "
                               "DTDVERSION=\"2.0\"><MESSAGE ID=\"4711\" PROTOCOLVERSION=\"1.0\"><SIMPLERSP>"
                               "<IMETHODRESPONSE NAME=\"" +
                               operation + "\">";
    const std::string after = "</IMETHODRESPONSE></SIMPLERSP></MESSAGE></CIM>\r\n";
    EXPECT_EQ(before, reply.body.substr(0, before.size()));
    EXPECT_EQ(after, reply.body.substr(reply.body.size() - after.size()));
    return reply.body.substr(before.size(), reply.body.size() - before.size() - after.size());
}

std::string returnedBy(const std::string& operation, const std::string& arguments) {
    const OperationReply reply = replyTo(call(operation, arguments));
    EXPECT_EQ("no error", error(reply));
    return returned(operation, reply);
}

std::string errorOf(const std::string& operation, const std::string& arguments) {
    return error(replyTo(call(operation, arguments)));
}

} // namespace

TEST(XmlHandler, AnEnumerationIsWhatTheClientReads) {
    const xml::Request request = xml::enumerateInstances(77, "root/cimv2", "QAV_Lamp", WBEMFlags::E_DEEP);
    const OperationReply reply = replyTo(request.body);
    EXPECT_EQ("EnumerateInstances QAV_Lamp", reply.title);
    io::Window window(reply.body.data(), reply.body.size());
    xml::Reply read(window, 77, "EnumerateInstances");
    std::vector<CIMInstance> found;
    for (CIMInstance instance; read.next(instance);)
        found.push_back(instance);
    read.finish();
    ASSERT_EQ(2u, found.size());
    EXPECT_EQ("green", found[1].getPropertyValue("Colour").toString());
    EXPECT_EQ("60", found[1].getPropertyValue("Watts").toString());
    EXPECT_EQ(1u, found[1].getKeyValuePairs().size());
    EXPECT_EQ(5u, found[1].getProperties().size());
}

TEST(XmlHandler, AnEnumerationHoldsOnlyTheListedProperties) {
    const std::string list =
        argument("PropertyList", "<VALUE.ARRAY><VALUE>watts</VALUE><VALUE>Volts</VALUE></VALUE.ARRAY>");
    const std::string instance = "<INSTANCE CLASSNAME=\"QAV_Lamp\"><PROPERTY NAME=\"Watts\" TYPE=\"uint16\" >"
                                 "<VALUE>60</VALUE></PROPERTY></INSTANCE>";
    const auto named = [&](const std::string& colour) {
        return "<VALUE.NAMEDINSTANCE><INSTANCENAME CLASSNAME=\"QAV_Lamp\"><KEYBINDING NAME=\"Colour\">"
               "<KEYVALUE VALUETYPE=\"string\" TYPE=\"string\">" +
               colour + "</KEYVALUE></KEYBINDING></INSTANCENAME>" + instance + "</VALUE.NAMEDINSTANCE>";
    };
    EXPECT_EQ("<IRETURNVALUE>" + named("red") + named("green") + "</IRETURNVALUE>",
              returnedBy("EnumerateInstances", className("QAV_Lamp") + list));
    EXPECT_EQ("<IRETURNVALUE>" + instance + "</IRETURNVALUE>",
              returnedBy("GetInstance", argument("InstanceName", lampName("red")) + list));
}

TEST(XmlHandler, AListWithoutAValueWantsEverything) {
    EXPECT_EQ(
        returnedBy("GetInstance", argument("InstanceName", lampName("red"))),
        returnedBy("GetInstance", argument("InstanceName", lampName("red")) + argument("PropertyList", "")));
}

TEST(XmlHandler, InstanceNamesAreNames) {
    EXPECT_EQ("<IRETURNVALUE><INSTANCENAME CLASSNAME=\"QAV_Socket\"><KEYBINDING NAME=\"Wall\"><KEYVALUE "
              "VALUETYPE=\"string\" TYPE=\"string\">north</KEYVALUE></KEYBINDING><KEYBINDING "
              "NAME=\"Number\"><KEYVALUE VALUETYPE=\"numeric\" "
              "TYPE=\"uint32\">7</KEYVALUE></KEYBINDING></INSTANCENAME></IRETURNVALUE>",
              returnedBy("EnumerateInstanceNames", className("QAV_Socket")));
}

TEST(XmlHandler, AnInstanceIsTheOneOfItsName) {
    const std::string value = returnedBy("GetInstance", argument("InstanceName", lampName("green")));
    EXPECT_NE(std::string::npos, value.find("<VALUE>green</VALUE>"));
    EXPECT_EQ("6 /root/cimv2:QAV_Lamp.Colour=\"blue\"",
              errorOf("GetInstance", argument("InstanceName", lampName("blue"))));
}

TEST(XmlHandler, AClassIsItsDeclaration) {
    EXPECT_EQ(
        "<IRETURNVALUE><CLASS NAME=\"QAV_Socket\" ><PROPERTY NAME=\"Wall\" TYPE=\"string\" ><QUALIFIER "
        "NAME=\"Key\" TYPE=\"boolean\" OVERRIDABLE=\"false\" ><VALUE>true</VALUE></QUALIFIER></PROPERTY>"
        "<PROPERTY NAME=\"Number\" TYPE=\"uint32\" ><QUALIFIER NAME=\"Key\" TYPE=\"boolean\" "
        "OVERRIDABLE=\"false\" ><VALUE>true</VALUE></QUALIFIER></PROPERTY><PROPERTY NAME=\"Label\" "
        "TYPE=\"string\" ><QUALIFIER NAME=\"Write\" TYPE=\"boolean\" OVERRIDABLE=\"false\" ><VALUE>true"
        "</VALUE></QUALIFIER></PROPERTY></CLASS></IRETURNVALUE>",
        returnedBy("GetClass", className("QAV_Socket")));
    EXPECT_EQ("<IRETURNVALUE><CLASS NAME=\"QAV_Socket\" ><PROPERTY NAME=\"Label\" TYPE=\"string\" "
              "CLASSORIGIN=\"QAV_Socket\" ></PROPERTY></CLASS></IRETURNVALUE>",
              returnedBy("GetClass",
                         className("QAV_Socket") + argument("IncludeQualifiers", "<VALUE>FALSE</VALUE>") +
                             argument("IncludeClassOrigin", "<VALUE>True</VALUE>") +
                             argument("PropertyList", "<VALUE.ARRAY><VALUE>LABEL</VALUE></VALUE.ARRAY>")));
}

TEST(XmlHandler, ClassesAreAllThatAreServed) {
    EXPECT_EQ("<IRETURNVALUE><CLASSNAME NAME=\"QAV_Broken\"/><CLASSNAME NAME=\"QAV_Lamp\"/><CLASSNAME "
              "NAME=\"QAV_Socket\"/></IRETURNVALUE>",
              returnedBy("EnumerateClassNames", argument("DeepInheritance", "<VALUE>TRUE</VALUE>")));
    EXPECT_EQ("<IRETURNVALUE></IRETURNVALUE>", returnedBy("EnumerateClassNames", className("QAV_Lamp")));
    const std::string classes =
        returnedBy("EnumerateClasses", argument("IncludeQualifiers", "<VALUE>false</VALUE>"));
    EXPECT_NE(std::string::npos, classes.find("<CLASS NAME=\"QAV_Lamp\" ><PROPERTY NAME=\"Colour\" TYPE="));
    EXPECT_EQ(std::string::npos, classes.find("QUALIFIER"));
}

TEST(XmlHandler, APropertyIsItsValue) {
    const auto property = [](const std::string& name) {
        return argument("InstanceName", lampName("red")) +
               argument("PropertyName", "<VALUE>" + name + "</VALUE>");
    };
    EXPECT_EQ("<IRETURNVALUE><VALUE>60</VALUE></IRETURNVALUE>", returnedBy("GetProperty", property("Watts")));
    EXPECT_EQ("<IRETURNVALUE></IRETURNVALUE>", returnedBy("GetProperty", property("LitSince")));
    EXPECT_EQ("12 Volts", errorOf("GetProperty", property("Volts")));
}

TEST(XmlHandler, AModificationReturnsNothing) {
    const OperationReply reply = replyTo(modification(lampName("red"), room));
    EXPECT_EQ("no error", error(reply));
    EXPECT_EQ("", returned("ModifyInstance", reply));
    EXPECT_EQ("ModifyInstance QAV_Lamp", reply.title);
}

TEST(XmlHandler, AModificationWritesWhatIsListed) {
    ObjectManager manager = lampManager({"red"});
    const XmlHandler handler(manager);
    const std::string onlyOwner = argument("PropertyList", "<VALUE.ARRAY><VALUE>Owner</VALUE></VALUE.ARRAY>");
    handler.handle(modification(lampName("red"), room + owner, onlyOwner), Access::write);
    const CIMInstance lamp =
        manager.getInstance("root/cimv2", CIMObjectPath::parse("QAV_Lamp.Colour=\"red\""), nullptr);
    EXPECT_EQ("me", lamp.getPropertyValue("Owner").toString());
    EXPECT_FALSE(lamp.getPropertyValue("Room"));
}

TEST(XmlHandler, AModificationIsNamedByItsKeysOrItsProperties) {
    const std::string colour = "<PROPERTY NAME=\"Colour\" TYPE=\"string\"><VALUE>red</VALUE></PROPERTY>";
    const std::string noKeys = "<INSTANCENAME CLASSNAME=\"QAV_Lamp\"></INSTANCENAME>";
    EXPECT_EQ("no error", error(replyTo(modification(noKeys, colour + room))));
    EXPECT_EQ("4 object path (/root/cimv2:QAV_Lamp) has key (Colour) with NULL value",
              error(replyTo(modification(noKeys, room))));
    EXPECT_EQ("7 Colour", error(replyTo(modification(lampName("green"), colour + room))));
}

TEST(XmlHandler, AModificationIsOfOneClass) {
    EXPECT_EQ("4 The object path and the instance are of different classes",
              error(replyTo(modification(replaced(lampName("red"), "QAV_Lamp", "QAV_Socket"), room))));
    EXPECT_EQ("no error",
              error(replyTo(modification(replaced(lampName("red"), "QAV_Lamp", "qav_LAMP"), room))));
}

TEST(XmlHandler, AModificationListsNoOtherProperties) {
    const std::string list =
        argument("PropertyList", "<VALUE.ARRAY><VALUE>Room</VALUE><VALUE>Volts</VALUE></VALUE.ARRAY>");
    EXPECT_EQ("4 PropertyList: the class has no property Volts",
              error(replyTo(modification(lampName("red"), room, list))));
}

TEST(XmlHandler, PropertiesOfInstancesSayTheirClassWhenAsked) {
    const std::string origin = argument("IncludeClassOrigin", "<VALUE>TRUE</VALUE>");
    const std::string watts = "<PROPERTY NAME=\"Watts\" TYPE=\"uint16\" CLASSORIGIN=\"QAV_Lamp\" >";
    for (const std::string& value :
         {returnedBy("EnumerateInstances", className("QAV_Lamp") + origin),
          returnedBy("GetInstance", argument("InstanceName", lampName("red")) + origin)})
        EXPECT_NE(std::string::npos, value.find(watts)) << value;
    EXPECT_EQ(std::string::npos, returnedBy("EnumerateInstances", className("QAV_Lamp")).find("CLASSORIGIN"));
}

TEST(XmlHandler, WhoMayOnlyReadIsDenied) {
    EXPECT_EQ("2 only root, the object manager's user and users not marked read-only may write",
              error(replyTo(modification(lampName("red"), room), Access::read)));
}

TEST(XmlHandler, AnErrorStandsInTheBodyToo) {
    const OperationReply reply = replyTo(call("EnumerateInstances", className("QAV_No&lt;pe")));
    EXPECT_EQ("5 /root/cimv2:QAV_No<pe", error(reply));
    EXPECT_EQ("<ERROR CODE=\"5\" DESCRIPTION=\"/root/cimv2:QAV_No&lt;pe\"></ERROR>",
              returned("EnumerateInstances", reply));
    EXPECT_EQ("1 the lamp is broken", errorOf("EnumerateInstances", className("QAV_Broken")));
}

TEST(XmlHandler, AnErrorQuotesNoMoreThanAKilobyte) {
    const std::string start = "/root/cimv2:";
    // A character that the limit would split is omitted.
    const std::string name = std::string(maximumDescription - start.size() - 1, 'x') + "\xC3\xA4";
    EXPECT_EQ("5 " + start + name.substr(0, name.size() - 2), errorOf("EnumerateInstances", className(name)));
    EXPECT_EQ("5 " + start + name.substr(1),
              errorOf("EnumerateInstances", className(name.substr(1) + std::string(100000, 'x'))));
}

TEST(XmlHandler, AnErrorWithoutADescriptionHasNone) {
    const OperationReply reply = replyTo(call("EnumerateInstances", className("QAV_Lamp"), ""));
    EXPECT_EQ("<ERROR CODE=\"3\"></ERROR>", returned("EnumerateInstances", reply));
}

TEST(XmlHandler, NamesOfOperationsAndParametersMayBeInAnyCase) {
    const OperationReply reply =
        replyTo(call("enumerateINSTANCENAMES", replaced(className("QAV_Lamp"), "ClassName", "CLASSname")));
    EXPECT_EQ("no error", error(reply));
    EXPECT_NE("", returned("enumerateINSTANCENAMES", reply));
}

TEST(XmlHandler, OtherOperationsAreNotSupported) {
    EXPECT_EQ("7 DeleteInstance", errorOf("DeleteInstance", argument("InstanceName", lampName("red"))));
    EXPECT_EQ("7 ", errorOf("", ""));
}

TEST(XmlHandler, MethodsOfClassesAreNotSupported) {
    const std::string document = replaced(replaced(call("Reset", ""), "<IMETHODCALL", "<METHODCALL"),
                                          "</IMETHODCALL>", "</METHODCALL>");
    const OperationReply reply = replyTo(document);
    EXPECT_EQ("7 Reset", error(reply));
    EXPECT_NE(std::string::npos, reply.body.find("<METHODRESPONSE NAME=\"Reset\"><ERROR CODE=\"7\""));
    const OperationReply known =
        replyTo(replaced(replaced(good, "<IMETHODCALL", "<METHODCALL"), "</IMETHODCALL>", "</METHODCALL>"));
    EXPECT_EQ("7 EnumerateInstances", error(known));
}

TEST(XmlHandler, OtherParametersAreInvalid) {
    EXPECT_EQ("4 Parameter Clazz is not a valid parameter",
              errorOf("EnumerateInstances", className("QAV_Lamp") + argument("Clazz", "")));
}

TEST(XmlHandler, ParametersThatMustBeThereAreMissed) {
    const auto missing = [](const std::string& name) {
        return "4 Non-optional parameter " + name + " was not given";
    };
    EXPECT_EQ(missing("ClassName"), errorOf("EnumerateInstances", ""));
    EXPECT_EQ(missing("ClassName"), errorOf("EnumerateInstanceNames", argument("ClassName", "")));
    EXPECT_EQ(missing("ClassName"), errorOf("GetClass", ""));
    EXPECT_EQ(missing("InstanceName"), errorOf("GetInstance", ""));
    EXPECT_EQ(missing("PropertyName"), errorOf("GetProperty", argument("InstanceName", lampName("red"))));
    EXPECT_EQ(missing("InstanceName"),
              errorOf("GetProperty", argument("PropertyName", "<VALUE>Watts</VALUE>")));
    EXPECT_EQ(missing("ModifiedInstance"), errorOf("ModifyInstance", ""));
}

TEST(XmlHandler, AFlagIsTrueOrFalse) {
    EXPECT_EQ("4 IncludeQualifiers is neither true nor false",
              errorOf("GetClass", className("QAV_Lamp") + argument("IncludeQualifiers", "<VALUE>1</VALUE>")));
}

TEST(XmlHandler, AFlagThatChangesNothingIsTrueOrFalseToo) {
    EXPECT_EQ(
        "4 LocalOnly is neither true nor false",
        errorOf("EnumerateInstances", className("QAV_Lamp") + argument("LocalOnly", "<VALUE>yes</VALUE>")));
}

TEST(XmlHandler, TheNamespaceIsThatOfTheRequest) {
    EXPECT_EQ("3 root", error(replyTo(call("EnumerateInstances", className("QAV_Lamp"),
                                           "<NAMESPACE NAME=\"root\"/>"))));
    EXPECT_EQ("3 ", error(replyTo(call("EnumerateInstances", className("QAV_Lamp"), ""))));
}

TEST(XmlHandler, BytesThatXmlForbidsDoNotReachTheReply) {
    ObjectManager manager = lampManager({"r\x01"
                                         "ed\xFF"});
    const std::string body = completed(XmlHandler(manager).handle(good, Access::read)).body;
    EXPECT_NE(std::string::npos, body.find("<VALUE>r\xEF\xBF\xBD"
                                           "ed\xEF\xBF\xBD</VALUE>"));
    EXPECT_NE(std::string::npos,
              replyTo(call("EnumerateInstances", className("QAV_\xFE"))).body.find("QAV_\xEF\xBF\xBD"));
}
