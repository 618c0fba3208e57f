#include "host/NetworkInterfaces.hpp"

#include "util/Ascii.hpp"

#include <algorithm>
#include <array>
#include <iterator>
#include <map>
#include <net/if.h>
#include <tuple>

namespace cimom {

using namespace OpenWBEM;

namespace {

/** The status in the file operstate, which has the words of RFC 2863 in lower case. */
std::optional<OperStatus> status(const std::optional<std::string>& word) {
    static const char* const words[] = {"up",      "down",       "testing",       "unknown",
                                        "dormant", "notpresent", "lowerlayerdown"};
    const auto found = std::find(std::begin(words), std::end(words), word.value_or(""));
    if (found == std::end(words))
        return std::nullopt;
    return static_cast<OperStatus>(found - std::begin(words) + 1);
}

/** Bits per second from the file speed, which holds Mbit/s, or -1 if the speed is unknown. */
std::optional<UInt64> speed(std::optional<Int32> megabits) {
    if (!megabits || *megabits <= 0)
        return std::nullopt;
    return UInt64{1000000} * static_cast<UInt32>(*megabits);
}

/** The flag IFF_UP in the file flags. */
std::optional<bool> isEnabled(std::optional<UInt32> flags) {
    return flags ? std::optional<bool>((*flags & IFF_UP) != 0) : std::nullopt;
}

/** Reads the columns of /proc/net/dev after the colon. */
std::optional<InterfaceCounters> parseCounters(std::string_view text) {
    std::array<UInt64, 16> columns{};
    const std::vector<std::string_view> fields = words(text);
    if (fields.size() < columns.size())
        return std::nullopt;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const std::optional<UInt64> value = number<UInt64>(fields[i]);
        if (!value)
            return std::nullopt;
        columns[i] = *value;
    }
    // Skipped: overruns, framing errors, compressed packets, collisions, lost carriers.
    return InterfaceCounters{columns[0], columns[1], columns[2],  columns[3], columns[7],
                             columns[8], columns[9], columns[10], columns[11]};
}

/** The counters of each interface, by its name. The two title lines hold no numbers, so they are skipped. */
std::map<std::string, InterfaceCounters, std::less<>> countersByName(const Host& host) {
    std::map<std::string, InterfaceCounters, std::less<>> all;
    const std::string content = host.readFile("/proc/net/dev").value_or("");
    for (const std::string_view line : lines(content)) {
        const std::size_t colon = line.find(':');
        if (colon == std::string_view::npos)
            continue;
        if (const std::optional<InterfaceCounters> counters = parseCounters(line.substr(colon + 1)))
            all.emplace(ascii::trim(line.substr(0, colon)), *counters);
    }
    return all;
}

std::optional<NetworkInterface> readInterface(const Host& host, const std::string& name) {
    const std::string directory = "/sys/class/net/" + name + "/";
    const std::optional<UInt32> index = host.readNumber<UInt32>(directory + "ifindex");
    if (index.value_or(0) == 0)
        return std::nullopt;
    NetworkInterface found{};
    found.name = name;
    found.index = *index;
    found.isEnabled = isEnabled(host.readHexadecimal<UInt32>(directory + "flags"));
    found.status = status(host.readLine(directory + "operstate"));
    found.hardwareType = host.readNumber<UInt16>(directory + "type");
    found.address = host.readLine(directory + "address");
    found.mtu = host.readNumber<UInt32>(directory + "mtu");
    found.speed = speed(host.readNumber<Int32>(directory + "speed"));
    found.alias = host.readLine(directory + "ifalias");
    return found;
}

} // namespace

std::vector<NetworkInterface> networkInterfaces(const Host& host) {
    const auto counters = countersByName(host);
    std::vector<NetworkInterface> interfaces;
    for (const std::string& name :
         host.listDirectory("/sys/class/net").value_or(std::vector<std::string>())) {
        std::optional<NetworkInterface> found = readInterface(host, name);
        if (!found)
            continue;
        const auto counted = counters.find(name);
        if (counted != counters.end())
            found->counters = counted->second;
        interfaces.push_back(std::move(*found));
    }
    std::sort(interfaces.begin(), interfaces.end(), [](const NetworkInterface& a, const NetworkInterface& b) {
        return std::tie(a.index, a.name) < std::tie(b.index, b.name);
    });
    return interfaces;
}

} // namespace cimom
