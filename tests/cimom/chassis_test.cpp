#include "HostTree.hpp"
#include "providers/Providers.hpp"

#include <gtest/gtest.h>

using namespace cimom;
using namespace OpenWBEM;

namespace {

CIMInstance chassisOf(const HostTree& tree) {
    return onlyInstance(providerOf("QAV_K70Chassis", tree.host()));
}

} // namespace

TEST(Chassis, PropertiesComeKeysFirst) {
    HostTree tree;
    const CIMInstance chassis = chassisOf(tree);
    EXPECT_EQ("QAV_K70Chassis", chassis.getClassName());
    EXPECT_EQ("Tag CreationClassName", names(chassis.getKeyValuePairs()));
    EXPECT_EQ("Tag CreationClassName Model VendorEquipmentType ElementName Version SerialNumber Manufacturer "
              "PartNumber OtherIdentifyingInfo UserTracking CanBeFRUed PhysicalType Location _INDEX "
              "_CONTAINED_IN PresentStatus",
              names(chassis.getProperties()));
}

TEST(Chassis, DataComesFromTheFirmware) {
    HostTree tree;
    const std::string directory = "/sys/class/dmi/id/";
    tree.write(directory + "product_name", "Box 9000\n");
    tree.write(directory + "product_family", "Boxes\n");
    tree.write(directory + "product_sku", "9000-1\n");
    tree.write(directory + "chassis_version", "B2\n");
    tree.write(directory + "chassis_serial", "123456\n");
    tree.write(directory + "chassis_vendor", "Acme, Inc.\n");
    tree.write(directory + "chassis_type", "23\n");
    const CIMInstance chassis = chassisOf(tree);
    EXPECT_EQ("Chassis", text(chassis, "Tag"));
    EXPECT_EQ("QAV_K70Chassis", text(chassis, "CreationClassName"));
    EXPECT_EQ("Box 9000", text(chassis, "Model"));
    EXPECT_EQ("Boxes", text(chassis, "VendorEquipmentType"));
    EXPECT_EQ("9000-1", text(chassis, "PartNumber"));
    EXPECT_EQ("B2", text(chassis, "Version"));
    EXPECT_EQ("123456", text(chassis, "SerialNumber"));
    EXPECT_EQ("Acme, Inc.", text(chassis, "Manufacturer"));
    EXPECT_EQ("23", text(chassis, "PhysicalType"));
}

TEST(Chassis, DataThatTheFirmwareDoesNotReportIsNull) {
    HostTree tree;
    tree.write("/sys/class/dmi/id/product_name", " \n");
    tree.write("/sys/class/dmi/id/chassis_type", "rack\n");
    const CIMInstance chassis = chassisOf(tree);
    for (const CIMProperty& property : chassis.getProperties()) {
        bool isOurs = false;
        for (const char* const name : {"Tag", "CreationClassName", "_INDEX", "_CONTAINED_IN"})
            isOurs = isOurs || property.getName() == name;
        EXPECT_EQ(isOurs, static_cast<bool>(property.getValue())) << property.getName();
    }
}

TEST(Chassis, IsTheFirstEntityAndIsNotContainedInAnother) {
    HostTree tree;
    EXPECT_EQ("1", text(chassisOf(tree), "_INDEX"));
    EXPECT_EQ("0", text(chassisOf(tree), "_CONTAINED_IN"));
}

TEST(Chassis, TheSiteMayWriteNamesAndLocations) {
    HostTree tree;
    const Provider provider = providerOf("QAV_K70Chassis", tree.host());
    std::string writable;
    for (const PropertyDeclaration& declared : provider.declaration->properties) {
        if (declared.role == Role::site)
            writable += std::string(declared.name) + " ";
    }
    EXPECT_EQ("ElementName OtherIdentifyingInfo UserTracking Location ", writable);
}

TEST(Providers, PropertiesOfTheSiteAreStrings) {
    HostTree tree;
    for (const Provider& provider : makeProviders(tree.host(), loop())) {
        for (const PropertyDeclaration& declared : provider.declaration->properties) {
            if (declared.role != Role::site)
                continue;
            EXPECT_EQ(CIMDataType::STRING, declared.type) << declared.name;
            EXPECT_FALSE(declared.isArray) << declared.name;
        }
    }
}
