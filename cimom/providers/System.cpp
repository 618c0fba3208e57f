#include "providers/Subjects.hpp"
#include "schema/InstanceBuilder.hpp"
#include "util/Ascii.hpp"

#include <tuple>

namespace cimom {

using namespace OpenWBEM;

namespace {

/** RFC 3418, sysServices: 2^(layer - 1) for each layer of which the host offers services. */
UInt32 services(const Host& host) {
    const UInt32 internet = 4;
    const UInt32 endToEnd = 8;
    const UInt32 applications = 64;
    const bool forwards = host.readNumber<int>("/proc/sys/net/ipv4/ip_forward") == 1;
    return endToEnd + applications + (forwards ? internet : 0);
}

/** "Linux <host name> <release> <version>", like uname(1). Absent if a part is missing. */
std::optional<std::string> description(const Host& host) {
    std::string text;
    for (const char* const part : {"ostype", "hostname", "osrelease", "version"}) {
        const std::optional<std::string> word = host.readLine(std::string("/proc/sys/kernel/") + part);
        if (!word)
            return std::nullopt;
        text += (text.empty() ? "" : " ") + *word;
    }
    return text;
}

/** A value of os-release(5) without quotes and backslashes, which follow the rules of a shell. */
std::string unquoted(std::string_view value) {
    std::string result;
    char quote = '\0';
    for (std::size_t i = 0; i < value.size(); ++i) {
        const char c = value[i];
        if (c == '\\' && quote != '\'' && i + 1 < value.size())
            result += value[++i];
        else if (quote == '\0' && (c == '"' || c == '\''))
            quote = c;
        else if (c == quote)
            quote = '\0';
        else
            result += c;
    }
    return result;
}

/** PRETTY_NAME of os-release(5). As in a shell, the last assignment is valid. */
std::optional<std::string> version(const Host& host) {
    std::optional<std::string> file = host.readFile("/etc/os-release");
    if (!file)
        file = host.readFile("/usr/lib/os-release");
    if (!file)
        return std::nullopt;
    const std::string_view wanted = "PRETTY_NAME=";
    std::optional<std::string> found;
    for (const std::string_view line : lines(*file)) {
        if (line.substr(0, wanted.size()) == wanted)
            found = unquoted(ascii::trim(line.substr(wanted.size())));
    }
    return found;
}

bool isEarlier(const std::timespec& a, const std::timespec& b) {
    return std::tie(a.tv_sec, a.tv_nsec) < std::tie(b.tv_sec, b.tv_nsec);
}

/** When the name of the host or of its system last changed. */
std::optional<CIMDateTime> lastChange(const Host& host) {
    std::optional<std::timespec> latest;
    for (const char* const path : {"/etc/hostname", "/etc/os-release"}) {
        const std::optional<std::timespec> time = host.modificationTime(path);
        if (time && (!latest || isEarlier(*latest, *time)))
            latest = time;
    }
    return latest ? std::optional<CIMDateTime>(localTime(*latest)) : std::nullopt;
}

// No file of a Linux host holds an SNMP object identifier.
const ClassDeclaration systemClass{"QAV_System",
                                   {{"Name", CIMDataType::STRING, Role::key},
                                    {"CreationClassName", CIMDataType::STRING, Role::key},
                                    {"SystemName", CIMDataType::STRING},
                                    {"PrimaryOwnerContact", CIMDataType::STRING, Role::site},
                                    {"InstalledLocation", CIMDataType::STRING, Role::site},
                                    {"SysServices", CIMDataType::UINT32},
                                    {"SNMPObjectID", CIMDataType::STRING},
                                    {"Description", CIMDataType::STRING},
                                    {"SystemVersion", CIMDataType::STRING},
                                    {"LastChangeTime", CIMDataType::DATETIME}}};

CIMInstance systemInstance(const Host& host) {
    return InstanceBuilder(systemClass)
        .set("Name", host.name())
        .set("CreationClassName", CIMValue(systemClass.name))
        .set("SystemName", host.name())
        .set("SysServices", CIMValue(services(host)))
        .set("Description", description(host))
        .set("SystemVersion", version(host))
        .set("LastChangeTime", lastChange(host))
        .build();
}

} // namespace

std::vector<Provider> systemProviders(const Host& host) {
    return {{&systemClass, [&host] { return only(systemInstance(host)); }}};
}

} // namespace cimom
