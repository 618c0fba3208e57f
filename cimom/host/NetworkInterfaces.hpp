#ifndef CIMOM_HOST_NETWORK_INTERFACES_HPP_INCLUDED
#define CIMOM_HOST_NETWORK_INTERFACES_HPP_INCLUDED
#include "OW_Types.hpp"
#include "host/Host.hpp"

#include <optional>
#include <string>
#include <vector>

namespace cimom {

/** ifOperStatus of RFC 2863: whether an interface can pass packets, and if not why. */
enum class OperStatus { up = 1, down, testing, unknown, dormant, notPresent, lowerLayerDown };

/** What an interface has counted since it was made. Bytes are those of whole frames. */
struct InterfaceCounters {
    OpenWBEM::UInt64 receivedBytes;
    OpenWBEM::UInt64 receivedPackets;
    OpenWBEM::UInt64 receiveErrors;
    /** Received without error and not passed on, for want of room or because no protocol wants them. */
    OpenWBEM::UInt64 receiveDrops;
    /** Those of the received packets that came to a group address. */
    OpenWBEM::UInt64 receivedMulticasts;
    OpenWBEM::UInt64 sentBytes;
    OpenWBEM::UInt64 sentPackets;
    OpenWBEM::UInt64 sendErrors;
    OpenWBEM::UInt64 sendDrops;
};

/** A network interface. What the kernel does not tell, or not in a form that makes sense, is absent. */
struct NetworkInterface {
    /** As the kernel calls it; unique at a time. */
    std::string name;
    /** ifindex of netdevice(7), at least 1; an interface keeps it as long as it exists. */
    OpenWBEM::UInt32 index;
    /** Whether the administrator wants it up: the flag IFF_UP of netdevice(7). */
    std::optional<bool> isEnabled;
    std::optional<OperStatus> status;
    /** Kind of its hardware: ARPHRD_... of linux/if_arp.h. */
    std::optional<OpenWBEM::UInt16> hardwareType;
    /** Of the hardware: octets in hexadecimal with colons between them, as many as the hardware has. */
    std::optional<std::string> address;
    /** Largest payload of a frame, in bytes. */
    std::optional<OpenWBEM::UInt32> mtu;
    /** In bits per second. */
    std::optional<OpenWBEM::UInt64> speed;
    /** What the administrator calls it (ip-link(8), alias). */
    std::optional<std::string> alias;
    std::optional<InterfaceCounters> counters;
};

/**
 * The interfaces of /sys/class/net, in the order of their indexes, with the counters of /proc/net/dev,
 * proc(5). An entry without an index is none.
 */
std::vector<NetworkInterface> networkInterfaces(const Host& host);

} // namespace cimom
#endif
