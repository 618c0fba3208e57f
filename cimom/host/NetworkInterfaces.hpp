#ifndef CIMOM_HOST_NETWORK_INTERFACES_HPP_INCLUDED
#define CIMOM_HOST_NETWORK_INTERFACES_HPP_INCLUDED
#include "OW_Types.hpp"
#include "host/Host.hpp"

#include <optional>
#include <string>
#include <vector>

namespace cimom {

/** ifOperStatus of RFC 2863. */
enum class OperStatus { up = 1, down, testing, unknown, dormant, notPresent, lowerLayerDown };

/** The counters of an interface since it was created. Bytes include the headers of frames. */
struct InterfaceCounters {
    OpenWBEM::UInt64 receivedBytes;
    OpenWBEM::UInt64 receivedPackets;
    OpenWBEM::UInt64 receiveErrors;
    /** Packets received without error and dropped: no buffer, or no protocol that handles them. */
    OpenWBEM::UInt64 receiveDrops;
    /** Received packets with a group address. */
    OpenWBEM::UInt64 receivedMulticasts;
    OpenWBEM::UInt64 sentBytes;
    OpenWBEM::UInt64 sentPackets;
    OpenWBEM::UInt64 sendErrors;
    OpenWBEM::UInt64 sendDrops;
};

/** A network interface. What the kernel does not report in the expected form is absent. */
struct NetworkInterface {
    /** The kernel's name; unique at any time. */
    std::string name;
    /** ifindex of netdevice(7), at least 1. It does not change while the interface exists. */
    OpenWBEM::UInt32 index;
    /** The flag IFF_UP of netdevice(7), which the administrator sets. */
    std::optional<bool> isEnabled;
    std::optional<OperStatus> status;
    /** ARPHRD_... of linux/if_arp.h. */
    std::optional<OpenWBEM::UInt16> hardwareType;
    /** Hardware address: any number of octets in hexadecimal, separated by colons. */
    std::optional<std::string> address;
    /** Largest payload of a frame, in bytes. */
    std::optional<OpenWBEM::UInt32> mtu;
    /** In bits per second. */
    std::optional<OpenWBEM::UInt64> speed;
    /** The name that the administrator gives it (ip-link(8), alias). */
    std::optional<std::string> alias;
    std::optional<InterfaceCounters> counters;
};

/**
 * The interfaces of /sys/class/net, sorted by index, with the counters of /proc/net/dev, proc(5). Entries
 * without an index are skipped.
 */
std::vector<NetworkInterface> networkInterfaces(const Host& host);

} // namespace cimom
#endif
