#include "host/DeviceIndexes.hpp"

namespace cimom {

using namespace OpenWBEM;

UInt32 DeviceIndexes::next(UInt32 kernelNumber) {
    const UInt32 numbers = 65535; // from 1 on
    if (m_used.size() == numbers)
        return 0;
    UInt32 own = (kernelNumber + numbers - 1) % numbers;
    while (!m_used.insert(own).second)
        own = (own + 1) % numbers;
    return static_cast<UInt32>(m_type) * (numbers + 1) + own + 1;
}

} // namespace cimom
