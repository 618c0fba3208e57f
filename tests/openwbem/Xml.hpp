#ifndef TESTS_OPENWBEM_XML_HPP
#define TESTS_OPENWBEM_XML_HPP
// Helpers for tests of CIM-XML.
#include "Failure.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMObjectPath.hpp"
#include "OW_CIMProperty.hpp"
#include "OW_CIMValue.hpp"
#include "PieceSource.hpp"
#include "io/Window.hpp"
#include "xml/ObjectReader.hpp"
#include "xml/Tokenizer.hpp"

#include <gtest/gtest.h>
#include <string>

namespace xml_test {

inline std::string repeated(const std::string& text, std::size_t times) {
    std::string all;
    all.reserve(text.size() * times);
    while (times-- > 0)
        all += text;
    return all;
}

/** Reads one element with a function of the reader, which must consume all of it. */
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

/** The only property of an instance with this element. */
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
