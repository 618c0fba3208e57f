#include "xml/Reply.hpp"

#include "OW_CIMException.hpp"
#include "xml/TextValue.hpp"

#include <algorithm>
#include <string>

namespace OpenWBEM {
namespace xml {
namespace {

[[noreturn]] void throwOtherReply(const std::string& description) {
    OW_THROWCIMMSG(CIMException::INVALID_PARAMETER, description.c_str());
}

} // namespace

Reply::Reply(io::Window& in, UInt32 messageId, const char* method)
    : m_window(in)
    , m_in(in)
    , m_objects(m_in) {
    enter("CIM");
    requireVersion("CIMVERSION", {"2.0", "2.1", "2.2"});
    requireVersion("DTDVERSION", {"2.0", "2.1"});
    enter("MESSAGE");
    requireMessage(messageId);
    requireVersion("PROTOCOLVERSION", {"1.0", "1.1"});
    enter("SIMPLERSP");
    enter("IMETHODRESPONSE");
    requireMethod(method);
    toReturnValue();
}

// Consumes the next tag, which must start this element.
void Reply::enter(const char* name) {
    const Tag tag = m_in.next();
    if (tag == Tag::start && m_in.name() == name)
        return;
    std::string message = std::string("Invalid XML. <") + name + "> not found.";
    if (tag == Tag::start && m_in.name() == "MULTIRSP")
        message += " Batches of replies are not understood.";
    OW_THROWCIMMSG(CIMException::FAILED, message.c_str());
}

void Reply::requireVersion(const char* attribute, std::initializer_list<std::string_view> accepted) {
    const std::string_view version = m_in.attribute(attribute);
    if (std::find(accepted.begin(), accepted.end(), version) == accepted.end())
        throwOtherReply(std::string("Return is for ") + attribute + " " + std::string(version));
}

void Reply::requireMessage(UInt32 id) {
    const std::string expected = std::to_string(id);
    const std::string got(m_in.attribute("ID"));
    if (got != expected)
        throwOtherReply("Return messageid=" + got + ", expected=" + expected);
}

void Reply::requireMethod(std::string_view method) {
    const std::string_view name = m_in.attribute("NAME");
    if (!equalsIgnoreCase(name, method))
        throwOtherReply("Called " + std::string(method) + " but response was for " + std::string(name));
}

void Reply::toReturnValue() {
    while (m_in.next() == Tag::start) {
        if (m_in.name() == "ERROR")
            throwError();
        if (m_in.name() == "IRETURNVALUE") {
            m_isInReturnValue = true;
            return;
        }
        m_in.skip();
    }
}

void Reply::throwError() {
    Int64 code = 0;
    if (!parseInteger(m_in.attribute("CODE"), code) || code < 0 || code > 0xFFFF)
        code = CIMException::FAILED;
    const std::string description(m_in.attribute("DESCRIPTION"));
    OW_THROWCIMMSG(static_cast<CIMException::ErrNoType>(code), description.c_str());
}

bool Reply::next(CIMInstance& instance) {
    m_window.beginObject();
    while (m_isInReturnValue) {
        if (m_in.next() != Tag::start) {
            m_isInReturnValue = false;
        } else if (m_in.name() == "VALUE.NAMEDINSTANCE") {
            instance = m_objects.namedInstance();
            return true;
        } else if (m_in.name() == "INSTANCE") {
            instance = m_objects.instance();
            return true;
        } else {
            m_in.skip();
        }
    }
    return false;
}

CIMInstance Reply::instance() {
    const bool hasReturnValue = m_isInReturnValue;
    CIMInstance result(CIMNULL);
    if (!next(result) && hasReturnValue)
        throwOtherReply("Not instance XML");
    return result;
}

void Reply::finish() {
    m_isInReturnValue = false;
    while (m_in.next() != Tag::none) {
    }
}

} // namespace xml
} // namespace OpenWBEM
