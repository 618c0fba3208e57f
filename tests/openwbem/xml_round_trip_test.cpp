// The reader inverts the writer of CIM-XML: random objects with a fixed seed.
#include "RandomObjects.hpp"
#include "Xml.hpp"
#include "xml/ObjectWriter.hpp"

#include <gtest/gtest.h>
#include <string>

namespace {

using namespace OpenWBEM;
using random_objects::RandomObjects;

// Normalizes an object to the information that a document contains.
template <class Object>
std::string elementOf(const Object& object) {
    std::string element;
    xml::write(element, object);
    return element;
}

TEST(XmlRoundTrip, PreservesEveryTypeOfValue) {
    RandomObjects generator(RandomObjects::Kind::xml);
    for (int type = CIMDataType::UINT8; type <= CIMDataType::EMBEDDEDINSTANCE; ++type)
        for (int i = 0; i < 200; ++i) {
            const CIMValue value = generator.value(static_cast<CIMDataType::Type>(type), i % 2 == 0);
            const std::string element = elementOf(CIMProperty("p", value));
            const CIMProperty back = xml_test::property(element);
            ASSERT_TRUE(back.getValue()) << element;
            if (value.getArraySize() > 0) { // an empty array does not show the type of its objects
                EXPECT_EQ(type, back.getValue().getType()) << element;
            }
            EXPECT_EQ(value.isArray(), back.getValue().isArray()) << element;
            EXPECT_EQ(value.getArraySize(), back.getValue().getArraySize()) << element;
            EXPECT_EQ(element, elementOf(back));
            if (type <= CIMDataType::REFERENCE) { // embedded objects are declared as strings
                EXPECT_EQ(value.toString(), back.getValue().toString()) << element;
            }
        }
}

TEST(XmlRoundTrip, PreservesEveryPartOfAnInstance) {
    RandomObjects generator(RandomObjects::Kind::xml);
    for (int i = 0; i < 300; ++i) {
        const std::string element = elementOf(generator.instance());
        ASSERT_EQ(element, elementOf(xml_test::decode(element, &xml::ObjectReader::instance)));
    }
}

} // namespace
