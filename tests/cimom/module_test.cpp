#include "SmbiosTable.hpp"
#include "objects/ObjectManager.hpp"
#include "providers/Providers.hpp"
#include "schema/Namespace.hpp"

#include <gtest/gtest.h>

using namespace cimom;
using namespace OpenWBEM;

namespace {

/** A memory device of DSP0134 with the fields of version 2.1 and a module of 8 GiB. */
SmbiosBytes memory(const std::string& locator) {
    return SmbiosBytes(17, 0x1B).word(0x0C, 8192).byte(0x0E, 9).text(0x10, locator);
}

/** A slot of DSP0134 at "domain:bus:device.0". */
SmbiosBytes slot(const std::string& name, unsigned domain, unsigned bus, unsigned device) {
    return SmbiosBytes(9, 0x11).text(0x04, name).word(0x0D, domain).byte(0x0F, bus).byte(0x10, device << 3);
}

void writeDevice(const HostTree& tree, const std::string& address,
                 const std::string& classCode = "0x020000") {
    const std::string directory = "/sys/bus/pci/devices/" + address + "/";
    tree.write(directory + "class", classCode + "\n");
    tree.write(directory + "vendor", "0x1af4\n");
    tree.write(directory + "device", "0x1041\n");
}

/** A property of every instance, with a blank after each value. */
std::string each(const char* className, const HostTree& tree, const char* property) {
    std::string values;
    for (const CIMInstance& instance : allInstances(providerOf(className, tree.host())))
        values += text(instance, property) + " ";
    return values;
}

std::string modulesOf(const HostTree& tree) {
    return each("QAV_XRULogicalModule", tree, "DeviceID");
}

std::string locationsOf(const HostTree& tree) {
    return each("QAV_CoreTelephony_ModuleLocation", tree, "Key");
}

/** CanBeFRUed of memory of a form factor. */
std::string canBeReplaced(unsigned formFactor) {
    HostTree tree;
    writeSmbiosTable(tree, memory("A").byte(0x0E, formFactor));
    return text(onlyInstance(providerOf("QAV_XRULogicalModule", tree.host())), "CanBeFRUed");
}

/** An enclosure of DSP0134 with a list of `elements` entries of 3 bytes, then a part number. */
SmbiosBytes enclosure(unsigned type, unsigned elements = 0) {
    return SmbiosBytes(3, 0x16 + elements * 3)
        .byte(5, type)
        .byte(0x13, elements)
        .byte(0x14, 3)
        .text(0x15 + elements * 3, "part");
}

} // namespace

TEST(LogicalModule, PropertiesComeKeysFirst) {
    HostTree tree;
    writeSmbiosTable(tree, memory("DIMM_A1"));
    const CIMInstance module = onlyInstance(providerOf("QAV_XRULogicalModule", tree.host()));
    EXPECT_EQ("QAV_XRULogicalModule", module.getClassName());
    EXPECT_EQ("CreationClassName DeviceID", names(module.getKeyValuePairs()));
    EXPECT_EQ("CreationClassName DeviceID VendorEquipmentType Version SerialNumber Manufacturer PartNumber "
              "OtherIdentifyingInfo UserTracking CanBeFRUed PhysicalType _INDEX _CONTAINED_IN PresentStatus",
              names(module.getProperties()));
}

TEST(LogicalModule, DataOfAMemoryModuleComesFromTheFirmware) {
    HostTree tree;
    writeSmbiosTable(tree, SmbiosBytes(17, 0x2C)
                               .word(0x0C, 8192)
                               .byte(0x0E, 9)
                               .text(0x10, "DIMM_A1")
                               .text(0x17, "Acme")
                               .text(0x18, "serial")
                               .text(0x1A, "part")
                               .text(0x2B, "firmware"));
    const CIMInstance module = onlyInstance(providerOf("QAV_XRULogicalModule", tree.host()));
    EXPECT_EQ("QAV_XRULogicalModule", text(module, "CreationClassName"));
    EXPECT_EQ("memory:0", text(module, "DeviceID"));
    EXPECT_EQ("(null)", text(module, "VendorEquipmentType"));
    EXPECT_EQ("firmware", text(module, "Version"));
    EXPECT_EQ("serial", text(module, "SerialNumber"));
    EXPECT_EQ("Acme", text(module, "Manufacturer"));
    EXPECT_EQ("part", text(module, "PartNumber"));
    EXPECT_EQ("true", text(module, "CanBeFRUed"));
    EXPECT_EQ("9", text(module, "PhysicalType"));
    EXPECT_EQ("256", text(module, "_INDEX"));
    EXPECT_EQ("1", text(module, "_CONTAINED_IN"));
    EXPECT_EQ("(null)", text(module, "PresentStatus"));
    EXPECT_EQ("DIMM_A1 ", locationsOf(tree));
    EXPECT_EQ("memory module ", each("QAV_CoreTelephony_ModuleLocation", tree, "LocnXruType"));
}

TEST(LogicalModule, AnEmptySocketIsSkippedAndUsesUpItsNumber) {
    HostTree tree;
    writeSmbiosTable(tree, std::string(memory("A").word(0x0C, 0)) +
                               std::string(memory("B").word(0x0C, 0xFFFF)) +
                               std::string(SmbiosBytes(17, 0x0D)) + std::string(memory("C")));
    EXPECT_EQ("memory:1 memory:3 ", modulesOf(tree));
    EXPECT_EQ("257 259 ", each("QAV_XRULogicalModule", tree, "_INDEX"));
    EXPECT_EQ("B C ", locationsOf(tree));
}

TEST(LogicalModule, MemoryInASocketCanBeReplacedAndSolderedMemoryCannot) {
    for (const unsigned socketed : {3u, 4u, 6u, 9u, 12u, 13u, 14u, 15u})
        EXPECT_EQ("true", canBeReplaced(socketed)) << socketed;
    for (const unsigned soldered : {5u, 11u, 16u})
        EXPECT_EQ("false", canBeReplaced(soldered)) << soldered;
    for (const unsigned unknown : {0u, 1u, 2u, 255u})
        EXPECT_EQ("(null)", canBeReplaced(unknown)) << unknown;
}

TEST(LogicalModule, LocationsWithTheSameNameAreMadeUnique) {
    HostTree tree;
    writeSmbiosTable(tree, std::string(memory("DIMM 0")) + std::string(memory("DIMM 0")) +
                               std::string(memory("DIMM 1")) + std::string(memory("DIMM 0 #256")) +
                               std::string(memory(" ")));
    EXPECT_EQ("DIMM 0 #256 #256 DIMM 0 #257 DIMM 1 DIMM 0 #256 #259 memory socket ", locationsOf(tree));
}

TEST(LogicalModule, WithoutSlotsAllDevicesExceptBridgesAreCards) {
    HostTree tree;
    writeDevice(tree, "0000:00:00.0", "0x060000");
    writeDevice(tree, "0000:00:01.0");
    writeDevice(tree, "0000:00:01.1");
    writeDevice(tree, "0000:00:1f.0", "0x060100");
    writeDevice(tree, "0000:00:1f.2", "0x010601");
    writeDevice(tree, "0001:02:03.0");
    EXPECT_EQ("pci:0000:00:01.0 pci:0001:02:03.0 ", modulesOf(tree));
    EXPECT_EQ("65544 131608 ", each("QAV_XRULogicalModule", tree, "_INDEX"));
    EXPECT_EQ("(null) (null) ", each("QAV_XRULogicalModule", tree, "CanBeFRUed"));
    EXPECT_EQ("0000:00:01.0 0001:02:03.0 ", locationsOf(tree));
    EXPECT_EQ("expansion card expansion card ",
              each("QAV_CoreTelephony_ModuleLocation", tree, "LocnXruType"));
}

TEST(LogicalModule, ADeviceWithoutItsFirstFunctionHasTheIndexOfItsLowestFunction) {
    HostTree tree;
    writeDevice(tree, "0000:ff:1f.7");
    writeDevice(tree, "fffe:ff:1f.7");
    EXPECT_EQ("131071 4294967295 ", each("QAV_XRULogicalModule", tree, "_INDEX"));
}

TEST(LogicalModule, DevicesOfVirtualDomainsAreNotCards) {
    HostTree tree;
    writeDevice(tree, "ffff:00:00.0");
    writeDevice(tree, "10000:00:00.0");
    EXPECT_EQ("", modulesOf(tree));
}

TEST(LogicalModule, DataOfACardComesFromItsDevice) {
    HostTree tree;
    const std::string directory = "/sys/bus/pci/devices/0000:00:01.0/";
    writeDevice(tree, "0000:00:01.0");
    EXPECT_EQ("1af4 ", each("QAV_XRULogicalModule", tree, "Manufacturer"));
    EXPECT_EQ("1af4:1041 ", each("QAV_XRULogicalModule", tree, "VendorEquipmentType"));
    EXPECT_EQ("(null) ", each("QAV_XRULogicalModule", tree, "Version"));
    tree.write("/usr/share/misc/pci.ids", "1028  Acme\n1af4  Chips\n\t1041  Network\n");
    tree.write(directory + "subsystem_vendor", "0x1028\n");
    tree.write(directory + "revision", "0x0a\n");
    tree.write(directory + "label", "Onboard LAN\n");
    const CIMInstance card = onlyInstance(providerOf("QAV_XRULogicalModule", tree.host()));
    EXPECT_EQ("Acme", text(card, "Manufacturer"));
    EXPECT_EQ("Network", text(card, "VendorEquipmentType"));
    EXPECT_EQ("0a", text(card, "Version"));
    EXPECT_EQ("9", text(card, "PhysicalType"));
    EXPECT_EQ("1", text(card, "_CONTAINED_IN"));
    for (const char* const property : {"SerialNumber", "PartNumber", "CanBeFRUed", "PresentStatus"})
        EXPECT_EQ("(null)", text(card, property)) << property;
    EXPECT_EQ("Onboard LAN ", locationsOf(tree));
}

TEST(LogicalModule, IfSlotsAreReportedOnlyDevicesInSlotsAreCards) {
    HostTree tree;
    for (const char* const address : {"0000:00:01.0", "0000:02:03.0", "0000:04:00.0", "0001:02:03.0"})
        writeDevice(tree, address);
    writeDevice(tree, "0000:05:00.0", "0x060400");
    tree.write("/sys/bus/pci/slots/7/address", "0000:04:00\n");
    tree.write("/sys/bus/pci/slots/8/address", "0000:05:00\n");
    EXPECT_EQ("pci:0000:04:00.0 ", modulesOf(tree));
    EXPECT_EQ("PCI slot 7 ", locationsOf(tree));
    EXPECT_EQ("true ", each("QAV_XRULogicalModule", tree, "CanBeFRUed"));

    writeSmbiosTable(tree, std::string(slot("SLOT A", 0, 2, 3)) + std::string(slot("SLOT B", 0, 4, 0)));
    EXPECT_EQ("pci:0000:02:03.0 pci:0000:04:00.0 ", modulesOf(tree));
    EXPECT_EQ("SLOT A SLOT B ", locationsOf(tree));
}

TEST(LogicalModule, ASlotWithoutAPCIAddressIsSkipped) {
    HostTree tree;
    writeDevice(tree, "0000:00:01.0");
    for (const std::string& odd :
         {std::string(slot("A", 0xFFFF, 0xFF, 0).byte(0x10, 0xFF)),
          std::string(SmbiosBytes(9, 0x10).text(4, "A")), std::string(SmbiosBytes(9, 0x11)),
          std::string(SmbiosBytes(9, 0x0D).text(4, "A")), std::string(slot("A", 0, 2, 3).byte(0, 41))}) {
        writeSmbiosTable(tree, odd);
        EXPECT_EQ("pci:0000:00:01.0 ", modulesOf(tree));
    }
    writeSmbiosTable(tree, slot("A", 1, 0xFF, 0));
    EXPECT_EQ("", modulesOf(tree)) << "a slot, and an empty one";
}

TEST(LogicalModule, MemoryComesBeforeCards) {
    HostTree tree;
    writeDevice(tree, "0000:00:01.0");
    writeSmbiosTable(tree, memory("DIMM_A1"));
    EXPECT_EQ("memory:0 pci:0000:00:01.0 ", modulesOf(tree));
}

TEST(LogicalModule, AnEmptyHostHasNoModules) {
    HostTree tree;
    for (const char* const className :
         {"QAV_XRULogicalModule", "QAV_CoreTelephony_ModuleLocation", "QAV_XRUPackageDependency",
          "QAV_XRULogicalModuleLocation", "QAV_K70ExpansionChassis"})
        EXPECT_TRUE(allInstances(providerOf(className, tree.host())).empty());
}

TEST(ExpansionChassis, AllEnclosuresAfterTheFirstAreExpansions) {
    HostTree tree;
    writeSmbiosTable(tree, enclosure(0x17));
    EXPECT_EQ("", each("QAV_K70ExpansionChassis", tree, "Tag"));
    writeSmbiosTable(tree,
                     std::string(memory("A")) + std::string(enclosure(0x17)) + std::string(memory("B")) +
                         std::string(enclosure(0x92, 2).text(4, "Acme").text(6, "B2").text(7, "serial")) +
                         std::string(SmbiosBytes(3, 9).byte(5, 0x15)));
    const std::vector<CIMInstance> all = allInstances(providerOf("QAV_K70ExpansionChassis", tree.host()));
    ASSERT_EQ(2u, all.size());
    EXPECT_EQ("QAV_K70ExpansionChassis", all[0].getClassName());
    EXPECT_EQ("Tag CreationClassName", names(all[0].getKeyValuePairs()));
    EXPECT_EQ(
        "Tag CreationClassName VendorEquipmentType ElementName Version SerialNumber Manufacturer PartNumber "
        "OtherIdentifyingInfo UserTracking CanBeFRUed PhysicalType _INDEX PresentStatus",
        names(all[0].getProperties()));
    EXPECT_EQ("ExpansionChassis-1", text(all[0], "Tag"));
    EXPECT_EQ("QAV_K70ExpansionChassis", text(all[0], "CreationClassName"));
    EXPECT_EQ("Acme", text(all[0], "Manufacturer"));
    EXPECT_EQ("B2", text(all[0], "Version"));
    EXPECT_EQ("serial", text(all[0], "SerialNumber"));
    EXPECT_EQ("part", text(all[0], "PartNumber"));
    EXPECT_EQ("18", text(all[0], "PhysicalType"));
    EXPECT_EQ("2", text(all[0], "_INDEX"));
    EXPECT_EQ("ExpansionChassis-2", text(all[1], "Tag"));
    EXPECT_EQ("3", text(all[1], "_INDEX"));
    EXPECT_EQ("(null)", text(all[1], "PartNumber"));
}

TEST(ExpansionChassis, WithAListOfElementsThatExceedsTheStructureThePartNumberIsNull) {
    HostTree tree;
    writeSmbiosTable(tree, std::string(enclosure(3)) +
                               std::string(enclosure(0x12).byte(0x13, 255).byte(0x14, 255)));
    EXPECT_EQ("(null) ", each("QAV_K70ExpansionChassis", tree, "PartNumber"));
    EXPECT_EQ("18 ", each("QAV_K70ExpansionChassis", tree, "PhysicalType"));
}

TEST(ExpansionChassis, ExcessiveNumbersOfPartsDoNotShareAnIndex) {
    HostTree tree;
    std::string structures;
    for (int i = 0; i < 300; ++i)
        structures += SmbiosBytes(3, 4);
    for (int i = 0; i < 66000; ++i)
        structures += SmbiosBytes(17, 0x0E).word(0x0C, 1);
    writeSmbiosTable(tree, structures);
    EXPECT_EQ("255", text(allInstances(providerOf("QAV_K70ExpansionChassis", tree.host())).back(), "_INDEX"));
    EXPECT_EQ("65535", text(allInstances(providerOf("QAV_XRULogicalModule", tree.host())).back(), "_INDEX"));
}

TEST(ModuleAssociations, EachModuleRefersToItsChassisAndItsLocation) {
    HostTree tree;
    writeDevice(tree, "0000:00:01.0");
    writeSmbiosTable(tree, memory("DIMM_A1"));
    const ObjectManager manager(makeProviders(tree.host(), loop()));
    const auto at = [&](const CIMInstance& instance, const char* end) {
        return manager.getInstance("root/cimv2", instance.getProperty(end).getValue().toCIMObjectPath(),
                                   nullptr);
    };
    const std::vector<CIMInstance> dependencies =
        allInstances(providerOf("QAV_XRUPackageDependency", tree.host()));
    ASSERT_EQ(2u, dependencies.size());
    EXPECT_EQ("QAV_XRUPackageDependency", dependencies[0].getClassName());
    EXPECT_EQ("Dependent Antecedent", names(dependencies[0].getKeyValuePairs()));
    EXPECT_EQ("memory:0", text(at(dependencies[0], "Dependent"), "DeviceID"));
    EXPECT_EQ("pci:0000:00:01.0", text(at(dependencies[1], "Dependent"), "DeviceID"));
    EXPECT_EQ("QAV_K70Chassis", at(dependencies[1], "Antecedent").getClassName());
    EXPECT_EQ("1", text(at(dependencies[1], "Antecedent"), "_INDEX"));

    const std::vector<CIMInstance> associations =
        allInstances(providerOf("QAV_XRULogicalModuleLocation", tree.host()));
    ASSERT_EQ(2u, associations.size());
    EXPECT_EQ("QAV_XRULogicalModuleLocation", associations[0].getClassName());
    EXPECT_EQ("SameElement SystemElement", names(associations[0].getKeyValuePairs()));
    EXPECT_EQ("DIMM_A1", text(at(associations[0], "SameElement"), "Key"));
    EXPECT_EQ("memory:0", text(at(associations[0], "SystemElement"), "DeviceID"));
    EXPECT_EQ("0000:00:01.0", text(at(associations[1], "SameElement"), "Key"));
    EXPECT_EQ("expansion card", text(at(associations[1], "SameElement"), "LocnXruType"));
    EXPECT_EQ("pci:0000:00:01.0", text(at(associations[1], "SystemElement"), "DeviceID"));
}

TEST(ModuleAssociations, AnAssociationIsFoundByItsReferences) {
    HostTree tree;
    writeSmbiosTable(tree, memory("DIMM_A1"));
    const ObjectManager manager(makeProviders(tree.host(), loop()));
    for (const char* const className : {"QAV_XRUPackageDependency", "QAV_XRULogicalModuleLocation"}) {
        const CIMInstance instance = onlyInstance(providerOf(className, tree.host()));
        const CIMInstance found = manager.getInstance("root/cimv2", pathOf(instance), nullptr);
        EXPECT_EQ(pathOf(instance), pathOf(found));
    }
}
