#include "Failure.hpp"
#include "LampProvider.hpp"
#include "OW_CIMProperty.hpp"
#include "types/ObjectData.hpp"

#include <gtest/gtest.h>

using namespace cimom;
using namespace OpenWBEM;

namespace {

const ClassDetails plain{false, false};
const ClassDetails all{true, true};

CIMClass classOf(const char* name, const ClassDetails& details, const PropertyList* wanted = nullptr) {
    return lampManager({}).getClass("root/cimv2", name, details, wanted);
}

std::string qualifiers(const QualifierArray& these) {
    std::string names;
    for (const Qualifier& qualifier : these)
        names += std::string(names.empty() ? "" : " ") + qualifier.name.toString().c_str();
    return names;
}

/** One line a qualifier: `name=value` in MOF. */
std::string valuesOf(const QualifierArray& these) {
    std::string lines;
    for (const Qualifier& qualifier : these)
        lines +=
            std::string(qualifier.name.toString().c_str()) + "=" + qualifier.value.toMOF().c_str() + "\n";
    return lines;
}

/** The qualifiers of the first property. */
QualifierArray propertyQualifiers(const CIMClass& object) {
    return ObjectAccess::declaration(object.getAllProperties()[0]).qualifiers;
}

/** One line a property: `name type [qualifiers] origin`. */
std::string described(const CIMClass& object) {
    std::string text;
    for (const CIMProperty& property : object.getAllProperties()) {
        const Declaration& declaration = ObjectAccess::declaration(property);
        text += std::string(property.getName().c_str()) + " " + declaration.type.toString().c_str() +
                (declaration.type.isArrayType() ? "[]" : "") + " [" + qualifiers(declaration.qualifiers) +
                "]" + " " + declaration.originClass.toString().c_str() + "\n";
    }
    return text;
}

} // namespace

TEST(Class, FollowsItsDeclaration) {
    EXPECT_EQ("Colour string [Key] QAV_Lamp\n"
              "Watts uint16 [] QAV_Lamp\n"
              "LitSince datetime [] QAV_Lamp\n"
              "Room string [Write] QAV_Lamp\n"
              "Owner string [Write] QAV_Lamp\n",
              described(classOf("qav_lamp", all)));
    EXPECT_EQ("QAV_Lamp", classOf("qav_lamp", all).getName());
}

TEST(Class, HasNoUnwantedQualifiersOrOrigins) {
    EXPECT_EQ("Wall string [] \nNumber uint32 [] \nLabel string [] \n",
              described(classOf("QAV_Socket", plain)));
}

TEST(Class, HasOnlyTheWantedProperties) {
    const PropertyList wanted = {"watts", "Volts"};
    EXPECT_EQ("Watts uint16 [] \n", described(classOf("QAV_Lamp", plain, &wanted)));
    const PropertyList none;
    EXPECT_EQ("", described(classOf("QAV_Lamp", plain, &none)));
}

TEST(Class, WithReferencesAsKeysIsAnAssociation) {
    const ClassDeclaration wiring{"QAV_Wiring",
                                  {{"Lamp", CIMDataType::REFERENCE, Role::key, false, "QAV_Lamp"},
                                   {"Cables", CIMDataType::UINT16, Role::state, true}}};
    const CIMClass object = classObject(wiring, all);
    EXPECT_TRUE(object.isAssociation());
    EXPECT_EQ("Association", qualifiers(ObjectAccess::data(object).qualifiers));
    EXPECT_EQ("QAV_Lamp", object.getAllProperties()[0].getDataType().getRefClassName());
    EXPECT_TRUE(object.getAllProperties()[1].getDataType().isArrayType());
    EXPECT_EQ("", qualifiers(ObjectAccess::data(classObject(wiring, plain)).qualifiers));
    EXPECT_FALSE(classOf("QAV_Lamp", all).isAssociation());
    EXPECT_TRUE(ObjectAccess::data(classOf("QAV_Lamp", plain)).isKeyed);
    EXPECT_FALSE(ObjectAccess::data(classOf("QAV_Broken", all)).isKeyed);
}

TEST(Class, OfAGroupHasTheQualifiersOfTheCatalogue) {
    const ClassDeclaration statistics{"QAV_NetworkPortStatistics", {{"InOctets", CIMDataType::UINT64}}};
    const CIMClass object = classObject(statistics, all);
    EXPECT_EQ("Description=\"Network interfaces: counters.\"\n",
              valuesOf(ObjectAccess::data(object).qualifiers));
    EXPECT_EQ("Description=\"Bytes received, with those of the link layer.\"\nUnits=\"Bytes\"\n",
              valuesOf(propertyQualifiers(object)));
    const CIMClass plainObject = classObject(statistics, plain);
    EXPECT_EQ("", valuesOf(propertyQualifiers(plainObject)));
}

TEST(Class, NamesTheValuesOfACode) {
    const CIMClass object =
        classObject({"QAV_IPProtocolEndpoint", {{"Forwarding", CIMDataType::UINT16}}}, all);
    EXPECT_EQ("Description=\"Whether the host forwards datagrams as a router.\"\n"
              "ValueMap={\"1\",\"2\"}\n"
              "Values={\"forwarding\",\"not forwarding\"}\n",
              valuesOf(propertyQualifiers(object)));
}

TEST(Class, MustBeServed) {
    EXPECT_EQ("6 /root/cimv2:QAV_Nope", cimErrorOf([] { classOf("QAV_Nope", plain); }));
    EXPECT_EQ("3 root", cimErrorOf([] { lampManager({}).getClass("root", "QAV_Lamp", plain, nullptr); }));
}

TEST(Classes, AreAllServedClasses) {
    std::string names;
    for (const CIMClass& each : lampManager({}).enumerateClasses("/root/cimv2", CIMName(), plain))
        names += each.getName().c_str() + std::string(" ");
    EXPECT_EQ("QAV_Broken QAV_Lamp QAV_Socket ", names);
}

TEST(Classes, HaveNoSubclasses) {
    EXPECT_TRUE(lampManager({}).enumerateClasses("root/cimv2", "QAV_Lamp", plain).empty());
    EXPECT_EQ("5 /root/cimv2:QAV_Nope",
              cimErrorOf([] { lampManager({}).enumerateClasses("root/cimv2", "QAV_Nope", plain); }));
    EXPECT_EQ("3 other", cimErrorOf([] { lampManager({}).enumerateClasses("other", CIMName(), plain); }));
}

TEST(Property, IsThePropertyOfTheInstance) {
    const ObjectManager manager = lampManager({"red"});
    const CIMObjectPath path = CIMObjectPath::parse("QAV_Lamp.Colour=\"red\"");
    EXPECT_EQ("60", manager.getProperty("root/cimv2", path, "wATTS").toString());
    EXPECT_FALSE(manager.getProperty("root/cimv2", path, "LitSince"));
}

TEST(Property, MustBeDeclaredByTheClass) {
    const ObjectManager manager = lampManager({"red"});
    const auto errorOf = [&](const char* path, const char* property) {
        return cimErrorOf([&] { manager.getProperty("root/cimv2", CIMObjectPath::parse(path), property); });
    };
    EXPECT_EQ("12 Volts", errorOf("QAV_Lamp.Colour=\"red\"", "Volts"));
    EXPECT_EQ("6 /root/cimv2:QAV_Lamp.Colour=\"blue\"", errorOf("QAV_Lamp.Colour=\"blue\"", "Watts"));
    EXPECT_EQ("5 /root/cimv2:QAV_Nope", errorOf("QAV_Nope.Colour=\"blue\"", "Watts"));
}
