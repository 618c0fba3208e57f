#include "OW_CIMObjectPath.hpp"
#include "OW_CIMProperty.hpp"
#include "StorageTree.hpp"
#include "providers/Providers.hpp"

#include <algorithm>
#include <gtest/gtest.h>

using namespace cimom;
using namespace OpenWBEM;

namespace {

/** Disks sda and sdb with two partitions each. */
class DiskTree : public StorageTree {
public:
    DiskTree() {
        writeDisk("sda", "8:0", "1000");
        writePartition("sda", "sda1", "8:1", "1", "100");
        writePartition("sda", "sda2", "8:2", "2", "100");
        writeDisk("sdb", "8:16", "1000");
        writePartition("sdb", "sdb1", "8:17", "1", "100");
        writePartition("sdb", "sdb2", "8:18", "2", "100");
    }

    void writeVolume(const std::string& name, const std::string& number,
                     const std::vector<std::string>& slaves) const {
        writeDiskFile(name, "dev", number);
        writeDiskFile(name, "size", "100");
        for (const std::string& slave : slaves)
            makeDirectory("/sys/block/" + name + "/slaves/" + slave);
    }
};

/** The mount point and the key of the antecedent of each instance, sorted: "<point>=<key> ". */
std::string pairs(const HostTree& tree, const Provider& provider) {
    std::vector<std::string> found;
    for (const CIMInstance& instance : allInstances(provider))
        found.push_back(text(referredTo(tree, instance, "Dependent"), "Root") + "=" +
                        text(referredTo(tree, instance, "Antecedent"), "DeviceID") + " ");
    std::sort(found.begin(), found.end());
    std::string all;
    for (const std::string& pair : found)
        all += pair;
    return all;
}

std::string partitions(const HostTree& tree) {
    return pairs(tree, providerOf("QAV_ResidesOnPartition", tree.host()));
}

} // namespace

TEST(ResidesOnPartition, HasTwoReferencesAsKeys) {
    DiskTree tree;
    tree.writeMounts({{27, 1, "8:2", "/", "ext4", "/dev/root"}});
    const CIMInstance found = onlyInstance(providerOf("QAV_ResidesOnPartition", tree.host()));
    EXPECT_EQ("QAV_ResidesOnPartition", found.getClassName());
    EXPECT_EQ("Dependent Antecedent", names(found.getProperties()));
    EXPECT_EQ("Dependent Antecedent", names(found.getKeyValuePairs()));
    EXPECT_EQ("QAV_FileSystem", referredTo(tree, found, "Dependent").getClassName());
    EXPECT_EQ("QAV_DiskPartition", referredTo(tree, found, "Antecedent").getClassName());
}

TEST(ResidesOnPartition, EachMountRefersToItsPartition) {
    DiskTree tree;
    tree.writeMounts({{27, 1, "8:2", "/", "ext4", "/dev/sda2"},
                      {30, 27, "8:17", "/home", "ext4", "/dev/sdb1"},
                      {31, 27, "8:17", "/srv", "ext4", "/dev/sdb1", "/srv"},
                      {32, 27, "8:33", "/gone", "ext4", "/dev/sdc1"},
                      {33, 27, "0:40", "/data", "nfs4", "box:/export"},
                      {34, 27, "0:41", "/tmp", "tmpfs", "tmpfs"},
                      {35, 27, "8:1", "/proc", "proc", "proc"}});
    EXPECT_EQ("/=sda2 /home=sdb1 /srv=sdb1 ", partitions(tree));
}

TEST(ResidesOnPartition, AWholeDiskHasNoPartition) {
    DiskTree tree;
    tree.writeMounts({{27, 1, "8:0", "/", "ext4", "/dev/sda"}});
    EXPECT_EQ("", partitions(tree));
}

TEST(ResidesOnPartition, AVolumeIsBackedByThePartitionsThatItIsMadeOf) {
    DiskTree tree;
    tree.writeVolume("md0", "9:0", {"sda2", "sdb2"});
    tree.writeVolume("dm-0", "252:0", {"md0", "sdb1", "sdb2", "sdz9"});
    tree.writeMounts({{27, 1, "252:0", "/", "ext4", "/dev/mapper/system-root"}});
    EXPECT_EQ("/=sda2 /=sdb1 /=sdb2 ", partitions(tree));
}

TEST(ResidesOnPartition, APartitionOfAVolumeIsNotBackedByPartitionsOfTheVolume) {
    DiskTree tree;
    tree.writeVolume("md0", "9:0", {"sda2", "sdb2"});
    tree.writePartition("md0", "md0p1", "259:0", "1", "50");
    tree.writeMounts({{27, 1, "259:0", "/", "ext4", "/dev/md0p1"}});
    EXPECT_EQ("/=md0p1 ", partitions(tree));
}

TEST(ResidesOnPartition, ACycleOfVolumesEnds) {
    DiskTree tree;
    tree.writeVolume("dm-0", "252:0", {"dm-1", "dm-0"});
    tree.writeVolume("dm-1", "252:1", {"dm-0", "sda1"});
    tree.writeMounts({{27, 1, "252:0", "/", "ext4", "/dev/dm-0"}});
    EXPECT_EQ("/=sda1 ", partitions(tree));
}

TEST(ResidesOnPartition, AFileSystemThatMaySpanDevicesIsFoundByItsDeviceFile) {
    DiskTree tree;
    tree.writeVolume("dm-0", "252:0", {"sdb2"});
    tree.link("/dev/mapper/system-root", "../dm-0");
    tree.writeMounts({{27, 1, "0:30", "/", "btrfs", "/dev/mapper/system-root", "/@"},
                      {28, 27, "0:31", "/home", "btrfs", "/dev/sda1", "/@home"},
                      {29, 27, "0:32", "/other", "btrfs", "sda2"}});
    EXPECT_EQ("/=sdb2 /home=sda1 ", partitions(tree));
}

TEST(ResidesOnPartition, ADeviceFileInADirectoryIsFoundByItsName) {
    DiskTree tree;
    tree.writeDisk("cciss!c0d0", "104:0", "1000");
    tree.writePartition("cciss!c0d0", "cciss!c0d0p1", "104:1", "1", "100");
    tree.link("/dev/array", "cciss/c0d0p1");
    tree.writeMounts({{27, 1, "0:30", "/", "btrfs", "/dev/cciss/c0d0p1", "/@"},
                      {28, 27, "0:31", "/home", "btrfs", "/dev/array", "/@home"}});
    EXPECT_EQ("/=cciss!c0d0p1 /home=cciss!c0d0p1 ", partitions(tree));
}

TEST(ResidesOnExtent, HasTwoReferencesAsKeys) {
    StorageTree tree;
    tree.writeMounts({{27, 1, "8:2", "/", "ext4", "/dev/sda2"}});
    const CIMInstance found = onlyInstance(providerOf("QAV_ResidesOnExtent", tree.host()));
    EXPECT_EQ("QAV_ResidesOnExtent", found.getClassName());
    EXPECT_EQ("Dependent Antecedent", names(found.getProperties()));
    EXPECT_EQ("Dependent Antecedent", names(found.getKeyValuePairs()));
    EXPECT_EQ("QAV_FileSystem", referredTo(tree, found, "Dependent").getClassName());
    EXPECT_EQ("QAV_StorageExtent", referredTo(tree, found, "Antecedent").getClassName());
}

TEST(ResidesOnExtent, EachMountOfALocalFileSystemRefersToItsExtent) {
    StorageTree tree;
    tree.writeMounts({{27, 1, "8:2", "/", "ext4", "/dev/sda2"},
                      {30, 27, "8:2", "/srv/a\\040b", "ext4", "/dev/sda2", "/x"},
                      {33, 27, "0:40", "/data", "nfs4", "box:/export"},
                      {34, 27, "0:41", "/tmp", "tmpfs", "tmpfs"}});
    EXPECT_EQ("/=8:2 /srv/a b=8:2 /tmp=0:41 ", pairs(tree, providerOf("QAV_ResidesOnExtent", tree.host())));
}
