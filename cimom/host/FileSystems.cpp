#include "host/FileSystems.hpp"

#include <algorithm>
#include <set>

namespace cimom {

using namespace OpenWBEM;

namespace {

/** The types that need a block device: the lines of /proc/filesystems without "nodev". */
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

/** What file systems of a type store their files on; absent if they store none or the type is unknown. */
std::optional<Backing> backingOf(const std::string& type, const std::set<std::string>& onBlockDevices) {
    if (isRemote(type))
        return Backing::remote;
    if (type == "tmpfs" || type == "devtmpfs")
        return Backing::memory;
    if (type == "overlay" || type == "zfs")
        return Backing::other;
    // A dot precedes the name of the program that serves the type.
    if (onBlockDevices.count(type.substr(0, type.find('.'))) > 0)
        return Backing::blockDevice;
    return std::nullopt;
}

/** The mount points of remote file systems other than "/", without which the host does not work at all. */
std::vector<std::string> remotePoints(const std::vector<Mount>& all) {
    std::vector<std::string> points;
    for (const Mount& mount : all) {
        if (isRemote(mount.type) && mount.point != "/")
            points.push_back(mount.point);
    }
    return points;
}

/** The mount point of the file system that holds /boot. */
std::string bootPoint(const std::vector<Mount>& all) {
    const auto isBoot = [](const Mount& mount) { return mount.point == "/boot"; };
    return std::any_of(all.begin(), all.end(), isBoot) ? "/boot" : "/";
}

/** A disk, or a partition and its disk. */
struct BackingDevice {
    const Disk* disk = nullptr;
    const Partition* partition = nullptr;
};

/** The first disk or partition that meets a condition. */
template <class Condition>
BackingDevice deviceWhere(const std::vector<Disk>& all, const Condition& holds) {
    for (const Disk& disk : all) {
        if (holds(disk))
            return {&disk, nullptr};
        for (const Partition& partition : disk.partitions) {
            if (holds(partition))
                return {&disk, &partition};
        }
    }
    return {};
}

BackingDevice deviceNamed(const std::string& name, const std::vector<Disk>& all) {
    return deviceWhere(all, [&name](const auto& device) { return device.name == name; });
}

BackingDevice backingDevice(const Mount& mount, const std::vector<Disk>& all, const Host& host) {
    if (mount.device.majorNumber != 0)
        return deviceWhere(all, [&mount](const auto& device) { return device.number == mount.device; });
    // File systems that may span devices, such as btrfs, have another number, and name a device file.
    // That may be a link, as in the device mapper.
    if (isBelow(mount.source, "/dev"))
        return deviceNamed(kernelName(host.readLink(mount.source).value_or(mount.source)), all);
    return {};
}

} // namespace

std::vector<FileSystem> fileSystems(const Host& host) {
    const std::set<std::string> onBlockDevices = blockDeviceTypes(host);
    const std::vector<Mount> all = mounts(host);
    const std::vector<std::string> remote = remotePoints(all);
    const std::string boot = bootPoint(all);
    std::vector<FileSystem> found;
    for (const Mount& mount : all) {
        const std::optional<Backing> backing = backingOf(mount.type, onBlockDevices);
        const auto isAbove = [&mount](const std::string& point) { return isBelow(mount.point, point); };
        if (backing)
            found.push_back(
                {mount, *backing, mount.point == boot, std::any_of(remote.begin(), remote.end(), isAbove)});
    }
    return found;
}

const Disk* backingDisk(const Mount& mount, const std::vector<Disk>& all, const Host& host) {
    return backingDevice(mount, all, host).disk;
}

std::vector<const Partition*> backingPartitions(const Mount& mount, const std::vector<Disk>& all,
                                                const Host& host) {
    std::vector<const Partition*> found;
    std::vector<BackingDevice> devices = {backingDevice(mount, all, host)};
    std::set<const void*> seen;
    while (!devices.empty()) {
        const BackingDevice device = devices.back();
        devices.pop_back();
        if (device.partition && seen.insert(device.partition).second)
            found.push_back(device.partition);
        if (!device.disk || device.partition || !seen.insert(device.disk).second)
            continue;
        const std::string slaves = "/sys/block/" + device.disk->name + "/slaves";
        for (const std::string& name : host.listDirectory(slaves).value_or(std::vector<std::string>()))
            devices.push_back(deviceNamed(name, all));
    }
    return found;
}

} // namespace cimom
