#include "HostTree.hpp"
#include "host/Pci.hpp"

#include <gtest/gtest.h>

using namespace cimom;

namespace {

void writeFunction(const HostTree& tree, const std::string& address,
                   const std::string& classCode = "0x020000", const std::string& vendor = "0x8086",
                   const std::string& device = "0x1572") {
    const std::string directory = "/sys/bus/pci/devices/" + address + "/";
    tree.write(directory + "class", classCode + "\n");
    tree.write(directory + "vendor", vendor + "\n");
    tree.write(directory + "device", device + "\n");
}

std::string namesOf(const std::vector<PciFunction>& functions) {
    std::string names;
    for (const PciFunction& function : functions)
        names += function.name + " ";
    return names;
}

const char* const list = "# comment\n"
                         "8086  Acme Corporation\n"
                         "\t1041  Wrong Network\n"
                         "# between devices\n"
                         "\t1572  Fast Network\n"
                         "\t\t1af4 1041  Not a device\n"
                         "1af4  Other Ltd.\n"
                         "\t1041  Virtual Network\n"
                         "C 02  Network controller\n";

} // namespace

TEST(PciDevices, AnAddressIsDomainBusDeviceAndFunction) {
    const PciAddress address = parsePciAddress("10000:fe:1f.7").value();
    EXPECT_EQ(0x10000u, address.domain);
    EXPECT_EQ(0xFE, address.bus);
    EXPECT_EQ(0x1F, address.device);
    EXPECT_EQ(7, address.function);
    EXPECT_EQ(0, parsePciAddress("0000:01:02").value().function);
}

TEST(PciDevices, AMalformedAddressIsAbsent) {
    for (const char* const odd :
         {"", "0000", "0000:00", "0000:00:", "0000:00:20.0", "0000:00:00.8", "0000:100:00.0",
          "100000000:00:00.0", "x:00:00.0", "0000:00:00.0.0", "0000:00:00:0", ":::"})
        EXPECT_FALSE(parsePciAddress(odd)) << odd;
}

TEST(PciDevices, DataOfAFunctionComesFromItsFiles) {
    HostTree tree;
    writeFunction(tree, "0001:02:03.4", "0x060400", "0x8086", "0xa1b2");
    tree.write("/sys/bus/pci/devices/0001:02:03.4/subsystem_vendor", "0x1028\n");
    tree.write("/sys/bus/pci/devices/0001:02:03.4/revision", "0x0c\n");
    tree.write("/sys/bus/pci/devices/0001:02:03.4/label", "Onboard LAN\n");
    const PciFunction function = pciFunctions(tree.host()).at(0);
    EXPECT_EQ("0001:02:03.4", function.name);
    EXPECT_EQ(4, function.address.function);
    EXPECT_EQ(0x060400u, function.classCode);
    EXPECT_TRUE(function.isBridge());
    EXPECT_EQ(0x8086, function.vendor);
    EXPECT_EQ(0xA1B2, function.device);
    EXPECT_EQ(0x1028, function.subsystemVendor);
    EXPECT_EQ(0x0C, function.revision);
    EXPECT_EQ("Onboard LAN", function.label);
}

TEST(PciDevices, DataThatAFunctionDoesNotReportIsAbsent) {
    HostTree tree;
    writeFunction(tree, "0000:00:00.0");
    tree.write("/sys/bus/pci/devices/0000:00:00.0/subsystem_vendor", "0x0000\n");
    const PciFunction function = pciFunctions(tree.host()).at(0);
    EXPECT_FALSE(function.isBridge());
    EXPECT_FALSE(function.subsystemVendor);
    EXPECT_FALSE(function.revision);
    EXPECT_FALSE(function.label);
    tree.write("/sys/bus/pci/devices/0000:00:00.0/subsystem_vendor", "0xffff\n");
    EXPECT_FALSE(pciFunctions(tree.host()).at(0).subsystemVendor);
}

TEST(PciDevices, FunctionsAreSortedByAddress) {
    HostTree tree;
    for (const char* const address :
         {"10000:00:00.0", "0001:00:00.0", "0000:01:00.0", "0000:00:02.0", "0000:00:01.1", "0000:00:01.0"})
        writeFunction(tree, address);
    EXPECT_EQ("0000:00:01.0 0000:00:01.1 0000:00:02.0 0000:01:00.0 0001:00:00.0 10000:00:00.0 ",
              namesOf(pciFunctions(tree.host())));
}

TEST(PciDevices, MalformedEntriesAreSkipped) {
    HostTree tree;
    EXPECT_TRUE(pciFunctions(tree.host()).empty());
    writeFunction(tree, "0000:00:01.0");
    writeFunction(tree, "rubbish");
    writeFunction(tree, "0000:00:02.0", "020000");
    writeFunction(tree, "0000:00:03.0", "0x020000", "0x18086");
    writeFunction(tree, "0000:00:04.0", "0x020000", "0x8086", "0x");
    tree.write("/sys/bus/pci/devices/0000:00:05.0/class", "0x020000\n");
    EXPECT_EQ("0000:00:01.0 ", namesOf(pciFunctions(tree.host())));
}

TEST(PciDevices, SlotsHaveTheAddressesOfTheDevicesInThem) {
    HostTree tree;
    EXPECT_TRUE(pciSlots(tree.host()).empty());
    tree.write("/sys/bus/pci/slots/B/address", "0000:03:00\n");
    tree.write("/sys/bus/pci/slots/A/address", "0000:04:1f\n");
    tree.write("/sys/bus/pci/slots/C/address", "nowhere\n");
    tree.write("/sys/bus/pci/slots/D/power", "1\n");
    const std::vector<PciSlot> slots = pciSlots(tree.host());
    ASSERT_EQ(2u, slots.size());
    EXPECT_EQ("A", slots[0].name);
    EXPECT_TRUE(slots[0].address.isSameDevice(parsePciAddress("0000:04:1f.3").value()));
    EXPECT_EQ("B", slots[1].name);
    for (const char* const other : {"0001:03:00.0", "0000:02:00.0", "0000:03:01.0"})
        EXPECT_FALSE(slots[1].address.isSameDevice(parsePciAddress(other).value())) << other;
}

TEST(PciNames, AreFoundInTheListBelowTheirVendor) {
    HostTree tree;
    tree.write("/usr/share/misc/pci.ids", list);
    const PciNames names(tree.host());
    EXPECT_EQ("Acme Corporation", names.vendor(0x8086));
    EXPECT_EQ("Fast Network", names.device(0x8086, 0x1572));
    EXPECT_EQ("Virtual Network", names.device(0x1af4, 0x1041));
}

TEST(PciNames, AreNumbersIfTheListHasNoName) {
    HostTree tree;
    EXPECT_EQ("001a", PciNames(tree.host()).vendor(0x001A));
    EXPECT_EQ("8086:1572", PciNames(tree.host()).device(0x8086, 0x1572));
    tree.write("/usr/share/hwdata/pci.ids", list);
    const PciNames names(tree.host());
    EXPECT_EQ("Acme Corporation", names.vendor(0x8086));
    EXPECT_EQ("1041", names.vendor(0x1041));
    EXPECT_EQ("1af4:1572", names.device(0x1AF4, 0x1572));
    EXPECT_EQ("8086:1af4", names.device(0x8086, 0x1AF4));
}

TEST(PciNames, ATruncatedListHasFewerNames) {
    HostTree tree;
    const std::string whole = list;
    for (std::size_t size = 0; size < whole.size(); ++size) {
        tree.write("/usr/share/misc/pci.ids", whole.substr(0, size));
        const std::string name = PciNames(tree.host()).device(0x1AF4, 0x1041);
        EXPECT_TRUE(name == "1af4:1041" || std::string("Virtual Network").find(name) == 0) << size << name;
    }
}
