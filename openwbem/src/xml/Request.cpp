#include "xml/Request.hpp"

#include "OW_Array.hpp"
#include "OW_CIMException.hpp"
#include "OW_CIMValue.hpp"
#include "OW_String.hpp"
#include "xml/ElementWriter.hpp"
#include "xml/ObjectWriter.hpp"

namespace OpenWBEM {
namespace xml {
namespace {

// The document of a call. writeParameters() appends the parameters to the text that it gets.
template <class WriteParameters>
Request call(const char* method, const char* protocolVersion, UInt32 messageId, const String& nameSpace,
             WriteParameters writeParameters) {
    std::string out = R"(<?xml version="1.0" encoding="utf-8" ?><CIM CIMVERSION="2.0" DTDVERSION="2.0">)"
                      R"(<MESSAGE ID=")";
    out.append(std::to_string(messageId))
        .append(R"(" PROTOCOLVERSION=")")
        .append(protocolVersion)
        .append("\">");
    appendElement(out, "SIMPLEREQ", [&] {
        StartTag(out, "IMETHODCALL").attribute("NAME", method).content([&] {
            writeNameSpace(out, nameSpace);
            writeParameters(out);
        });
    });
    out += "</MESSAGE></CIM>\r\n";
    return {method, protocolVersion, std::move(out)};
}

template <class WriteValue>
void parameter(std::string& out, const char* name, WriteValue writeValue) {
    StartTag(out, "IPARAMVALUE").attribute("NAME", name).content(writeValue);
}

void flag(std::string& out, const char* name, bool value, bool byDefault) {
    if (value != byDefault)
        parameter(out, name, [&] { appendElement(out, "VALUE", [&] { out += value ? "TRUE" : "FALSE"; }); });
}

void flags(std::string& out, const ReadOptions& options) {
    flag(out, "LocalOnly", options.localOnly == WBEMFlags::E_LOCAL_ONLY, true);
    flag(out, "IncludeQualifiers", options.includeQualifiers == WBEMFlags::E_INCLUDE_QUALIFIERS, false);
    flag(out, "IncludeClassOrigin", options.includeClassOrigin == WBEMFlags::E_INCLUDE_CLASS_ORIGIN, false);
}

void propertyList(std::string& out, const StringArray* properties) {
    if (properties)
        parameter(out, "PropertyList", [&] { write(out, CIMValue(*properties)); });
}

} // namespace

Request enumerateInstances(UInt32 messageId, const String& nameSpace, const String& className,
                           WBEMFlags::EDeepFlag deep, const ReadOptions& options) {
    if (className.empty())
        OW_THROWCIM(CIMException::NOT_FOUND);
    return call("EnumerateInstances", "1.0", messageId, nameSpace, [&](std::string& out) {
        parameter(out, "ClassName", [&] {
            out += "<CLASSNAME NAME=\"";
            appendEscaped(out, std::string_view(className.c_str(), className.length()));
            out += "\"/>";
        });
        flag(out, "DeepInheritance", deep == WBEMFlags::E_DEEP, true);
        flags(out, options);
        propertyList(out, options.properties);
    });
}

Request getInstance(UInt32 messageId, const String& nameSpace, const CIMObjectPath& path,
                    const ReadOptions& options) {
    return call("GetInstance", "1.0", messageId, nameSpace, [&](std::string& out) {
        flags(out, options);
        parameter(out, "InstanceName", [&] { writeName(out, path); });
        propertyList(out, options.properties);
    });
}

Request modifyInstance(UInt32 messageId, const String& nameSpace, const CIMInstance& instance,
                       WBEMFlags::EIncludeQualifiersFlag includeQualifiers, const StringArray* properties) {
    const bool withQualifiers = includeQualifiers == WBEMFlags::E_INCLUDE_QUALIFIERS;
    const char* const version = withQualifiers && !properties ? "1.0" : "1.1";
    return call("ModifyInstance", version, messageId, nameSpace, [&](std::string& out) {
        flag(out, "IncludeQualifiers", withQualifiers, true);
        parameter(out, "ModifiedInstance", [&] { writeNamed(out, instance); });
        propertyList(out, properties);
    });
}

} // namespace xml
} // namespace OpenWBEM
