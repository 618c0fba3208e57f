#ifndef CIMOM_HOST_DEVICE_NUMBERS_HPP_INCLUDED
#define CIMOM_HOST_DEVICE_NUMBERS_HPP_INCLUDED
#include "OW_Types.hpp"

#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace cimom {

/**
 * The kernel's number of a block device, or of a mounted file system without a device, whose major number is
 * 0. Unique at any time.
 */
struct DeviceNumber {
    /** Below 512 (linux/fs.h: CHRDEV_MAJOR_MAX). */
    OpenWBEM::UInt32 majorNumber;
    /** Below 2^20 (linux/kdev_t.h: MINORBITS). */
    OpenWBEM::UInt32 minorNumber;

    /** "<major>:<minor>", as in files of /proc and /sys. */
    std::string text() const;
};

bool operator==(const DeviceNumber& a, const DeviceNumber& b);
bool operator<(const DeviceNumber& a, const DeviceNumber& b);

/** Reads "<major>:<minor>"; absent for any other text. */
std::optional<DeviceNumber> parseDeviceNumber(std::string_view text);

/** Types of devices: hrDeviceTypes of RFC 2790. */
enum class DeviceType { processor = 3, network = 4, disk = 6 };

/**
 * Assigns indexes to the devices of one type (hrDeviceIndex of RFC 2790): type * 65536 + number, where the
 * number is the kernel's, from 1 to 65535. So a device keeps its index while others come and go. A device
 * whose number is out of range or taken gets the next free number.
 */
class DeviceIndexes {
public:
    explicit DeviceIndexes(DeviceType type)
        : m_type(type) {}

    /** The index of the next device; 0, which is no index, if all numbers are taken. */
    OpenWBEM::UInt32 next(OpenWBEM::UInt32 kernelNumber);

private:
    DeviceType m_type;
    std::set<OpenWBEM::UInt32> m_taken;
};

} // namespace cimom
#endif
