#include "ClientReading.hpp"

#include "OW_CIMClass.hpp"
#include "OW_CIMException.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMValue.hpp"
#include "binary/ObjectReader.hpp"
#include "binary/Protocol.hpp"
#include "binary/Reader.hpp"
#include "io/Window.hpp"
#include "protocol/XmlRequest.hpp"
#include "xml/Reply.hpp"
#include "xml/TextValue.hpp"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <optional>
#include <stdexcept>

using namespace OpenWBEM;
namespace sig = binary::sig;

namespace {

template <class ReadElement>
void readAll(binary::Reader& in, UInt8 begin, UInt8 end, ReadElement readElement) {
    in.expect(begin);
    while (in.peek() != end)
        readElement();
    in.expect(end);
    in.expect(end);
}

void readResult(binary::Reader& in, const std::string& operation) {
    binary::ObjectReader objects(in);
    if (operation == "EnumerateInstances") {
        readAll(in, sig::instanceEnumeration, sig::endOfInstances, [&] { objects.instance(); });
    } else if (operation == "EnumerateInstanceNames") {
        readAll(in, sig::pathEnumeration, sig::endOfPaths, [&] { objects.objectPath(); });
    } else if (operation == "EnumerateClasses") {
        readAll(in, sig::classEnumeration, sig::endOfClasses, [&] { objects.classObject(); });
    } else if (operation == "EnumerateClassNames") {
        readAll(in, sig::stringEnumeration, sig::endOfStrings, [&] {
            in.expect(sig::string);
            in.string();
        });
    } else if (operation == "GetInstance") {
        objects.instance();
    } else if (operation == "GetClass") {
        objects.classObject();
    } else if (operation == "GetProperty") {
        in.expect(sig::boolean);
        if (in.boolean())
            objects.value();
    } else if (operation != "ModifyInstance") {
        throw std::logic_error("a good reply to " + operation);
    }
}

void readError(binary::Reader& in, unsigned code) {
    const bool isCoded = in.u8() == static_cast<UInt8>(binary::Result::exception);
    if ((isCoded ? in.u16() : UInt16{CIMException::FAILED}) != code)
        throw std::logic_error("another error");
    in.string();
}

/** The message ID as a number; nothing if no client writes an ID in this form. */
std::optional<UInt32> numberOf(const std::string& messageId) {
    UInt32 id = 0;
    const char* const end = messageId.data() + messageId.size();
    const auto [last, error] = std::from_chars(messageId.data(), end, id);
    if (error != std::errc() || last != end || std::to_string(id) != messageId)
        return std::nullopt;
    return id;
}

bool isOfLetters(const std::string& name) {
    return std::all_of(name.begin(), name.end(), [](unsigned char c) { return c < 0x80 && std::isalpha(c); });
}

void readXml(const std::string& body, UInt32 id, const std::string& operation) {
    io::Window window(body.data(), body.size());
    xml::Reply reply(window, id, operation.c_str());
    const bool isOfInstances = xml::equalsIgnoreCase(operation, "EnumerateInstances") ||
                               xml::equalsIgnoreCase(operation, "GetInstance");
    for (CIMInstance instance(CIMNULL); isOfInstances && reply.next(instance);) {
    }
    reply.finish();
}

} // namespace

void readAsBinaryClient(const cimom::OperationReply& reply) {
    if (reply.body.empty() && !reply.error)
        return; // the operation has no name
    try {
        binary::Reader in(reply.body.data(), reply.body.size());
        if (reply.error) {
            readError(in, reply.error->code);
        } else {
            in.expect(static_cast<UInt8>(binary::Result::ok));
            readResult(in, reply.title.substr(0, reply.title.find(' ')));
        }
        if (!in.atEnd())
            throw std::logic_error("bytes after the end");
    } catch (const Exception& e) {
        throw std::logic_error(std::string("no sense: ") + e.getMessage());
    }
}

void readAsXmlClient(const cimom::OperationReply& reply, std::string_view document) {
    cimom::XmlRequest request;
    try {
        cimom::readXmlRequest(document, request);
    } catch (const CIMException&) { // it has been read up to its objects
    }
    const std::optional<UInt32> id = numberOf(request.messageId);
    if (!id || request.isExtrinsic || !isOfLetters(request.operation))
        return;
    std::optional<unsigned> code;
    try {
        readXml(reply.body, *id, request.operation);
    } catch (const CIMException& e) {
        code = static_cast<unsigned>(e.getErrNo());
    } catch (const Exception& e) {
        throw std::logic_error(std::string("no sense: ") + e.getMessage());
    }
    if (code.has_value() != reply.error.has_value() || (code && *code != reply.error->code))
        throw std::logic_error("another outcome: " + (code ? std::to_string(*code) : std::string("good")));
}
