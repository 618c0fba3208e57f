// GetInstance and EnumerateInstanceNames.
#include "Collected.hpp"
#include "Failure.hpp"
#include "LampProvider.hpp"
#include "schema/Namespace.hpp"

#include <gtest/gtest.h>

using namespace cimom;
using namespace OpenWBEM;

namespace {

CIMObjectPath path(const char* text) {
    return CIMObjectPath::parse(text);
}

CIMInstance lamp(const char* objectPath, const PropertyList* wanted = nullptr) {
    return lampManager({"red", "green"}).getInstance("root/cimv2", path(objectPath), wanted);
}

std::string errorOf(const CIMObjectPath& objectPath, const std::string& nameSpace = "root/cimv2") {
    return cimErrorOf([&] { lampManager({"red"}).getInstance(nameSpace, objectPath, nullptr); });
}

} // namespace

TEST(Instance, IsFoundByItsKeys) {
    EXPECT_EQ("green", lamp("QAV_Lamp.Colour=\"green\"").getPropertyValue("Colour").toString());
    EXPECT_EQ(5u, lamp("QAV_Lamp.Colour=\"green\"").getProperties().size());
}

TEST(Instance, TheCaseOfClassAndKeyNamesDoesNotMatter) {
    EXPECT_EQ("red", lamp("qav_lamp.COLOUR=\"red\"").getPropertyValue("Colour").toString());
}

TEST(Instance, TheCaseOfAKeysValueMatters) {
    EXPECT_EQ("6 /root/cimv2:QAV_Lamp.Colour=\"RED\"", errorOf(path("QAV_Lamp.Colour=\"RED\"")));
}

TEST(Instance, TheNamespaceOfThePathDoesNotMatter) {
    EXPECT_EQ("red", lamp("root/other:QAV_Lamp.Colour=\"red\"").getPropertyValue("Colour").toString());
}

TEST(Instance, IsNotFoundByAnUndeclaredKey) {
    EXPECT_EQ("6 /root/cimv2:QAV_Lamp.Size=\"5\",Colour=\"red\"",
              errorOf(path("root/cimv2:QAV_Lamp.Size=\"5\",Colour=\"red\"")));
    EXPECT_EQ("6 /root/cimv2:QAV_Lamp.Colour=\"red\",Watts=\"60\"",
              errorOf(path("root/cimv2:QAV_Lamp.Colour=\"red\",Watts=\"60\"")))
        << "a property that is not a key";
}

TEST(Instance, KeysAreConvertedToTheirTypesAndComeInAnyOrder) {
    const ObjectManager manager = lampManager({});
    const auto found = [&manager](const char* text) {
        return manager.getInstance("root/cimv2", path(text), nullptr).getClassName();
    };
    EXPECT_EQ("QAV_Socket", found("QAV_Socket.Number=\"7\",Wall=\"north\""));
    EXPECT_EQ("QAV_Socket", found("QAV_Socket.Wall=\"north\",Number=007"));
    EXPECT_EQ("13 Number: general error (Unable to convert \"seven\" into UInt32)",
              errorOf(path("QAV_Socket.Wall=\"north\",Number=\"seven\"")));
}

TEST(Instance, APathWithoutAllKeysIsAnInvalidParameter) {
    EXPECT_EQ("4 object path (/root/cimv2:QAV_Lamp) has key (Colour) with NULL value",
              errorOf(CIMObjectPath("QAV_Lamp")));
    CIMObjectPath nullKey("QAV_Socket");
    nullKey.setKeyValue("Wall", CIMValue("north"));
    nullKey.setKeyValue("Number", CIMValue(CIMNULL));
    EXPECT_EQ("4 object path (/root/cimv2:QAV_Socket.Wall=\"north\") has key (Number) with NULL value",
              errorOf(nullKey));
}

TEST(Instance, AnInstanceThatDoesNotExistIsNotFound) {
    EXPECT_EQ("6 /root/cimv2:QAV_Lamp.Colour=\"blue\"", errorOf(path("QAV_Lamp.Colour=\"blue\"")));
    EXPECT_EQ("6 /root/cimv2:QAV_Socket.Wall=\"north\",Number=\"8\"",
              errorOf(path("QAV_Socket.Number=8,Wall=north")));
}

TEST(Instance, ClassAndNamespaceMustBeServed) {
    EXPECT_EQ("5 /root/cimv2:QAV_Nope", errorOf(path("QAV_Nope.Colour=\"red\"")));
    EXPECT_EQ("3 root/nosuch", errorOf(path("QAV_Lamp.Colour=\"red\""), "/root/nosuch"));
}

TEST(Instance, OnlyTheWantedPropertiesAreThere) {
    const PropertyList wanted = {"Volts", "wATTS"};
    const CIMInstance instance = lamp("QAV_Lamp.Colour=\"red\"", &wanted);
    ASSERT_EQ(1u, instance.getProperties().size());
    EXPECT_EQ("Watts", instance.getProperties()[0].getName());
}

TEST(Instance, ItsPropertiesNameTheirClassOnRequest) {
    const ObjectManager manager = lampManager({"red"});
    const auto originOf = [](const CIMInstance& instance) {
        return std::string(instance.getProperty("Watts").getOriginClass().c_str());
    };
    const CIMObjectPath red = path("QAV_Lamp.Colour=\"red\"");
    EXPECT_EQ("QAV_Lamp", originOf(manager.getInstance("root/cimv2", red, nullptr, ClassOrigin::included)));
    EXPECT_EQ("", originOf(manager.getInstance("root/cimv2", red, nullptr)));
    const auto all = manager.enumerateInstances("root/cimv2", "QAV_Lamp", nullptr, ClassOrigin::included);
    EXPECT_EQ("QAV_Lamp", originOf(all->next()));
}

TEST(InstanceNames, AreThePathsOfAllInstances) {
    const auto names =
        collected(*lampManager({"red", "green"}).enumerateInstanceNames("/root/cimv2", "qav_lamp"));
    ASSERT_EQ(2u, names.size());
    EXPECT_EQ("/root/cimv2:QAV_Lamp.Colour=\"red\"", names[0].toString());
    EXPECT_EQ("/root/cimv2:QAV_Lamp.Colour=\"green\"", names[1].toString());
}

TEST(InstanceNames, EachIdentifiesItsInstance) {
    const ObjectManager manager = lampManager({"red", "green"});
    for (const CIMObjectPath& name : collected(*manager.enumerateInstanceNames("root/cimv2", "QAV_Socket")))
        EXPECT_EQ(name, pathOf(manager.getInstance("root/cimv2", name, nullptr)));
}

TEST(InstanceNames, ClassAndNamespaceMustBeServed) {
    const ObjectManager manager = lampManager({});
    EXPECT_EQ("5 /root/cimv2:QAV_Nope",
              cimErrorOf([&] { manager.enumerateInstanceNames("root/cimv2", "QAV_Nope"); }));
    EXPECT_EQ("3 root", cimErrorOf([&] { manager.enumerateInstanceNames("root", "QAV_Lamp"); }));
}
