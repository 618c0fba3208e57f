#ifndef CIMOM_HOST_DEVICES_HPP_INCLUDED
#define CIMOM_HOST_DEVICES_HPP_INCLUDED
#include "OW_Types.hpp"
#include "host/DeviceIndexes.hpp"
#include "host/Host.hpp"
#include "host/NetworkInterfaces.hpp"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace cimom {

/** Whether a device can be used: hrDeviceStatus of RFC 2790. */
enum class DeviceStatus { unknown = 1, running = 2, testing = 4, down = 5 };

/** A row of the device table of RFC 2790: a processor, a network interface or a disk. */
struct Device {
    DeviceType type;
    /** See DeviceIndexes. */
    OpenWBEM::UInt32 index;
    /** The kernel's, such as "cpu0", "eth0" or "sda"; unique among the devices of its type. */
    std::string name;
    /** What it is called by those who made it or who look after it; else its name. */
    std::string description;
    DeviceStatus status;
    /** Errors since it was found; absent when the kernel does not count them. */
    std::optional<OpenWBEM::UInt64> errors;
};

/** The processors, then the network interfaces, then the disks. */
std::vector<Device> devices(const Host& host);

/** The network interfaces, and the index that each has as a device. */
std::vector<std::pair<NetworkInterface, OpenWBEM::UInt32>> indexedInterfaces(const Host& host);

} // namespace cimom
#endif
