#ifndef TESTS_CIMOM_XML_CALLS_HPP
#define TESTS_CIMOM_XML_CALLS_HPP
#include "Completed.hpp"
#include "LampProvider.hpp"
#include "protocol/XmlHandler.hpp"

#include <gtest/gtest.h>
#include <string>

// Requests in CIM-XML for the classes of LampProvider.hpp, and their replies.
namespace xml_calls {

using namespace cimom;

inline OperationReply replyTo(const std::string& document, Access access = Access::write) {
    ObjectManager manager = lampManager({"red", "green"});
    return completed(XmlHandler(manager).handle(document, access));
}

inline std::string error(const OperationReply& reply) {
    return reply.error ? std::to_string(reply.error->code) + " " + reply.error->description : "no error";
}

/** A document around a call of an operation with arguments. */
inline std::string
call(const std::string& operation, const std::string& arguments,
     const std::string& nameSpace = "<NAMESPACE NAME=\"root\"/><NAMESPACE NAME=\"cimv2\"/>") {
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\">\n"
           "<MESSAGE ID=\"4711\" PROTOCOLVERSION=\"1.0\"><SIMPLEREQ>\n<IMETHODCALL NAME=\"" +
           operation + "\"><LOCALNAMESPACEPATH>" + nameSpace + "</LOCALNAMESPACEPATH>\n" + arguments +
           "</IMETHODCALL></SIMPLEREQ></MESSAGE></CIM>\n";
}

inline std::string argument(const std::string& name, const std::string& value) {
    return "<IPARAMVALUE NAME=\"" + name + "\">" + value + "</IPARAMVALUE>";
}

inline std::string className(const std::string& name) {
    return argument("ClassName", "<CLASSNAME NAME=\"" + name + "\"/>");
}

inline std::string lampName(const std::string& colour) {
    return "<INSTANCENAME CLASSNAME=\"QAV_Lamp\"><KEYBINDING NAME=\"Colour\"><KEYVALUE>" + colour +
           "</KEYVALUE></KEYBINDING></INSTANCENAME>";
}

inline std::string replaced(std::string text, const std::string& part, const std::string& with) {
    const std::size_t at = text.find(part);
    EXPECT_NE(std::string::npos, at) << part;
    return text.replace(at, part.size(), with);
}

inline const std::string good = call("EnumerateInstances", className("QAV_Lamp"));

inline std::string modification(const std::string& keys, const std::string& properties,
                                const std::string& further = "") {
    return call("ModifyInstance",
                argument("ModifiedInstance", "<VALUE.NAMEDINSTANCE>" + keys +
                                                 "<INSTANCE CLASSNAME=\"QAV_Lamp\">" + properties +
                                                 "</INSTANCE></VALUE.NAMEDINSTANCE>") +
                    further);
}

inline const std::string room = "<PROPERTY NAME=\"Room\" TYPE=\"string\"><VALUE>hall</VALUE></PROPERTY>";
inline const std::string owner = "<PROPERTY NAME=\"Owner\" TYPE=\"string\"><VALUE>me</VALUE></PROPERTY>";

} // namespace xml_calls
#endif
