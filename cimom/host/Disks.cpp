#include "host/Disks.hpp"

#include <algorithm>

namespace cimom {

using namespace OpenWBEM;

/** The sources of one kind of name. */
struct PartitionNames::Kind {
    /** Directory of links. */
    const char* directory;
    /** Prefix of the line in udev's data. */
    const char* udev;
    /** Prefix of the line in the kernel's file; empty if there is none. */
    const char* kernel;
};

namespace {

std::optional<DeviceNumber> deviceNumber(const Host& host, const std::string& directory) {
    const std::optional<std::string> line = host.readLine(directory + "/dev");
    return line ? parseDeviceNumber(*line) : std::nullopt;
}

std::optional<UInt64> sectors(const Host& host, const std::string& directory) {
    const std::optional<UInt64> size = host.readNumber<UInt64>(directory + "/size");
    return size == UInt64{0} ? std::nullopt : size;
}

/** A file that holds "0" or "1". */
std::optional<bool> flag(const Host& host, const std::string& path) {
    const std::optional<unsigned> value = host.readNumber<unsigned>(path);
    return value && *value <= 1 ? std::optional<bool>(*value == 1) : std::nullopt;
}

/** @param device directory of the hardware */
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

/** Major numbers are those of the kernel's device list (devices.txt). */
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
        const std::string directory = disk + "/" + name;
        const std::optional<UInt32> ordinal = host.readNumber<UInt32>(directory + "/partition");
        const std::optional<DeviceNumber> number = deviceNumber(host, directory);
        if (ordinal && number)
            found.push_back({name, *number, *ordinal, sectors(host, directory)});
    }
    std::sort(found.begin(), found.end(),
              [](const Partition& a, const Partition& b) { return a.ordinal < b.ordinal; });
    return found;
}

std::optional<Disk> readDisk(const Host& host, const std::string& name) {
    const std::string directory = "/sys/block/" + name;
    const std::string device = directory + "/device";
    const bool hasHardware = host.listDirectory(device).has_value();
    const std::optional<DeviceNumber> number = deviceNumber(host, directory);
    const std::optional<UInt64> size = sectors(host, directory);
    if (!number || (!size && !hasHardware))
        return std::nullopt;
    Disk disk{};
    disk.name = name;
    disk.number = *number;
    disk.medium = medium(name, *number, hasHardware);
    disk.sectors = size;
    disk.isReadOnly = flag(host, directory + "/ro");
    disk.isRemovable = flag(host, directory + "/removable");
    disk.model = model(host, device);
    disk.isRunning = isRunning(host, device);
    disk.errors = host.readHexadecimal<UInt32>(device + "/ioerr_cnt");
    disk.partitions = partitions(host, directory);
    return disk;
}

/** On most hosts eight bits of the major and the minor number distinguish the disks. */
UInt32 ownNumber(const Disk& disk) {
    return disk.number.majorNumber % 256 * 256 + disk.number.minorNumber % 256;
}

/** A name without the escapes of udev: "\x" and two hexadecimal digits for a byte. */
std::string unescaped(std::string_view name) {
    std::string text;
    for (std::size_t i = 0; i < name.size(); ++i) {
        const bool isEscape = name.substr(i, 2) == "\\x" && i + 3 < name.size();
        const std::optional<UInt8> code = isEscape ? number<UInt8>(name.substr(i + 2, 2), 16) : std::nullopt;
        text += code ? static_cast<char>(*code) : name[i];
        i += code ? 3 : 0;
    }
    return text;
}

/** The rest of the first line with a prefix; absent if there is no such line or its rest is empty. */
std::optional<std::string> valueIn(const Host& host, const std::string& path, std::string_view prefix) {
    const std::string content = host.readFile(path).value_or("");
    for (const std::string_view line : lines(content)) {
        if (line.size() > prefix.size() && line.substr(0, prefix.size()) == prefix)
            return std::string(line.substr(prefix.size()));
    }
    return std::nullopt;
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
    for (const std::string prefix : {"/dev/", "../"}) {
        while (file.compare(0, prefix.size(), prefix) == 0)
            file.erase(0, prefix.size());
    }
    std::replace(file.begin(), file.end(), '/', '!');
    return file;
}

std::optional<UInt64> kilobytes(std::optional<UInt64> sectors) {
    return sectors ? std::optional<UInt64>(*sectors / 2) : std::nullopt;
}

PartitionNames::PartitionNames(const Host& host)
    : m_host(host) {
    for (const char* const directory : {"by-label", "by-uuid", "by-partlabel", "by-partuuid"})
        m_links[directory] = readLinks(std::string("/dev/disk/") + directory);
}

std::optional<std::string> PartitionNames::label(const Partition& partition) const {
    const Kind ofFileSystem = {"by-label", "E:ID_FS_LABEL_ENC=", ""};
    const Kind inTable = {"by-partlabel", "E:ID_PART_ENTRY_NAME=", "PARTNAME="};
    const std::optional<std::string> found = name(ofFileSystem, partition);
    return found ? found : name(inTable, partition);
}

std::optional<std::string> PartitionNames::identity(const Partition& partition) const {
    const Kind inTable = {"by-partuuid", "E:ID_PART_ENTRY_UUID=", "PARTUUID="};
    const Kind ofFileSystem = {"by-uuid", "E:ID_FS_UUID_ENC=", ""};
    const std::optional<std::string> found = name(inTable, partition);
    return found ? found : name(ofFileSystem, partition);
}

PartitionNames::Links PartitionNames::readLinks(const std::string& directory) const {
    Links links;
    for (const std::string& name : m_host.listDirectory(directory).value_or(std::vector<std::string>())) {
        if (const std::optional<std::string> target = m_host.readLink(directory + "/" + name))
            links[kernelName(*target)] = unescaped(name);
    }
    return links;
}

std::optional<std::string> PartitionNames::name(const Kind& kind, const Partition& partition) const {
    const Links& links = m_links.at(kind.directory);
    const auto link = links.find(partition.name);
    if (link != links.end())
        return link->second;
    if (const auto name = valueIn(m_host, "/run/udev/data/b" + partition.number.text(), kind.udev))
        return unescaped(*name);
    if (*kind.kernel == '\0')
        return std::nullopt;
    return valueIn(m_host, "/sys/class/block/" + partition.name + "/uevent", kind.kernel);
}

} // namespace cimom
