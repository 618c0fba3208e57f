#include "host/Disks.hpp"

#include "host/DeviceIndexes.hpp"

#include <algorithm>

namespace cimom {

using namespace OpenWBEM;

namespace {

std::optional<DeviceNumber> deviceNumber(const Host& host, const std::string& folder) {
    const std::optional<std::string> line = host.readLine(folder + "/dev");
    return line ? parseDeviceNumber(*line) : std::nullopt;
}

std::optional<UInt64> sectors(const Host& host, const std::string& folder) {
    const std::optional<UInt64> size = host.readNumber<UInt64>(folder + "/size");
    return size == UInt64{0} ? std::nullopt : size;
}

/** A file that says "0" or "1". */
std::optional<bool> flag(const Host& host, const std::string& path) {
    const std::optional<unsigned> value = host.readNumber<unsigned>(path);
    return value && *value <= 1 ? std::optional<bool>(*value == 1) : std::nullopt;
}

/** @param device folder of the hardware */
std::optional<std::string> model(const Host& host, const std::string& device) {
    std::optional<std::string> text = host.readLine(device + "/model");
    if (!text)
        return std::nullopt;
    if (const std::optional<std::string> vendor = host.readLine(device + "/vendor"))
        text = *vendor + " " + *text;
    if (const std::optional<std::string> revision = host.readLine(device + "/rev"))
        text = *text + " " + *revision;
    return text;
}

/** The states of SCSI devices and of NVMe controllers (drivers/scsi/scsi_sysfs.c, drivers/nvme/host). */
std::optional<bool> isRunning(const Host& host, const std::string& device) {
    const std::string state = host.readLine(device + "/state").value_or("");
    if (state == "running" || state == "live")
        return true;
    if (state == "offline" || state == "transport-offline" || state == "dead")
        return false;
    return std::nullopt;
}

/** By the numbers of the kernel's device list (devices.txt) where these are fixed. */
Medium medium(const std::string& name, const DeviceNumber& number, bool hasHardware) {
    switch (number.majorNumber) {
    case 1:
        return Medium::memory;
    case 2:
        return Medium::floppy;
    case 11:
        return Medium::optical;
    default:
        if (name.compare(0, 4, "zram") == 0)
            return Medium::memory;
        return hasHardware ? Medium::disk : Medium::none;
    }
}

std::vector<Partition> partitions(const Host& host, const std::string& disk) {
    std::vector<Partition> found;
    for (const std::string& name : host.listDirectory(disk).value_or(std::vector<std::string>())) {
        const std::string folder = disk + "/" + name;
        const std::optional<UInt32> ordinal = host.readNumber<UInt32>(folder + "/partition");
        const std::optional<DeviceNumber> number = deviceNumber(host, folder);
        if (ordinal && number)
            found.push_back({name, *number, *ordinal, sectors(host, folder)});
    }
    std::sort(found.begin(), found.end(),
              [](const Partition& a, const Partition& b) { return a.ordinal < b.ordinal; });
    return found;
}

std::optional<Disk> readDisk(const Host& host, const std::string& name) {
    const std::string folder = "/sys/block/" + name;
    const std::string device = folder + "/device";
    const bool hasHardware = host.listDirectory(device).has_value();
    const std::optional<DeviceNumber> number = deviceNumber(host, folder);
    const std::optional<UInt64> size = sectors(host, folder);
    if (!number || (!size && !hasHardware))
        return std::nullopt;
    Disk disk{};
    disk.name = name;
    disk.number = *number;
    disk.medium = medium(name, *number, hasHardware);
    disk.sectors = size;
    disk.isReadOnly = flag(host, folder + "/ro");
    disk.isRemovable = flag(host, folder + "/removable");
    disk.model = model(host, device);
    disk.isRunning = isRunning(host, device);
    disk.errors = host.readHexadecimal<UInt32>(device + "/ioerr_cnt");
    disk.partitions = partitions(host, folder);
    return disk;
}

/** Majors and minors are small on most hosts: eight bits of each tell the disks apart. */
UInt32 ownNumber(const Disk& disk) {
    return disk.number.majorNumber % 256 * 256 + disk.number.minorNumber % 256;
}

} // namespace

std::vector<Disk> disks(const Host& host) {
    std::vector<Disk> found;
    for (const std::string& name : host.listDirectory("/sys/block").value_or(std::vector<std::string>())) {
        if (std::optional<Disk> disk = readDisk(host, name))
            found.push_back(std::move(*disk));
    }
    std::sort(found.begin(), found.end(), [](const Disk& a, const Disk& b) { return a.number < b.number; });
    DeviceIndexes indexes(DeviceType::disk);
    for (Disk& disk : found)
        disk.deviceIndex = indexes.next(ownNumber(disk));
    return found;
}

std::string kernelName(std::string file) {
    for (const std::string folder : {"/dev/", "../"}) {
        while (file.compare(0, folder.size(), folder) == 0)
            file.erase(0, folder.size());
    }
    std::replace(file.begin(), file.end(), '/', '!');
    return file;
}

std::optional<UInt64> kilobytes(std::optional<UInt64> sectors) {
    return sectors ? std::optional<UInt64>(*sectors / 2) : std::nullopt;
}

} // namespace cimom
