#include "OW_CIMProperty.hpp"
#include "StorageTree.hpp"
#include "host/FileSystems.hpp"
#include "host/Mounts.hpp"
#include "providers/Providers.hpp"

#include <gtest/gtest.h>

using namespace cimom;
using namespace OpenWBEM;

namespace {

const MountLine root = {27, 1, "8:2", "/", "ext4", "/dev/sda2"};

/** The visible mount points, with a blank after each. */
std::string seen(const StorageTree& tree) {
    std::string points;
    for (const Mount& mount : mounts(tree.host()))
        points += mount.point + " ";
    return points;
}

std::string seen(const std::vector<MountLine>& lines) {
    StorageTree tree;
    tree.writeMounts(lines);
    return seen(tree);
}

/** A property of a single mount. */
std::string propertyOf(const MountLine& mount, const char* property) {
    StorageTree tree;
    tree.writeMounts({mount});
    return text(onlyInstance(providerOf("QAV_FileSystem", tree.host())), property);
}

/** The served mount points if these types are mounted on "/<type>", with a blank after each. */
std::string served(const std::vector<std::string>& types) {
    StorageTree tree;
    std::vector<MountLine> lines;
    for (const std::string& type : types) {
        const unsigned id = 30 + static_cast<unsigned>(lines.size());
        lines.push_back({id, 27, "0:" + std::to_string(id), "/" + type, type, "source"});
    }
    tree.writeMounts(lines);
    return column(providerOf("QAV_FileSystem", tree.host()), "Root");
}

} // namespace

TEST(Mounts, AreTheLinesOfTheKernelsFile) {
    StorageTree tree;
    tree.write("/proc/self/mountinfo",
               "27 1 8:2 /part / ro,noatime shared:1 master:2 - ext4 /dev/sda2 rw,discard\n");
    const std::vector<Mount> found = mounts(tree.host());
    ASSERT_EQ(1u, found.size());
    EXPECT_EQ(27u, found[0].id);
    EXPECT_EQ(1u, found[0].parent);
    EXPECT_EQ("8:2", found[0].device.text());
    EXPECT_EQ("/part", found[0].part);
    EXPECT_EQ("/", found[0].point);
    EXPECT_EQ("ext4", found[0].type);
    EXPECT_EQ("/dev/sda2", found[0].source);
    EXPECT_TRUE(found[0].isReadOnly);
}

TEST(Mounts, EscapesAreDecodedToBlanksAndBackslashes) {
    EXPECT_EQ("/a b\tc\\d ", seen({{27, 1, "8:2", "/a\\040b\\011c\\134d", "ext4", "/dev/sda2"}}));
    EXPECT_EQ("/a\\ ", seen({{27, 1, "8:2", "/a\\134", "ext4", "/dev/sda2"}}));
    EXPECT_EQ("/a\\04 ", seen({{27, 1, "8:2", "/a\\04", "ext4", "/dev/sda2"}}));
    EXPECT_EQ("/a\\777\\089b ", seen({{27, 1, "8:2", "/a\\777\\089b", "ext4", "/dev/sda2"}}));
}

TEST(Mounts, ATruncatedOrMalformedLineIsSkipped) {
    const std::string good = MountLine{27, 1, "8:2", "/home", "ext4", "/dev/sda2"}.text();
    for (const std::string& bad :
         {std::string("28 1 8:2 / /a rw\n"), std::string("28 27 8:3 / /a rw shared:1 ext4 /dev/sda2 rw\n"),
          std::string("28 27 8:3 / /a rw - ext4 /dev/sda2\n"), std::string("28 27 8-3 / /a rw - ext4 x rw\n"),
          std::string("28 27 8 / /a rw - ext4 x rw\n"), std::string("x 27 8:3 / /a rw - ext4 x rw\n"),
          std::string("28 y 8:3 / /a rw - ext4 x rw\n"), std::string("28 27 512:3 / /a rw - ext4 x rw\n"),
          std::string("28 27 8:1048576 / /a rw - ext4 x rw\n"), std::string("28 27 8:3 / a rw - ext4 x rw\n"),
          std::string("-\n"), std::string("- - - - - - - -\n")}) {
        StorageTree tree;
        tree.write("/proc/self/mountinfo", bad + good);
        EXPECT_EQ("/home ", seen(tree)) << bad;
    }
    EXPECT_EQ("", seen(StorageTree()));
}

TEST(Mounts, OfSeveralMountsOnADirectoryOnlyTheTopOneIsVisible) {
    StorageTree tree;
    tree.writeMounts(
        {root, {30, 27, "8:3", "/mnt", "ext4", "/dev/sda3"}, {31, 30, "8:4", "/mnt", "ext4", "/dev/sda4"}});
    EXPECT_EQ("/ /mnt ", seen(tree));
    EXPECT_EQ("8:4", mounts(tree.host()).back().device.text());
}

TEST(Mounts, AMountBelowACoveredDirectoryIsHidden) {
    const MountLine below = {30, 27, "8:3", "/mnt/a/b", "ext4", "/dev/sda3"};
    EXPECT_EQ("/ /mnt ", seen({root, below, {31, 27, "8:4", "/mnt", "ext4", "/dev/sda4"}}));
    EXPECT_EQ("/ /mnt/a/b /mn ", seen({root, below, {31, 27, "8:4", "/mn", "ext4", "/dev/sda4"}}));
}

TEST(Mounts, AMountIsNotHiddenByItsParent) {
    EXPECT_EQ("/proc /mnt /mnt/a / ", seen({{22, 27, "0:21", "/proc", "proc", "proc"},
                                            {30, 27, "8:3", "/mnt", "ext4", "/dev/sda3"},
                                            {31, 30, "8:4", "/mnt/a", "ext4", "/dev/sda4"},
                                            root}));
}

TEST(Mounts, TheInitialFileSystemIsHiddenByTheRootFileSystem) {
    EXPECT_EQ("/ ",
              seen({{1, 1, "0:2", "/", "rootfs", "rootfs"}, {2, 1, "0:5", "/dev", "tmpfs", "x"}, root}));
}

TEST(Mounts, ACycleOfMountsEnds) {
    EXPECT_EQ("/a /b ", seen({{1, 2, "8:1", "/a", "ext4", "x"}, {2, 1, "8:2", "/b", "ext4", "x"}}));
}

TEST(FileSystem, PropertiesComeKeysFirst) {
    StorageTree tree;
    tree.writeMounts({root});
    const CIMInstance found = onlyInstance(providerOf("QAV_FileSystem", tree.host()));
    EXPECT_EQ("QAV_FileSystem", found.getClassName());
    EXPECT_EQ("CreationClassName Name", names(found.getKeyValuePairs()));
    EXPECT_EQ("CreationClassName Name Index Root RemoteMountPoint FileSystemType ReadOnly Bootable "
              "StorageIndex LastFullBackupDate LastPartialBackupDate",
              names(found.getProperties()));
}

TEST(FileSystem, IsAMountWithTheKernelsNumberAsIndex) {
    const MountLine home = {31, 27, "8:3", "/home", "vfat", "/dev/sda3"};
    EXPECT_EQ("QAV_FileSystem", propertyOf(home, "CreationClassName"));
    EXPECT_EQ("/home", propertyOf(home, "Name"));
    EXPECT_EQ("/home", propertyOf(home, "Root"));
    EXPECT_EQ("31", propertyOf(home, "Index"));
    EXPECT_EQ("vfat", propertyOf(home, "FileSystemType"));
    EXPECT_EQ("(null)", propertyOf(home, "LastFullBackupDate"));
    EXPECT_EQ("(null)", propertyOf(home, "LastPartialBackupDate"));
}

TEST(FileSystem, IsReadOnlyWhenTheMountOrTheFileSystemIs) {
    MountLine mount = root;
    EXPECT_EQ("false", propertyOf(mount, "ReadOnly"));
    mount.options = "ro";
    EXPECT_EQ("true", propertyOf(mount, "ReadOnly"));
    mount.options = "rw";
    mount.fileSystemOptions = "discard,ro";
    EXPECT_EQ("true", propertyOf(mount, "ReadOnly"));
    mount.fileSystemOptions = "errors=remount-ro,prop";
    EXPECT_EQ("false", propertyOf(mount, "ReadOnly"));
}

TEST(FileSystem, OnlyARemoteOneHasARemoteMountPoint) {
    EXPECT_EQ("box:/export",
              propertyOf({31, 27, "0:40", "/data", "nfs4", "box:/export"}, "RemoteMountPoint"));
    EXPECT_EQ("//box/share",
              propertyOf({31, 27, "0:40", "/data", "cifs", "//box/share"}, "RemoteMountPoint"));
    EXPECT_EQ("", propertyOf(root, "RemoteMountPoint"));
}

TEST(FileSystem, TheFileSystemThatHoldsBootIsBootable) {
    StorageTree tree;
    const MountLine home = {31, 27, "8:3", "/home", "ext4", "/dev/sda3"};
    tree.writeMounts({root, home});
    EXPECT_EQ("true false ", column(providerOf("QAV_FileSystem", tree.host()), "Bootable"));
    tree.writeMounts({root, home, {32, 27, "8:1", "/boot", "ext4", "/dev/sda1"}});
    EXPECT_EQ("false false true ", column(providerOf("QAV_FileSystem", tree.host()), "Bootable"));
    tree.writeMounts({root, home, {32, 27, "8:1", "/boot/efi", "vfat", "/dev/sda1"}});
    EXPECT_EQ("true false false ", column(providerOf("QAV_FileSystem", tree.host()), "Bootable"));
}

TEST(FileSystem, NoFileSystemIsBootableWhileBootIsCoveredByAnAutomount) {
    StorageTree tree;
    tree.writeMounts({root, {32, 27, "0:40", "/boot", "autofs", "systemd-1"}});
    EXPECT_EQ("false ", column(providerOf("QAV_FileSystem", tree.host()), "Bootable"));
}

TEST(FileSystem, FileSystemsOfTheKernelAndOfUserProgramsAreSkipped) {
    EXPECT_EQ("", served({"proc", "sysfs", "devpts", "cgroup2", "securityfs", "autofs", "fuse", "fuse.portal",
                          "fuse.gvfsd-fuse", "ramfs", "hugetlbfs", "rpc_pipefs", "unheardof"}));
}

TEST(FileSystem, FileSystemsOnDevicesInMemoryAndOnOtherComputersAreServed) {
    EXPECT_EQ(
        "/ext4 /btrfs /vfat /fuseblk /fuseblk.ntfs /tmpfs /devtmpfs /overlay /zfs ",
        served({"ext4", "btrfs", "vfat", "fuseblk", "fuseblk.ntfs", "tmpfs", "devtmpfs", "overlay", "zfs"}));
    EXPECT_EQ(
        "/nfs /nfs4 /cifs /smb3 /9p /virtiofs /ceph /fuse.sshfs /fuse.glusterfs ",
        served({"nfs", "nfs4", "cifs", "smb3", "9p", "virtiofs", "ceph", "fuse.sshfs", "fuse.glusterfs"}));
}

TEST(FileSystem, WithoutTheListOfTypesNoFileSystemIsOnADevice) {
    HostTree tree;
    tree.write("/proc/self/mountinfo",
               root.text() + MountLine{30, 27, "0:30", "/run", "tmpfs", "run"}.text());
    EXPECT_EQ("/run ", column(providerOf("QAV_FileSystem", tree.host()), "Root"));
}

TEST(FileSystem, WithoutMountsThereAreNoFileSystems) {
    EXPECT_TRUE(allInstances(providerOf("QAV_FileSystem", StorageTree().host())).empty());
}
