#include "protocol/XmlRequest.hpp"

#include "OW_XMLParseException.hpp"
#include "io/Window.hpp"
#include "protocol/Handler.hpp"
#include "xml/ObjectReader.hpp"
#include "xml/TextValue.hpp"
#include "xml/Tokenizer.hpp"

#include <algorithm>

namespace cimom {

using namespace OpenWBEM;
using xml::Tag;

namespace {

[[noreturn]] void refuse(const char* cimError) {
    throw UnreadableRequest(400, "Bad request", cimError);
}

[[noreturn]] void refuseAsNotImplemented(const char* cimError) {
    throw UnreadableRequest(501, "Not implemented", cimError);
}

/** Whether a version is 2.x or 2.x.y; minor versions only add to what is understood (DSP0200). */
bool isVersion2(std::string_view version) {
    return version.size() > 2 && version.substr(0, 2) == "2." &&
           version.find_first_not_of("0123456789.", 2) == std::string_view::npos;
}

/** Reads one document. */
class Reading {
public:
    Reading(std::string_view document, XmlRequest& request)
        : m_window(document.data(), document.size())
        , m_in(m_window)
        , m_objects(m_in)
        , m_request(request) {}

    void read() {
        enter("CIM");
        requireVersion2("CIMVERSION", "unsupported-cim-version");
        requireVersion2("DTDVERSION", "unsupported-dtd-version");
        enter("MESSAGE");
        m_request.messageId = m_in.attribute("ID");
        if (next() == "MULTIREQ")
            refuseAsNotImplemented("multiple-requests-unsupported");
        require(m_in.name() == "SIMPLEREQ");
        const std::string_view call = next();
        m_request.isExtrinsic = call == "METHODCALL";
        require(m_request.isExtrinsic || call == "IMETHODCALL");
        m_request.operation = m_in.attribute("NAME");
        readCall();
        // Reads to the end: an incomplete request must not be carried out.
        while (m_in.next() != Tag::none) {
        }
    }

private:
    static void require(bool isSo) {
        if (!isSo)
            refuse("request-not-loosely-valid");
    }
    /** Reads the next tag, which must start an element. Returns its name. */
    std::string_view next() {
        require(m_in.next() == Tag::start);
        return m_in.name();
    }
    void enter(const char* element) { require(next() == element); }

    void requireVersion2(const char* attribute, const char* cimError) {
        if (!isVersion2(m_in.attribute(attribute)))
            refuseAsNotImplemented(cimError);
    }

    void readCall() {
        while (m_in.next() == Tag::start) {
            if (m_in.name() == "LOCALNAMESPACEPATH")
                m_request.nameSpace = m_objects.objectPath().getNameSpace().c_str();
            else if (m_in.name() == "IPARAMVALUE")
                readArgument();
            else
                m_in.skip();
        }
    }

    void readArgument() {
        XmlArgument argument;
        argument.name = m_in.attribute("NAME");
        while (m_in.next() == Tag::start) {
            const std::string_view name = m_in.name();
            if (name == "VALUE")
                argument.text = m_objects.value(CIMDataType::STRING).toString().c_str();
            else if (name == "VALUE.ARRAY")
                argument.list = names();
            else if (name == "CLASSNAME")
                argument.className = m_objects.objectPath().getClassName().c_str();
            else if (name == "INSTANCENAME")
                argument.path = m_objects.objectPath();
            else if (name == "VALUE.NAMEDINSTANCE")
                readNamedInstance(argument);
            else
                m_in.skip();
        }
        m_request.arguments.push_back(std::move(argument));
    }

    /** Reads VALUE.NAMEDINSTANCE. Path and instance may name different classes. */
    void readNamedInstance(XmlArgument& argument) {
        while (m_in.next() == Tag::start) {
            if (m_in.name() == "INSTANCENAME")
                argument.path = m_objects.objectPath();
            else if (m_in.name() == "INSTANCE")
                argument.instance = m_objects.instance();
            else
                m_in.skip();
        }
        if (!argument.instance)
            m_in.fail("Missing element", "VALUE.NAMEDINSTANCE without INSTANCE");
        if (argument.path)
            argument.instance.setKeys(argument.path.getKeys());
    }

    PropertyList names() {
        StringArray texts;
        m_objects.value(CIMDataType::STRING).get(texts);
        return PropertyList(texts.begin(), texts.end());
    }

    io::Window m_window;
    xml::Tokenizer m_in;
    xml::ObjectReader m_objects;
    XmlRequest& m_request;
};

} // namespace

const XmlArgument* XmlRequest::find(std::string_view name) const {
    const auto found = std::find_if(arguments.begin(), arguments.end(), [name](const XmlArgument& argument) {
        return xml::equalsIgnoreCase(argument.name, name);
    });
    return found == arguments.end() ? nullptr : &*found;
}

void readXmlRequest(std::string_view document, XmlRequest& request) {
    try {
        Reading(document, request).read();
    } catch (const XMLParseException&) {
        refuse("request-not-well-formed");
    }
}

} // namespace cimom
