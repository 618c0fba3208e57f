#ifndef TESTS_OPENWBEM_XML_HPP
#define TESTS_OPENWBEM_XML_HPP
// What the tests of CIM-XML share.
#include "OW_CIMInstance.hpp"
#include "OW_CIMObjectPath.hpp"
#include "OW_CIMProperty.hpp"
#include "OW_CIMValue.hpp"
#include "OW_Exception.hpp"
#include "io/Source.hpp"
#include "io/Window.hpp"
#include "xml/ObjectReader.hpp"
#include "xml/Tokenizer.hpp"

#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>
#include <string>

namespace xml_test {

/** Bytes that come a few at a time. */
class Pieces : public OpenWBEM::io::Source {
public:
    Pieces(std::string bytes, std::size_t pieceSize)
        : m_bytes(std::move(bytes))
        , m_pieceSize(pieceSize) {}

    std::size_t read(char* to, std::size_t size) override {
        size = std::min({size, m_pieceSize, m_bytes.size() - m_done});
        std::memcpy(to, m_bytes.data() + m_done, size);
        m_done += size;
        return size;
    }

private:
    std::string m_bytes;
    std::size_t m_pieceSize;
    std::size_t m_done = 0;
};

/** Type and message of the library's exception that an action ends in. */
template <class Action>
std::string failureOf(Action action) {
    try {
        action();
    } catch (const OpenWBEM::Exception& e) {
        return std::string(e.type()) + ": " + e.getMessage();
    }
    return "no exception";
}

inline std::string repeated(const std::string& text, std::size_t times) {
    std::string all;
    all.reserve(text.size() * times);
    while (times-- > 0)
        all += text;
    return all;
}

/** What a function of the reader makes of one element, all of which it must consume. */
template <class Object>
Object decode(const std::string& element, Object (OpenWBEM::xml::ObjectReader::*function)()) {
    OpenWBEM::io::Window window(element.data(), element.size());
    OpenWBEM::xml::Tokenizer in(window);
    EXPECT_EQ(OpenWBEM::xml::Tag::start, in.next());
    OpenWBEM::xml::ObjectReader objects(in);
    Object object = (objects.*function)();
    EXPECT_EQ(OpenWBEM::xml::Tag::none, in.next());
    return object;
}

inline OpenWBEM::CIMInstance instance(const std::string& element) {
    return decode(element, &OpenWBEM::xml::ObjectReader::instance);
}

inline OpenWBEM::CIMObjectPath path(const std::string& element) {
    return decode(element, &OpenWBEM::xml::ObjectReader::objectPath);
}

/** The only property of an instance that holds this element. */
inline OpenWBEM::CIMProperty property(const std::string& element) {
    const OpenWBEM::CIMPropertyArray all =
        instance("<INSTANCE CLASSNAME=\"C\">" + element + "</INSTANCE>").getProperties();
    EXPECT_EQ(1U, all.size());
    return all[0];
}

inline std::string text(const OpenWBEM::CIMValue& value) {
    return value.toString().c_str();
}

} // namespace xml_test
#endif
