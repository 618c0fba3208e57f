#include "host/FileSystems.hpp"

#include <algorithm>
#include <set>

namespace cimom {

using namespace OpenWBEM;

namespace {

/** The types that need a block device: the lines of /proc/filesystems that are not marked "nodev". */
std::set<std::string> blockDeviceTypes(const Host& host) {
    const std::string content = host.readFile("/proc/filesystems").value_or("");
    std::set<std::string> types;
    for (const std::string_view line : lines(content)) {
        const std::vector<std::string_view> fields = words(line);
        if (fields.size() == 1)
            types.insert(std::string(fields[0]));
    }
    return types;
}

bool isRemote(const std::string& type) {
    static const std::set<std::string> remote = {
        "9p",         "afs",    "ceph", "cifs", "coda", "fuse.ceph", "fuse.glusterfs",
        "fuse.sshfs", "lustre", "nfs",  "nfs4", "smb3", "smbfs",     "virtiofs",
    };
    return remote.count(type) > 0;
}

/** Where file systems of a type keep their files; absent when they keep none, or nobody knows. */
std::optional<Backing> backingOf(const std::string& type, const std::set<std::string>& onBlockDevices) {
    if (isRemote(type))
        return Backing::remote;
    if (type == "tmpfs" || type == "devtmpfs")
        return Backing::memory;
    if (type == "overlay" || type == "zfs")
        return Backing::other;
    // What is behind a dot is the name of a program that serves the type.
    if (onBlockDevices.count(type.substr(0, type.find('.'))) > 0)
        return Backing::blockDevice;
    return std::nullopt;
}

/**
 * The folders that cannot be looked up without an answer from another computer. A host whose root is remote
 * does nothing without it anyway.
 */
std::vector<std::string> remoteFolders(const std::vector<Mount>& all) {
    std::vector<std::string> folders;
    for (const Mount& mount : all) {
        if (isRemote(mount.type) && mount.point != "/")
            folders.push_back(mount.point);
    }
    return folders;
}

/** The folder that the file system which holds /boot is mounted on. */
std::string bootFolder(const std::vector<Mount>& all) {
    const auto isBoot = [](const Mount& mount) { return mount.point == "/boot"; };
    return std::any_of(all.begin(), all.end(), isBoot) ? "/boot" : "/";
}

} // namespace

std::vector<FileSystem> fileSystems(const Host& host) {
    const std::set<std::string> onBlockDevices = blockDeviceTypes(host);
    const std::vector<Mount> all = mounts(host);
    const std::vector<std::string> remote = remoteFolders(all);
    const std::string boot = bootFolder(all);
    std::vector<FileSystem> found;
    for (const Mount& mount : all) {
        const std::optional<Backing> backing = backingOf(mount.type, onBlockDevices);
        const auto leadsTo = [&mount](const std::string& folder) { return isBelow(mount.point, folder); };
        if (backing)
            found.push_back(
                {mount, *backing, mount.point == boot, std::any_of(remote.begin(), remote.end(), leadsTo)});
    }
    return found;
}

} // namespace cimom
