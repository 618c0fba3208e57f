#ifndef OPENWBEM_XML_ELEMENT_WRITER_HPP_INCLUDED
#define OPENWBEM_XML_ELEMENT_WRITER_HPP_INCLUDED
#include "OW_String.hpp"
#include "xml/Entities.hpp"

#include <string>
#include <string_view>

namespace OpenWBEM {
namespace xml {

/**
 * Appends one element: `StartTag(out, "A").attribute("B", "c").content([&] { ... })`. The peers of this
 * format expect a fixed form: no blank before the ">", or one after each attribute.
 */
class StartTag {
public:
    StartTag(std::string& out, const char* name)
        : m_out(out)
        , m_name(name) {
        m_out += '<';
        m_out += name;
    }
    StartTag(const StartTag&) = delete;
    StartTag& operator=(const StartTag&) = delete;

    StartTag& attribute(const char* name, const String& value) {
        m_out += ' ';
        m_out += name;
        m_out += "=\"";
        appendEscaped(m_out, std::string_view(value.c_str(), value.length()));
        m_out += '"';
        return *this;
    }
    /** Appends the attribute only if the value is not empty. */
    StartTag& optional(const char* name, const String& value) {
        return value.empty() ? *this : attribute(name, value);
    }
    /** Appends the attribute only if it applies. */
    StartTag& optional(const char* name, bool applies, const char* value) {
        return applies ? attribute(name, value) : *this;
    }
    /** Ends the tag with a blank: the form of declarations. */
    StartTag& blank() {
        m_out += ' ';
        return *this;
    }

    /** Ends the tag, calls the function, which appends the content, and appends the end tag. If it throws,
     * the text ends there. */
    template <class Append>
    void content(Append append) {
        m_out += '>';
        append();
        m_out += "</";
        m_out += m_name;
        m_out += '>';
    }

private:
    std::string& m_out;
    const char* m_name;
};

/** Appends an element without attributes. */
template <class Append>
void appendElement(std::string& out, const char* name, Append append) {
    StartTag(out, name).content(append);
}

} // namespace xml
} // namespace OpenWBEM
#endif
