#include "StorageTree.hpp"
#include "host/DeviceNumbers.hpp"
#include "host/Disks.hpp"
#include "providers/Providers.hpp"

#include <gtest/gtest.h>

using namespace cimom;
using namespace OpenWBEM;

namespace {

/** The disk sda of 500 GB. */
void writeSCSIDisk(const StorageTree& tree) {
    tree.writeDisk("sda", "8:0", "976773168");
    tree.writeDiskFile("sda", "ro", "0");
    tree.writeDiskFile("sda", "removable", "0");
    tree.writeDiskFile("sda", "device/vendor", "ATA     ");
    tree.writeDiskFile("sda", "device/model", "Some Disk 500   ");
    tree.writeDiskFile("sda", "device/rev", "1.00");
    tree.writeDiskFile("sda", "device/state", "running");
    tree.writeDiskFile("sda", "device/ioerr_cnt", "0x1c");
}

std::string value(const StorageTree& tree, const char* property) {
    return text(onlyInstance(providerOf("QAV_MediaAccessDevice", tree.host())), property);
}

/** A property of sda after a change to one of its files. */
std::string propertyOf(const char* property, const std::string& file, const std::string& content) {
    StorageTree tree;
    writeSCSIDisk(tree);
    tree.writeDiskFile("sda", file, content);
    return value(tree, property);
}

std::string devicesOf(const StorageTree& tree) {
    return column(providerOf("QAV_MediaAccessDevice", tree.host()), "DeviceID");
}

} // namespace

TEST(MediaAccessDevice, PropertiesComeKeysFirst) {
    StorageTree tree;
    writeSCSIDisk(tree);
    const CIMInstance found = onlyInstance(providerOf("QAV_MediaAccessDevice", tree.host()));
    EXPECT_EQ("QAV_MediaAccessDevice", found.getClassName());
    EXPECT_EQ("CreationClassName DeviceID", names(found.getKeyValuePairs()));
    EXPECT_EQ("CreationClassName DeviceID Capabilities StorageType MaxMediaSize _HR_DEVICE_INDEX "
              "OperationalStatus Errors",
              names(found.getProperties()));
    EXPECT_EQ("QAV_MediaAccessDevice", text(found, "CreationClassName"));
    EXPECT_EQ("sda", text(found, "DeviceID"));
}

TEST(MediaAccessDevice, SizesAreInKByte) {
    EXPECT_EQ("488386584", propertyOf("MaxMediaSize", "size", "976773168"));
    EXPECT_EQ("9223372036854775807", propertyOf("MaxMediaSize", "size", "18446744073709551615"));
    EXPECT_EQ("(null)", propertyOf("MaxMediaSize", "size", "18446744073709551616"));
    EXPECT_EQ("(null)", propertyOf("MaxMediaSize", "size", "-1"));
}

TEST(MediaAccessDevice, AccessIsRandomAndTheKernelReportsTheOtherCapabilities) {
    EXPECT_EQ("3,4", propertyOf("Capabilities", "ro", "0"));
    EXPECT_EQ("3", propertyOf("Capabilities", "ro", "1"));
    EXPECT_EQ("3", propertyOf("Capabilities", "ro", "2"));
    EXPECT_EQ("3,4,7", propertyOf("Capabilities", "removable", "1"));
    StorageTree tree;
    tree.writeDisk("sda", "8:0", "8");
    EXPECT_EQ("3", value(tree, "Capabilities"));
}

TEST(MediaAccessDevice, OnlyFinalStatesHaveAStatus) {
    for (const char* const state : {"running", "live"})
        EXPECT_EQ("2", propertyOf("OperationalStatus", "device/state", state)) << state;
    for (const char* const state : {"offline", "transport-offline", "dead"})
        EXPECT_EQ("10", propertyOf("OperationalStatus", "device/state", state)) << state;
    for (const char* const state : {"blocked", "quiesce", "resetting", "rubbish", ""})
        EXPECT_EQ("(null)", propertyOf("OperationalStatus", "device/state", state)) << state;
}

TEST(MediaAccessDevice, ErrorsAreReadInHexadecimal) {
    EXPECT_EQ("28", propertyOf("Errors", "device/ioerr_cnt", "0x1c"));
    EXPECT_EQ("4294967295", propertyOf("Errors", "device/ioerr_cnt", "0xffffffff"));
    for (const char* const count : {"0x100000000", "1c", "001c", "0x", "0x1g", ""})
        EXPECT_EQ("(null)", propertyOf("Errors", "device/ioerr_cnt", count)) << count;
}

TEST(MediaAccessDevice, DataThatTheKernelDoesNotReportIsNull) {
    StorageTree tree;
    tree.writeDisk("vda", "254:0", "8");
    for (const char* const property : {"OperationalStatus", "Errors"})
        EXPECT_EQ("(null)", value(tree, property)) << property;
}

TEST(MediaAccessDevice, MediaFollowFromTheKernelsNumbersAndNames) {
    StorageTree tree;
    tree.writeDisk("ram0", "1:0", "8");
    tree.writeDisk("fd0", "2:0", "8");
    tree.writeDisk("sda", "8:0", "8");
    tree.writeDisk("sr0", "11:0", "8");
    tree.writeDiskFile("dm-0", "dev", "252:0");
    tree.writeDiskFile("dm-0", "size", "8");
    tree.writeDiskFile("zram0", "dev", "253:0");
    tree.writeDiskFile("zram0", "size", "8");
    EXPECT_EQ("ram0 fd0 sda sr0 dm-0 zram0 ", devicesOf(tree));
    EXPECT_EQ("8 4 3 5 1 8 ", column(providerOf("QAV_MediaAccessDevice", tree.host()), "StorageType"));
}

TEST(MediaAccessDevice, AnEmptyDriveIsServedAndAnUnusedLoopDeviceIsNot) {
    StorageTree tree;
    tree.writeDisk("sr0", "11:0", "0");
    tree.writeDiskFile("loop0", "dev", "7:0");
    tree.writeDiskFile("loop0", "size", "0");
    tree.writeDiskFile("loop1", "dev", "7:1");
    tree.writeDiskFile("loop1", "size", "8");
    EXPECT_EQ("loop1 sr0 ", devicesOf(tree));
    EXPECT_EQ("4 (null) ", column(providerOf("QAV_MediaAccessDevice", tree.host()), "MaxMediaSize"));
}

TEST(MediaAccessDevice, AnEntryWithoutADeviceNumberIsSkipped) {
    StorageTree tree;
    tree.writeDisk("sda", "rubbish", "8");
    tree.writeDisk("sdb", "", "8");
    tree.write("/sys/block/file", "");
    EXPECT_EQ("", devicesOf(tree));
    EXPECT_EQ("", devicesOf(StorageTree()));
}

TEST(MediaAccessDevice, ItsDeviceIndexFollowsFromItsDeviceNumber) {
    StorageTree tree;
    tree.writeDisk("vda", "254:0", "8");
    tree.writeDisk("sda", "8:0", "8");
    tree.writeDisk("nvme0n1", "259:5", "8");
    EXPECT_EQ("sda vda nvme0n1 ", devicesOf(tree));
    EXPECT_EQ("395264 458240 393989 ",
              column(providerOf("QAV_MediaAccessDevice", tree.host()), "_HR_DEVICE_INDEX"));
}

TEST(DeviceIndexes, ConsistOfTheTypeAndTheKernelsNumber) {
    EXPECT_EQ(3u * 65536 + 1, DeviceIndexes(DeviceType::processor).next(1));
    EXPECT_EQ(4u * 65536 + 7, DeviceIndexes(DeviceType::network).next(7));
    EXPECT_EQ(6u * 65536 + 65535, DeviceIndexes(DeviceType::disk).next(65535));
}

TEST(DeviceIndexes, ANumberThatIsTakenOrOutOfRangeIsReplacedByTheNextFreeOne) {
    DeviceIndexes indexes(DeviceType::network);
    EXPECT_EQ(4u * 65536 + 65535, indexes.next(65535));
    EXPECT_EQ(4u * 65536 + 1, indexes.next(65535));
    EXPECT_EQ(4u * 65536 + 2, indexes.next(1));
    EXPECT_EQ(4u * 65536 + 3, indexes.next(65536));
    EXPECT_EQ(4u * 65536 + 4, indexes.next(3));
}

TEST(DeviceIndexes, AreZeroAfterTheLastNumberOfTheType) {
    DeviceIndexes indexes(DeviceType::network);
    for (UInt32 number = 1; number <= 65535; ++number)
        ASSERT_EQ(4u * 65536 + number, indexes.next(number));
    EXPECT_EQ(0u, indexes.next(1));
}
