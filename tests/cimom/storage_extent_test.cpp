#include "StorageTree.hpp"
#include "host/Storages.hpp"
#include "providers/Providers.hpp"

#include <gtest/gtest.h>
#include <sys/statvfs.h>

using namespace cimom;
using namespace OpenWBEM;

namespace {

const MountLine root = {27, 1, "8:2", "/", "ext4", "/dev/sda2"};

CIMInstance extent(const HostTree& tree, const std::string& deviceId) {
    const CIMInstance found =
        instanceWhere(providerOf("QAV_StorageExtent", tree.host()), "DeviceID", deviceId);
    EXPECT_TRUE(found) << deviceId;
    return found;
}

std::string sizes(const CIMInstance& instance) {
    return text(instance, "Blocksize") + " " + text(instance, "NumberOfBlocks") + " " +
           text(instance, "StorageUsed");
}

struct statvfs sizesOf(const std::string& path) {
    struct statvfs status {};
    EXPECT_EQ(0, ::statvfs(path.c_str(), &status));
    return status;
}

/** The type of the storage of a file system on the disk sda. */
std::string typeOnDisk(const StorageTree& tree) {
    tree.writeMounts({{27, 1, "8:0", "/", "ext4", "/dev/sda"}});
    return text(extent(tree, "8:0"), "StorageType");
}

} // namespace

TEST(StorageExtent, PropertiesComeKeysFirst) {
    const CIMInstance found = extent(StorageTree(), "memory");
    EXPECT_EQ("QAV_StorageExtent", found.getClassName());
    EXPECT_EQ("CreationClassName DeviceID", names(found.getKeyValuePairs()));
    EXPECT_EQ("CreationClassName DeviceID StorageType Purpose Blocksize NumberOfBlocks StorageUsed "
              "AllocationFailures _INDEX",
              names(found.getProperties()));
    EXPECT_EQ("(null)", text(found, "AllocationFailures"));
    EXPECT_EQ("QAV_StorageExtent", text(found, "CreationClassName"));
}

TEST(StorageExtent, UsedMemoryIsAllMemoryThatIsNotFree) {
    StorageTree tree;
    tree.write("/proc/meminfo", "MemTotal:       24684084 kB\nMemFree:        24250652 kB\n"
                                "MemAvailable:   24282340 kB\nSwapTotal:      0 kB\n");
    const CIMInstance memory = extent(tree, "memory");
    EXPECT_EQ("2", text(memory, "StorageType"));
    EXPECT_EQ("Physical memory", text(memory, "Purpose"));
    EXPECT_EQ("1024 24684084 433432", sizes(memory));
    EXPECT_EQ("1", text(memory, "_INDEX"));
}

TEST(StorageExtent, MemoryDataThatTheHostDoesNotReportIsNull) {
    StorageTree tree;
    EXPECT_EQ("(null) (null) (null)", sizes(extent(tree, "memory")));
    tree.write("/proc/meminfo", "MemTotal: 100 kB\n");
    EXPECT_EQ("1024 100 (null)", sizes(extent(tree, "memory")));
    tree.write("/proc/meminfo", "MemTotal: 100 kB\nMemFree: 101 kB\n");
    EXPECT_EQ("1024 100 (null)", sizes(extent(tree, "memory")));
    tree.write("/proc/meminfo", "MemTotal: 18446744073709551616 kB\nMemFree: 1 kB\n");
    EXPECT_EQ("(null) (null) (null)", sizes(extent(tree, "memory")));
    tree.write("/proc/meminfo", "MemTotal: 100 MB\nMemTotal:\n");
    EXPECT_EQ("(null) (null) (null)", sizes(extent(tree, "memory")));
}

TEST(StorageExtent, SwapSpaceIsServedOnlyIfTheHostHasSome) {
    StorageTree tree;
    tree.write("/proc/meminfo", "SwapTotal: 0 kB\nSwapFree: 0 kB\n");
    EXPECT_EQ("memory ", column(providerOf("QAV_StorageExtent", tree.host()), "DeviceID"));
    tree.write("/proc/meminfo", "SwapTotal: 5000000000 kB\nSwapFree: 4999999990 kB\n");
    EXPECT_EQ("memory swap ", column(providerOf("QAV_StorageExtent", tree.host()), "DeviceID"));
    const CIMInstance swap = extent(tree, "swap");
    EXPECT_EQ("3", text(swap, "StorageType"));
    EXPECT_EQ("Swap space", text(swap, "Purpose"));
    EXPECT_EQ("1024 5000000000 10", sizes(swap));
    EXPECT_EQ("2", text(swap, "_INDEX"));
}

TEST(StorageExtent, AFileSystemHasTheSizesOfItsMountPoint) {
    StorageTree tree;
    tree.writeMounts({{30, 27, "8:3", "/a\\040b", "ext4", "/dev/sda3"}});
    tree.makeDirectory("/a b");
    const CIMInstance found = extent(tree, "8:3");
    EXPECT_EQ("/a b", text(found, "Purpose"));
    const struct statvfs expected = sizesOf(tree.realPath("/a b"));
    EXPECT_EQ(std::to_string(expected.f_frsize), text(found, "Blocksize"));
    EXPECT_EQ(std::to_string(expected.f_blocks), text(found, "NumberOfBlocks"));
}

TEST(StorageExtent, AllBlocksOfAFileSystemThatAreNotFreeAreUsed) {
    StorageTree tree;
    tree.writeMounts({root});
    struct statvfs before;
    struct statvfs after;
    std::string used;
    do { // repeat if another process has written to the disk meanwhile
        before = sizesOf(tree.realPath("/"));
        used = text(extent(tree, "8:2"), "StorageUsed");
        after = sizesOf(tree.realPath("/"));
    } while (before.f_bfree != after.f_bfree);
    EXPECT_EQ(std::to_string(before.f_blocks - before.f_bfree), used);
}

TEST(StorageExtent, AFileSystemThatCannotBeReadHasNoSizes) {
    StorageTree tree;
    tree.writeMounts({{30, 27, "8:3", "/gone", "ext4", "/dev/sda3"}});
    const CIMInstance found = extent(tree, "8:3");
    EXPECT_EQ("/gone", text(found, "Purpose"));
    EXPECT_EQ("(null) (null) (null)", sizes(found));
}

TEST(StorageExtent, RemoteFileSystemsAreSkipped) {
    StorageTree tree;
    tree.makeDirectory("/data");
    tree.writeMounts({root, {30, 27, "0:40", "/data", "nfs4", "box:/export"}});
    EXPECT_EQ("memory 8:2 ", column(providerOf("QAV_StorageExtent", tree.host()), "DeviceID"));
    EXPECT_EQ(
        "0", text(instanceWhere(providerOf("QAV_FileSystem", tree.host()), "Root", "/data"), "StorageIndex"));
}

TEST(StorageExtent, AFileSystemBelowARemoteOneIsNotRead) {
    StorageTree tree;
    tree.makeDirectory("/data/local");
    tree.makeDirectory("/database");
    MountLine local = {31, 30, "8:3", "/data/local", "ext4", "/dev/sda3"};
    tree.writeMounts({{30, 27, "0:40", "/data", "nfs4", "box:/export"},
                      local,
                      {32, 27, "8:4", "/database", "ext4", "/dev/sda4"}});
    EXPECT_EQ("(null) (null) (null)", sizes(extent(tree, "8:3")));
    EXPECT_NE("(null)", text(extent(tree, "8:4"), "Blocksize"));
    local.parent = 27;
    tree.writeMounts({{27, 1, "0:40", "/", "nfs4", "box:/root"}, local});
    EXPECT_NE("(null)", text(extent(tree, "8:3"), "Blocksize"));
}

TEST(StorageExtent, AFileSystemThatIsMountedSeveralTimesIsServedOnce) {
    StorageTree tree;
    const MountLine part = {30, 27, "8:3", "/a", "ext4", "/dev/sda3", "/docs"};
    const MountLine whole = {31, 27, "8:3", "/longer", "ext4", "/dev/sda3"};
    const MountLine other = {32, 27, "8:3", "/b/longest", "ext4", "/dev/sda3"};
    for (const std::vector<MountLine>& lines :
         {std::vector<MountLine>{part, whole, other}, std::vector<MountLine>{other, whole, part}}) {
        tree.writeMounts(lines);
        EXPECT_EQ("Physical memory /longer ",
                  column(providerOf("QAV_StorageExtent", tree.host()), "Purpose"));
    }
}

TEST(StorageExtent, AllMountsOfAFileSystemHaveTheIndexOfItsStorage) {
    StorageTree tree;
    tree.writeMounts({root,
                      {30, 27, "8:3", "/a", "ext4", "/dev/sda3", "/docs"},
                      {31, 27, "8:3", "/b", "ext4", "/dev/sda3"},
                      {32, 27, "0:1", "/c", "tmpfs", "tmpfs"}});
    EXPECT_EQ("1 4 8388613 8388614 ", column(providerOf("QAV_StorageExtent", tree.host()), "_INDEX"));
    EXPECT_EQ("8388613 8388614 8388614 4 ",
              column(providerOf("QAV_FileSystem", tree.host()), "StorageIndex"));
}

TEST(StorageExtent, ItsTypeFollowsFromTheDisk) {
    StorageTree tree;
    EXPECT_EQ("1", typeOnDisk(tree));
    tree.writeDisk("sda", "8:0", "1000");
    EXPECT_EQ("4", typeOnDisk(tree));
    tree.writeDiskFile("sda", "removable", "0");
    EXPECT_EQ("4", typeOnDisk(tree));
    tree.writeDiskFile("sda", "removable", "1");
    EXPECT_EQ("5", typeOnDisk(tree));
}

TEST(StorageExtent, MemoryFloppiesAndCompactDiscsHaveSeparateTypes) {
    StorageTree tree;
    tree.writeDisk("sr0", "11:0", "1000");
    tree.writeDisk("fd0", "2:0", "1000");
    tree.writeDisk("ram0", "1:0", "1000");
    tree.writeDiskFile("sr0", "removable", "1");
    tree.writeMounts({{30, 27, "11:0", "/cd", "ext4", "/dev/sr0"},
                      {31, 27, "2:0", "/floppy", "ext4", "/dev/fd0"},
                      {32, 27, "1:0", "/ram", "ext4", "/dev/ram0"},
                      {33, 27, "0:50", "/tmp", "tmpfs", "tmpfs"},
                      {34, 27, "0:51", "/union", "overlay", "overlay"}});
    EXPECT_EQ("7", text(extent(tree, "11:0"), "StorageType"));
    EXPECT_EQ("6", text(extent(tree, "2:0"), "StorageType"));
    EXPECT_EQ("8", text(extent(tree, "1:0"), "StorageType"));
    EXPECT_EQ("8", text(extent(tree, "0:50"), "StorageType"));
    EXPECT_EQ("1", text(extent(tree, "0:51"), "StorageType"));
}
