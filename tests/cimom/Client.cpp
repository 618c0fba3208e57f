#include "Client.hpp"

#include "OW_IOException.hpp"
#include "binary/ObjectReader.hpp"
#include "binary/Protocol.hpp"
#include "support/Wire.hpp"

using support::wire::bigEndian;
using support::wire::text;

namespace {

std::string flag(bool value) {
    return std::string("h") + (value ? '\1' : '\0');
}

std::string enumerateHead(const std::string& className, const std::string& nameSpace) {
    return bigEndian(3000008, 4) + '\x19' + 'j' + text(nameSpace) + 'j' + text(className) + flag(true) +
           flag(false) + flag(false) + flag(false);
}

} // namespace

std::string enumerateBody(const std::string& className, const std::string& nameSpace) {
    return enumerateHead(className, nameSpace) + flag(true);
}

std::string enumerateBody(const std::string& className, const std::vector<std::string>& properties) {
    std::string body =
        enumerateHead(className, "root/cimv2") + flag(false) + 'k' + support::wire::number(properties.size());
    for (const std::string& property : properties)
        body += text(property);
    return body;
}

std::string operationBody(unsigned operation, unsigned version) {
    return bigEndian(version, 4) + bigEndian(operation, 1) + 'j' + text("root/cimv2");
}

std::string httpRequest(const std::string& body, const std::string& lines, const std::string& method) {
    return method + " /cimom HTTP/1.1\r\nHost: localhost\r\nContent-Type: application/x-owbinary\r\n" +
           lines + "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

std::string xmlRequest(const std::string& operation, const std::string& arguments, const std::string& lines) {
    const std::string body = "<?xml version=\"1.0\"?><CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\"><MESSAGE "
                             "ID=\"1\" PROTOCOLVERSION=\"1.0\"><SIMPLEREQ><IMETHODCALL NAME=\"" +
                             operation +
                             "\"><LOCALNAMESPACEPATH><NAMESPACE NAME=\"root\"/><NAMESPACE NAME=\"cimv2\"/>"
                             "</LOCALNAMESPACEPATH>" +
                             arguments + "</IMETHODCALL></SIMPLEREQ></MESSAGE></CIM>";
    return "POST /cimom HTTP/1.1\r\nHost: localhost\r\nContent-Type: application/xml\r\n" + lines +
           "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

std::vector<OpenWBEM::CIMInstance> instancesIn(const std::string& body) {
    using namespace OpenWBEM::binary;
    Reader in(body.data(), body.size());
    in.expect(static_cast<OpenWBEM::UInt8>(Result::ok));
    in.expect(sig::instanceEnumeration);
    ObjectReader objects(in);
    std::vector<OpenWBEM::CIMInstance> instances;
    while (in.peek() != sig::endOfInstances)
        instances.push_back(objects.instance());
    in.expect(sig::endOfInstances);
    in.expect(sig::endOfInstances);
    if (!in.atEnd())
        OW_THROW(OpenWBEM::IOException, "bytes after the end");
    return instances;
}
