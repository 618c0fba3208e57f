#include "StorageTree.hpp"
#include "host/Disks.hpp"
#include "providers/Providers.hpp"

#include <gtest/gtest.h>

using namespace cimom;
using namespace OpenWBEM;

namespace {

/** A disk sda with one partition, sda1. */
class PartitionTree : public StorageTree {
public:
    PartitionTree() {
        writeDisk("sda", "8:0", "1000");
        writePartition("sda", "sda1", "8:1", "1", "501");
    }

    std::string propertyOf(const char* property) const {
        return text(onlyInstance(providerOf("QAV_DiskPartition", host())), property);
    }
    void writeUdev(const std::string& lines) const { write("/run/udev/data/b8:1", lines); }
    void writeKernel(const std::string& lines) const { write("/sys/class/block/sda1/uevent", lines); }
};

} // namespace

TEST(DiskPartition, PropertiesComeKeysFirst) {
    const PartitionTree tree;
    const CIMInstance found = onlyInstance(providerOf("QAV_DiskPartition", tree.host()));
    EXPECT_EQ("QAV_DiskPartition", found.getClassName());
    EXPECT_EQ("CreationClassName DeviceID", names(found.getKeyValuePairs()));
    EXPECT_EQ("CreationClassName DeviceID Index Label Identity Size HR_DEVICE_INDEX",
              names(found.getProperties()));
    EXPECT_EQ("QAV_DiskPartition", text(found, "CreationClassName"));
}

TEST(DiskPartition, NumberAndSizeInKByteComeFromTheKernel) {
    const PartitionTree tree;
    EXPECT_EQ("sda1", tree.propertyOf("DeviceID"));
    EXPECT_EQ("1", tree.propertyOf("Index"));
    EXPECT_EQ("250", tree.propertyOf("Size"));
    tree.writeDiskFile("sda", "sda1/size", "x");
    EXPECT_EQ("(null)", tree.propertyOf("Size"));
}

TEST(DiskPartition, PartitionsAreSortedByNumberAndHaveTheIndexOfTheirDisk) {
    const PartitionTree tree;
    tree.writePartition("sda", "sda10", "8:10", "10", "2");
    tree.writePartition("sda", "sda2", "8:2", "2", "2");
    tree.writeDisk("sdb", "8:16", "1000");
    tree.writePartition("sdb", "sdb1", "8:17", "1", "2");
    EXPECT_EQ("sda1 sda2 sda10 sdb1 ", column(providerOf("QAV_DiskPartition", tree.host()), "DeviceID"));
    EXPECT_EQ("1 2 10 1 ", column(providerOf("QAV_DiskPartition", tree.host()), "Index"));
    EXPECT_EQ("395264 395264 395264 395280 ",
              column(providerOf("QAV_DiskPartition", tree.host()), "HR_DEVICE_INDEX"));
}

TEST(DiskPartition, ADirectoryThatIsNotAPartitionIsSkipped) {
    const PartitionTree tree;
    tree.writeDiskFile("sda", "queue/rotational", "1");
    tree.writePartition("sda", "sda2", "8:2", "two", "2");
    tree.writePartition("sda", "sda3", "8", "3", "2");
    EXPECT_EQ("sda1 ", column(providerOf("QAV_DiskPartition", tree.host()), "DeviceID"));
}

TEST(DiskPartition, WithoutNamesLabelAndIdentityAreNull) {
    const PartitionTree tree;
    EXPECT_EQ("(null)", tree.propertyOf("Label"));
    EXPECT_EQ("(null)", tree.propertyOf("Identity"));
    tree.writeUdev("E:ID_FS_LABEL_ENC=\nE:ID_FS_LABEL_ENC");
    tree.writeKernel("PARTNAME=\n");
    EXPECT_EQ("(null)", tree.propertyOf("Label"));
}

TEST(DiskPartition, TheLabelOfTheFileSystemPrecedesThatInTheTable) {
    const PartitionTree tree;
    tree.writeKernel("DEVNAME=sda1\nPARTNAME=kernel's\n");
    EXPECT_EQ("kernel's", tree.propertyOf("Label"));
    tree.writeUdev("S:x\nE:ID_PART_ENTRY_NAME=in\\x20table\n");
    EXPECT_EQ("in table", tree.propertyOf("Label"));
    tree.link("/dev/disk/by-partlabel/linked\\x20table", "../../sda1");
    EXPECT_EQ("linked table", tree.propertyOf("Label"));
    tree.writeUdev("S:x\nE:ID_FS_LABEL=a_b\nE:ID_FS_LABEL_ENC=a\\x20b\n");
    EXPECT_EQ("a b", tree.propertyOf("Label"));
    tree.link("/dev/disk/by-label/data", "../../sda1");
    EXPECT_EQ("data", tree.propertyOf("Label"));
}

TEST(DiskPartition, TheIdentityInTheTablePrecedesThatOfTheFileSystem) {
    const PartitionTree tree;
    tree.writeUdev("E:ID_FS_UUID_ENC=1111-2222\n");
    EXPECT_EQ("1111-2222", tree.propertyOf("Identity"));
    tree.link("/dev/disk/by-uuid/3333-4444", "../../sda1");
    EXPECT_EQ("3333-4444", tree.propertyOf("Identity"));
    tree.writeKernel("PARTUUID=kernel-01\n");
    EXPECT_EQ("kernel-01", tree.propertyOf("Identity"));
    tree.writeUdev("E:ID_PART_ENTRY_UUID=udev-01\n");
    EXPECT_EQ("udev-01", tree.propertyOf("Identity"));
    tree.link("/dev/disk/by-partuuid/link-01", "../../sda1");
    EXPECT_EQ("link-01", tree.propertyOf("Identity"));
}

TEST(DiskPartition, LinksToOtherDevicesAreIgnored) {
    const PartitionTree tree;
    tree.link("/dev/disk/by-label/other", "../../sda10");
    tree.link("/dev/disk/by-label/disk", "../../sda");
    tree.write("/dev/disk/by-label/file", "");
    EXPECT_EQ("(null)", tree.propertyOf("Label"));
}

TEST(DiskPartition, ASlashInTheNameOfADeviceIsTheKernelsExclamationMark) {
    const StorageTree tree;
    tree.writeDisk("cciss!c0d0", "104:0", "1000");
    tree.writePartition("cciss!c0d0", "cciss!c0d0p1", "104:1", "1", "2");
    tree.link("/dev/disk/by-label/data", "../../cciss/c0d0p1");
    const CIMInstance found = onlyInstance(providerOf("QAV_DiskPartition", tree.host()));
    EXPECT_EQ("cciss!c0d0p1", text(found, "DeviceID"));
    EXPECT_EQ("data", text(found, "Label"));
}

TEST(DiskPartition, TextThatIsNotAnEscapeOfUdevIsKept) {
    const PartitionTree tree;
    tree.writeUdev("E:ID_FS_LABEL_ENC=a\\x2gb\\x4\\x\\\\x41\n");
    EXPECT_EQ("a\\x2gb\\x4\\x\\A", tree.propertyOf("Label"));
    tree.writeUdev("E:ID_FS_LABEL_ENC=a\\x4\n");
    EXPECT_EQ("a\\x4", tree.propertyOf("Label"));
}
