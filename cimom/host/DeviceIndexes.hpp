#ifndef CIMOM_HOST_DEVICE_INDEXES_HPP_INCLUDED
#define CIMOM_HOST_DEVICE_INDEXES_HPP_INCLUDED
#include "OW_Types.hpp"

#include <set>

namespace cimom {

/** Kinds of devices: hrDeviceTypes of RFC 2790. */
enum class DeviceType { processor = 3, network = 4, disk = 6 };

/**
 * Gives the devices of one type their indexes, hrDeviceIndex of RFC 2790: type * 65536 + number, where the
 * number, from 1 to 65535, is the kernel's own number of the thing. So an index stays with its device while
 * others come and go. A device whose number is out of that range, or that an earlier device has already,
 * gets the next free one.
 */
class DeviceIndexes {
public:
    explicit DeviceIndexes(DeviceType type)
        : m_type(type) {}

    /** The index of the next device; 0, which is the index of none, when all numbers are in use. */
    OpenWBEM::UInt32 next(OpenWBEM::UInt32 kernelNumber);

private:
    DeviceType m_type;
    std::set<OpenWBEM::UInt32> m_used;
};

} // namespace cimom
#endif
