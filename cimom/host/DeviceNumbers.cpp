#include "host/DeviceNumbers.hpp"

#include "system/Text.hpp"

#include <tuple>

namespace cimom {

using namespace OpenWBEM;

std::string DeviceNumber::text() const {
    return std::to_string(majorNumber) + ":" + std::to_string(minorNumber);
}

bool operator==(const DeviceNumber& a, const DeviceNumber& b) {
    return std::tie(a.majorNumber, a.minorNumber) == std::tie(b.majorNumber, b.minorNumber);
}

bool operator<(const DeviceNumber& a, const DeviceNumber& b) {
    return std::tie(a.majorNumber, a.minorNumber) < std::tie(b.majorNumber, b.minorNumber);
}

std::optional<DeviceNumber> parseDeviceNumber(std::string_view text) {
    const UInt32 majors = 512;
    const UInt32 minors = 1U << 20U;
    const std::size_t colon = text.find(':');
    if (colon == std::string_view::npos)
        return std::nullopt;
    const std::optional<UInt32> majorNumber = number<UInt32>(text.substr(0, colon));
    const std::optional<UInt32> minorNumber = number<UInt32>(text.substr(colon + 1));
    if (!majorNumber || !minorNumber || *majorNumber >= majors || *minorNumber >= minors)
        return std::nullopt;
    return DeviceNumber{*majorNumber, *minorNumber};
}

UInt32 DeviceIndexes::next(UInt32 kernelNumber) {
    const UInt32 numbers = 65535; // from 1
    if (m_taken.size() == numbers)
        return 0;
    UInt32 own = (kernelNumber + numbers - 1) % numbers;
    while (!m_taken.insert(own).second)
        own = (own + 1) % numbers;
    return static_cast<UInt32>(m_type) * (numbers + 1) + own + 1;
}

} // namespace cimom
