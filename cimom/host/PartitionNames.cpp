#include "host/PartitionNames.hpp"

namespace cimom {

using namespace OpenWBEM;

/** One of the things that a partition is called by: where it stands. */
struct PartitionNames::Kind {
    /** Folder of links. */
    const char* folder;
    /** How the line of udev's data begins. */
    const char* udev;
    /** How the line of the kernel's file begins; empty where it has none. */
    const char* kernel;
};

namespace {

/** A name without udev's escapes: "\x" and two hexadecimal digits for a character. */
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

/** What follows the beginning of a line of a file; absent when no line begins so, or nothing follows. */
std::optional<std::string> valueIn(const Host& host, const std::string& path, std::string_view beginning) {
    const std::string content = host.readFile(path).value_or("");
    for (const std::string_view line : lines(content)) {
        if (line.size() > beginning.size() && line.substr(0, beginning.size()) == beginning)
            return std::string(line.substr(beginning.size()));
    }
    return std::nullopt;
}

} // namespace

PartitionNames::PartitionNames(const Host& host)
    : m_host(host) {
    for (const char* const folder : {"by-label", "by-uuid", "by-partlabel", "by-partuuid"})
        m_links[folder] = readLinks(std::string("/dev/disk/") + folder);
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

PartitionNames::Links PartitionNames::readLinks(const std::string& folder) const {
    Links links;
    for (const std::string& name : m_host.listDirectory(folder).value_or(std::vector<std::string>())) {
        if (const std::optional<std::string> target = m_host.readLink(folder + "/" + name))
            links[kernelName(*target)] = unescaped(name);
    }
    return links;
}

std::optional<std::string> PartitionNames::name(const Kind& kind, const Partition& partition) const {
    const Links& links = m_links.at(kind.folder);
    const auto link = links.find(partition.name);
    if (link != links.end())
        return link->second;
    if (const auto told = valueIn(m_host, "/run/udev/data/b" + partition.number.text(), kind.udev))
        return unescaped(*told);
    if (*kind.kernel == '\0')
        return std::nullopt;
    return valueIn(m_host, "/sys/class/block/" + partition.name + "/uevent", kind.kernel);
}

} // namespace cimom
