#ifndef OPENWBEM_XML_ELEMENT_WRITER_HPP_INCLUDED
#define OPENWBEM_XML_ELEMENT_WRITER_HPP_INCLUDED
#include "OW_CIMName.hpp"
#include "OW_String.hpp"
#include "xml/Entities.hpp"

#include <exception>
#include <string>
#include <string_view>

namespace OpenWBEM {
namespace xml {

/** An element that is open as long as this object lives. */
class Element {
public:
    /** An element without attributes. */
    Element(std::string& out, const char* name)
        : Element(out, name, "") {
        m_out += '>';
    }
    /** An element with one attribute. */
    Element(std::string& out, const char* name, const char* attribute, const String& value)
        : Element(out, name, " ") {
        appendAttribute(attribute, value);
        m_out += '>';
    }
    /** An element with two attributes. */
    Element(std::string& out, const char* name, const char* first, const String& firstValue,
            const char* second, const String& secondValue)
        : Element(out, name, " ") {
        appendAttribute(first, firstValue);
        m_out += ' ';
        appendAttribute(second, secondValue);
        m_out += '>';
    }
    // What an exception leaves behind nobody reads, and there may be no memory for more of it.
    ~Element() noexcept(false) {
        if (std::uncaught_exceptions() > m_exceptions)
            return;
        m_out += "</";
        m_out += m_name;
        m_out += '>';
    }
    Element(const Element&) = delete;
    Element& operator=(const Element&) = delete;

protected:
    Element(std::string& out, const char* name, const char* gap)
        : m_out(out)
        , m_name(name) {
        m_out += '<';
        m_out += name;
        m_out += gap;
    }
    void appendAttribute(const char* name, const String& value) {
        m_out += name;
        m_out += "=\"";
        appendEscaped(m_out, std::string_view(value.c_str(), value.length()));
        m_out += '"';
    }

    std::string& m_out;

private:
    const char* m_name;
    const int m_exceptions = std::uncaught_exceptions(); // under way when the element began
};

/** An element that declares something: any number of attributes, a blank behind each. */
class DeclaringElement : public Element {
public:
    DeclaringElement(std::string& out, const char* name)
        : Element(out, name, " ") {}

    DeclaringElement& attribute(const char* name, const String& value) {
        appendAttribute(name, value);
        m_out += ' ';
        return *this;
    }
    /** Only when the value is not empty. */
    DeclaringElement& optional(const char* name, const String& value) {
        return value.empty() ? *this : attribute(name, value);
    }
    /** Only when it applies. */
    DeclaringElement& optional(const char* name, bool applies, const char* value) {
        return applies ? attribute(name, value) : *this;
    }
    /** Ends the start tag. */
    void open() { m_out += '>'; }
};

} // namespace xml
} // namespace OpenWBEM
#endif
