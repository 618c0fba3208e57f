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

// Writes the whole document of a call; writeParameters() appends the parameters to the text it is given.
template <class WriteParameters>
Request call(const char* method, const char* protocolVersion, UInt32 messageId, const String& nameSpace,
             WriteParameters writeParameters) {
    std::string out = R"(<?xml version="1.0" encoding="utf-8" ?><CIM CIMVERSION="2.0" DTDVERSION="2.0">)"
                      R"(<MESSAGE ID=")";
    out.append(std::to_string(messageId))
        .append(R"(" PROTOCOLVERSION=")")
        .append(protocolVersion)
        .append("\">");
    {
        const Element request(out, "SIMPLEREQ");
        const Element element(out, "IMETHODCALL", "NAME", method);
        writeNameSpace(out, nameSpace);
        writeParameters(out);
    }
    out += "</MESSAGE></CIM>\r\n";
    return {method, protocolVersion, std::move(out)};
}

void flag(std::string& out, const char* name, bool value, bool byDefault) {
    if (value == byDefault)
        return;
    const Element parameter(out, "IPARAMVALUE", "NAME", name);
    const Element element(out, "VALUE");
    out += value ? "TRUE" : "FALSE";
}

void propertyList(std::string& out, const StringArray* properties) {
    if (!properties)
        return;
    const Element parameter(out, "IPARAMVALUE", "NAME", "PropertyList");
    write(out, CIMValue(*properties));
}

} // namespace

Request enumerateInstances(UInt32 messageId, const String& nameSpace, const String& className,
                           WBEMFlags::EDeepFlag deep, WBEMFlags::ELocalOnlyFlag localOnly,
                           WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                           WBEMFlags::EIncludeClassOriginFlag includeClassOrigin,
                           const StringArray* properties) {
    if (className.empty())
        OW_THROWCIM(CIMException::NOT_FOUND);
    return call("EnumerateInstances", "1.0", messageId, nameSpace, [&](std::string& out) {
        {
            const Element parameter(out, "IPARAMVALUE", "NAME", "ClassName");
            out += "<CLASSNAME NAME=\"";
            appendEscaped(out, std::string_view(className.c_str(), className.length()));
            out += "\"/>";
        }
        flag(out, "DeepInheritance", deep == WBEMFlags::E_DEEP, true);
        flag(out, "LocalOnly", localOnly == WBEMFlags::E_LOCAL_ONLY, true);
        flag(out, "IncludeQualifiers", includeQualifiers == WBEMFlags::E_INCLUDE_QUALIFIERS, false);
        flag(out, "IncludeClassOrigin", includeClassOrigin == WBEMFlags::E_INCLUDE_CLASS_ORIGIN, false);
        propertyList(out, properties);
    });
}

Request getInstance(UInt32 messageId, const String& nameSpace, const CIMObjectPath& path,
                    WBEMFlags::ELocalOnlyFlag localOnly, WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                    WBEMFlags::EIncludeClassOriginFlag includeClassOrigin, const StringArray* properties) {
    return call("GetInstance", "1.0", messageId, nameSpace, [&](std::string& out) {
        flag(out, "LocalOnly", localOnly == WBEMFlags::E_LOCAL_ONLY, true);
        flag(out, "IncludeQualifiers", includeQualifiers == WBEMFlags::E_INCLUDE_QUALIFIERS, false);
        flag(out, "IncludeClassOrigin", includeClassOrigin == WBEMFlags::E_INCLUDE_CLASS_ORIGIN, false);
        {
            const Element parameter(out, "IPARAMVALUE", "NAME", "InstanceName");
            writeName(out, path);
        }
        propertyList(out, properties);
    });
}

Request modifyInstance(UInt32 messageId, const String& nameSpace, const CIMInstance& instance,
                       WBEMFlags::EIncludeQualifiersFlag includeQualifiers, const StringArray* properties) {
    const bool withQualifiers = includeQualifiers == WBEMFlags::E_INCLUDE_QUALIFIERS;
    const char* const version = withQualifiers && !properties ? "1.0" : "1.1";
    return call("ModifyInstance", version, messageId, nameSpace, [&](std::string& out) {
        flag(out, "IncludeQualifiers", withQualifiers, true);
        {
            const Element parameter(out, "IPARAMVALUE", "NAME", "ModifiedInstance");
            writeNamed(out, instance);
        }
        propertyList(out, properties);
    });
}

} // namespace xml
} // namespace OpenWBEM
