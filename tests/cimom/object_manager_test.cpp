#include "Collected.hpp"
#include "Failure.hpp"
#include "LampProvider.hpp"

#include <gtest/gtest.h>

using namespace cimom;
using namespace OpenWBEM;

namespace {

/** "<code> <description>" of the error of an enumeration. */
std::string errorOf(const std::string& nameSpace, const char* className) {
    return cimErrorOf([&] { lampManager({"red"}).enumerateInstances(nameSpace, className, nullptr); });
}

} // namespace

TEST(ObjectManager, InstancesComeInTheOrderOfTheProvider) {
    const auto found = collected(
        *lampManager({"red", "green", "blue"}).enumerateInstances("root/cimv2", "QAV_Lamp", nullptr));
    ASSERT_EQ(3u, found.size());
    EXPECT_EQ("green", found[1].getPropertyValue("Colour").toString());
    EXPECT_EQ("blue", found[2].getPropertyValue("Colour").toString());
}

TEST(ObjectManager, TheCaseOfAClassNameDoesNotMatter) {
    EXPECT_EQ(1u,
              collected(*lampManager({"red"}).enumerateInstances("root/cimv2", "qav_LAMP", nullptr)).size());
}

TEST(ObjectManager, LeadingSlashesOfANamespaceDoNotMatter) {
    EXPECT_EQ(
        1u, collected(*lampManager({"red"}).enumerateInstances("//root/cimv2", "QAV_Lamp", nullptr)).size());
}

TEST(ObjectManager, TheCaseOfANamespaceDoesNotMatter) {
    EXPECT_EQ(1u,
              collected(*lampManager({"red"}).enumerateInstances("/Root/CIMV2", "QAV_Lamp", nullptr)).size());
}

TEST(ObjectManager, AClassThatIsNotServedIsInvalid) {
    EXPECT_EQ("5 /root/cimv2:QAV_Nope", errorOf("root/cimv2", "QAV_Nope"));
    EXPECT_EQ("5 /root/cimv2:", errorOf("/root/cimv2", ""));
}

TEST(ObjectManager, AnotherNamespaceIsInvalidWhateverTheClass) {
    EXPECT_EQ("3 root/nosuch", errorOf("root/nosuch", "QAV_Lamp"));
    EXPECT_EQ("3 ", errorOf("/", "QAV_Nope"));
}

TEST(ObjectManager, OnlyTheWantedPropertiesAreThere) {
    const PropertyList wanted = {"Volts", "wATTS"};
    const auto found = collected(*lampManager({"red"}).enumerateInstances("root/cimv2", "QAV_Lamp", &wanted));
    ASSERT_EQ(1u, found.at(0).getProperties().size());
    EXPECT_EQ("Watts", found[0].getProperties()[0].getName());
    EXPECT_EQ("60", found[0].getProperties()[0].getValue().toString());
}

TEST(ObjectManager, AnEmptyListWantsNoProperties) {
    const PropertyList none;
    const auto found = collected(*lampManager({"red"}).enumerateInstances("root/cimv2", "QAV_Lamp", &none));
    EXPECT_TRUE(found.at(0).getProperties().empty());
}

TEST(ObjectManager, KeysAreAlwaysThere) {
    const PropertyList wanted = {"Watts"};
    const auto found = collected(*lampManager({"red"}).enumerateInstances("root/cimv2", "QAV_Lamp", &wanted));
    ASSERT_EQ(1u, found.at(0).getKeyValuePairs().size());
    EXPECT_EQ("Colour", found[0].getKeyValuePairs()[0].getName());
}

TEST(ObjectManager, AnEnumerationMakesEachInstanceOnRequest) {
    int made = 0;
    const auto make = [&made](const std::string& colour) {
        ++made;
        return lampInstance(colour);
    };
    const ObjectManager manager({{&lampClass, [&make] {
                                      return eachOf(std::vector<std::string>{"red", "green"}, make);
                                  }}});
    const std::unique_ptr<InstanceSource> lamps =
        manager.enumerateInstances("root/cimv2", "QAV_Lamp", nullptr);
    EXPECT_EQ(0, made);
    EXPECT_EQ("red", lamps->next().getPropertyValue("Colour").toString());
    EXPECT_EQ(1, made);
    EXPECT_EQ("green", lamps->next().getPropertyValue("Colour").toString());
    EXPECT_FALSE(lamps->next());
    EXPECT_FALSE(lamps->next()) << "the end is final";
    EXPECT_EQ(2, made);
}

TEST(ObjectManager, AnEnumerationPassesOnWhatItsProviderThrows) {
    const auto fail = [](int) -> CIMInstance { throw std::runtime_error("the lamp is broken"); };
    const ObjectManager manager({{&lampClass, [&fail] { return eachOf(std::vector<int>{1}, fail); }}});
    const std::unique_ptr<InstanceSource> lamps =
        manager.enumerateInstances("root/cimv2", "QAV_Lamp", nullptr);
    EXPECT_THROW(lamps->next(), std::runtime_error);
}
