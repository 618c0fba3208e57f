#include "StorageTree.hpp"
#include "host/Devices.hpp"
#include "providers/Providers.hpp"

#include <gtest/gtest.h>

using namespace cimom;
using namespace OpenWBEM;

namespace {

CIMInstance device(const HostTree& tree, const std::string& deviceId) {
    const CIMInstance found = instanceWhere(providerOf("HR_DEVICE", tree.host()), "DeviceID", deviceId);
    EXPECT_TRUE(found) << deviceId;
    return found;
}

std::string value(const HostTree& tree, const std::string& deviceId, const char* property) {
    return text(device(tree, deviceId), property);
}

std::string devicesOf(const HostTree& tree) {
    return column(providerOf("HR_DEVICE", tree.host()), "DeviceID");
}

void writeInterfaceState(const HostTree& tree, const std::string& name, const std::string& index,
                         const std::string& state) {
    tree.write("/sys/class/net/" + name + "/ifindex", index + "\n");
    tree.write("/sys/class/net/" + name + "/operstate", state + "\n");
}

} // namespace

TEST(HRDevice, PropertiesComeKeyFirst) {
    HostTree tree;
    tree.write("/proc/cpuinfo", "processor\t: 0\n");
    const CIMInstance found = onlyInstance(providerOf("HR_DEVICE", tree.host()));
    EXPECT_EQ("HR_DEVICE", found.getClassName());
    EXPECT_EQ("DeviceID", names(found.getKeyValuePairs()));
    EXPECT_EQ("DeviceID _HR_DEVICE_INDEX _HR_DEVICE_TYPE _HR_DEVICE_DESCR _HR_DEVICE_ID _HR_DEVICE_STATUS "
              "_HR_DEVICE_ERRORS",
              names(found.getProperties()));
    EXPECT_EQ("(null)", text(found, "_HR_DEVICE_ID"));
}

TEST(HRDevice, ProcessorsInterfacesAndDisksHaveIndexesOfTheirTypes) {
    StorageTree tree;
    tree.write("/proc/cpuinfo", "processor : 0\nprocessor : 11\n");
    writeInterfaceState(tree, "lo", "1", "unknown");
    writeInterfaceState(tree, "eth0", "4", "up");
    tree.writeDisk("vda", "254:0", "8");
    EXPECT_EQ("processor:cpu0 processor:cpu11 network:lo network:eth0 disk:vda ", devicesOf(tree));
    EXPECT_EQ("196609 196620 262145 262148 458240 ",
              column(providerOf("HR_DEVICE", tree.host()), "_HR_DEVICE_INDEX"));
    EXPECT_EQ("3 3 4 4 6 ", column(providerOf("HR_DEVICE", tree.host()), "_HR_DEVICE_TYPE"));
    EXPECT_EQ("", devicesOf(StorageTree()));
}

TEST(HRDevice, AProcessorIsDescribedByItsModel) {
    HostTree tree;
    tree.write("/proc/cpuinfo",
               "processor\t: 0\nmodel\t\t: 167\nmodel name\t: Fast Chip: (TM) 5\nflags\t: a\n\n"
               "processor\t: 1\nmodel name\t:\n\nprocessor\t: x\nmodel name\t: nobody's\n");
    EXPECT_EQ("processor:cpu0 processor:cpu1 ", devicesOf(tree));
    EXPECT_EQ("Fast Chip: (TM) 5", value(tree, "processor:cpu0", "_HR_DEVICE_DESCR"));
    EXPECT_EQ("cpu1", value(tree, "processor:cpu1", "_HR_DEVICE_DESCR"));
    EXPECT_EQ("(null)", value(tree, "processor:cpu0", "_HR_DEVICE_ERRORS"));
}

TEST(HRDevice, AnOfflineProcessorIsDown) {
    HostTree tree;
    tree.write("/proc/cpuinfo", "processor : 0\n");
    tree.write("/sys/devices/system/cpu/cpu0/online", "0\n");
    tree.write("/sys/devices/system/cpu/cpu1/online", "0\n");
    tree.write("/sys/devices/system/cpu/cpu2/uevent", "");
    tree.write("/sys/devices/system/cpu/cpu3/online", "1\n");
    tree.write("/sys/devices/system/cpu/cpufreq/online", "0\n");
    tree.write("/sys/devices/system/cpu/xyz4/online", "0\n");
    EXPECT_EQ("processor:cpu0 processor:cpu1 processor:cpu2 processor:cpu3 ", devicesOf(tree));
    EXPECT_EQ("2 5 1 2 ", column(providerOf("HR_DEVICE", tree.host()), "_HR_DEVICE_STATUS"));
}

TEST(HRDevice, AnInterfaceIsDescribedByItsAlias) {
    HostTree tree;
    writeInterfaceState(tree, "eth0", "4", "up");
    EXPECT_EQ("eth0", value(tree, "network:eth0", "_HR_DEVICE_DESCR"));
    tree.write("/sys/class/net/eth0/ifalias", "to the core switch\n");
    EXPECT_EQ("to the core switch", value(tree, "network:eth0", "_HR_DEVICE_DESCR"));
}

TEST(HRDevice, StatusOfAnInterfaceFollowsFromItsState) {
    const std::pair<const char*, const char*> states[] = {
        {"up", "2"},      {"testing", "4"},    {"down", "5"},   {"lowerlayerdown", "5"},
        {"dormant", "5"}, {"notpresent", "5"}, {"unknown", "1"}};
    for (const auto& [state, status] : states) {
        HostTree tree;
        writeInterfaceState(tree, "eth0", "4", state);
        EXPECT_EQ(status, value(tree, "network:eth0", "_HR_DEVICE_STATUS")) << state;
    }
}

TEST(HRDevice, ErrorsOfAnInterfaceAreTheSumOfBothDirections) {
    HostTree tree;
    writeInterfaceState(tree, "eth0", "4", "up");
    EXPECT_EQ("(null)", value(tree, "network:eth0", "_HR_DEVICE_ERRORS"));
    tree.write("/proc/net/dev",
               "Inter-|   Receive                                                |  Transmit\n"
               " face |bytes    packets errs drop fifo frame compressed multicast|bytes    "
               "packets errs drop fifo colls carrier compressed\n"
               "  eth0: 100 10 3 0 0 0 0 0 200 20 4 0 0 0 0 0\n");
    EXPECT_EQ("7", value(tree, "network:eth0", "_HR_DEVICE_ERRORS"));
}

TEST(HRDevice, ADiskIsDescribedByVendorAndModel) {
    StorageTree tree;
    tree.writeDisk("sda", "8:0", "8");
    tree.writeDiskFile("sda", "device/vendor", "0x1af4");
    EXPECT_EQ("sda", value(tree, "disk:sda", "_HR_DEVICE_DESCR"));
    tree.writeDiskFile("sda", "device/vendor", "");
    tree.writeDiskFile("sda", "device/model", "Some Disk 500   ");
    EXPECT_EQ("Some Disk 500", value(tree, "disk:sda", "_HR_DEVICE_DESCR"));
    tree.writeDiskFile("sda", "device/vendor", "ATA     ");
    tree.writeDiskFile("sda", "device/rev", "1.00");
    EXPECT_EQ("ATA Some Disk 500 1.00", value(tree, "disk:sda", "_HR_DEVICE_DESCR"));
}

TEST(HRDevice, TheKernelReportsStatusAndErrorsOfADisk) {
    StorageTree tree;
    tree.writeDisk("sda", "8:0", "8");
    EXPECT_EQ("1", value(tree, "disk:sda", "_HR_DEVICE_STATUS"));
    EXPECT_EQ("(null)", value(tree, "disk:sda", "_HR_DEVICE_ERRORS"));
    tree.writeDiskFile("sda", "device/state", "running");
    tree.writeDiskFile("sda", "device/ioerr_cnt", "0xa");
    EXPECT_EQ("2", value(tree, "disk:sda", "_HR_DEVICE_STATUS"));
    EXPECT_EQ("10", value(tree, "disk:sda", "_HR_DEVICE_ERRORS"));
    tree.writeDiskFile("sda", "device/state", "offline");
    EXPECT_EQ("5", value(tree, "disk:sda", "_HR_DEVICE_STATUS"));
}

TEST(HRNetwork, PropertiesComeKeyFirst) {
    HostTree tree;
    writeInterfaceState(tree, "eth0", "4", "up");
    const CIMInstance found = onlyInstance(providerOf("HR_NETWORK", tree.host()));
    EXPECT_EQ("HR_NETWORK", found.getClassName());
    EXPECT_EQ("DeviceID", names(found.getKeyValuePairs()));
    EXPECT_EQ("DeviceID _HR_NETWORK_INDEX _HR_DEVICE_INDEX", names(found.getProperties()));
}

TEST(HRNetwork, HasTheDeviceIndexOfTheInterface) {
    HostTree tree;
    writeInterfaceState(tree, "eth0", "4", "up");
    writeInterfaceState(tree, "veth9", "65539", "up"); // same index as eth0, which has precedence
    const Provider provider = providerOf("HR_NETWORK", tree.host());
    EXPECT_EQ("4 65539 ", column(provider, "_HR_NETWORK_INDEX"));
    EXPECT_EQ("262148 262149 ", column(provider, "_HR_DEVICE_INDEX"));
    for (const CIMInstance& each : allInstances(provider))
        EXPECT_EQ(text(each, "_HR_DEVICE_INDEX"), value(tree, text(each, "DeviceID"), "_HR_DEVICE_INDEX"));
}
