#ifndef CIMOM_HOST_DEVICES_HPP_INCLUDED
#define CIMOM_HOST_DEVICES_HPP_INCLUDED
#include "OW_Types.hpp"
#include "host/DeviceNumbers.hpp"
#include "host/Host.hpp"
#include "host/NetworkInterfaces.hpp"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace cimom {

/** A processor of the scheduler: a core or a thread of one. */
struct Processor {
    /** The kernel's number, from 0. */
    OpenWBEM::UInt32 number;
    /** Whether it runs programs. */
    std::optional<bool> isOnline;
    /** "model name" of /proc/cpuinfo; absent if the processor is offline. */
    std::optional<std::string> model;
};

/**
 * The processors in the order of their numbers: those of /proc/cpuinfo, which are online, and the others of
 * /sys/devices/system/cpu.
 */
std::vector<Processor> processors(const Host& host);

/** hrDeviceStatus of RFC 2790. */
enum class DeviceStatus { unknown = 1, running = 2, testing = 4, down = 5 };

/** A row of the device table of RFC 2790: a processor, a network interface or a disk. */
struct Device {
    DeviceType type;
    /** See DeviceIndexes. */
    OpenWBEM::UInt32 index;
    /** The kernel's name, such as "cpu0", "eth0" or "sda"; unique among the devices of its type. */
    std::string name;
    /** The name that its vendor or administrator gave it; else the kernel's name. */
    std::string description;
    DeviceStatus status;
    /** Errors since the kernel found the device; absent if the kernel does not count them. */
    std::optional<OpenWBEM::UInt64> errors;
};

/** The processors, then the network interfaces, then the disks. */
std::vector<Device> devices(const Host& host);

/** A network interface, and its index as a device. */
using IndexedInterface = std::pair<NetworkInterface, OpenWBEM::UInt32>;

std::vector<IndexedInterface> indexedInterfaces(const Host& host);

} // namespace cimom
#endif
