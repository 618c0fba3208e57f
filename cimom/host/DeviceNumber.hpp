#ifndef CIMOM_HOST_DEVICE_NUMBER_HPP_INCLUDED
#define CIMOM_HOST_DEVICE_NUMBER_HPP_INCLUDED
#include "OW_Types.hpp"

#include <optional>
#include <string>
#include <string_view>

namespace cimom {

/**
 * The kernel's number of a block device, or of a mounted file system that is on none (its major number is
 * then 0). No two have the same number at the same time.
 */
struct DeviceNumber {
    /** Below 512, as the kernel gives them out (linux/fs.h: CHRDEV_MAJOR_MAX). */
    OpenWBEM::UInt32 majorNumber;
    /** Below 2^20 (linux/kdev_t.h: MINORBITS). */
    OpenWBEM::UInt32 minorNumber;

    /** "<major>:<minor>", as files of /proc and /sys have it. */
    std::string text() const;
};

bool operator==(const DeviceNumber& a, const DeviceNumber& b);
bool operator<(const DeviceNumber& a, const DeviceNumber& b);

/** Reads "<major>:<minor>"; absent for anything else. */
std::optional<DeviceNumber> parseDeviceNumber(std::string_view text);

} // namespace cimom
#endif
