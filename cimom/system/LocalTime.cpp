#include "system/LocalTime.hpp"

namespace cimom {

OpenWBEM::CIMDateTime localTime(const std::timespec& moment) {
    std::tm local{};
    ::localtime_r(&moment.tv_sec, &local);

    OpenWBEM::CIMDateTime result;
    result.setInterval(false);
    result.setYear(static_cast<OpenWBEM::UInt16>(local.tm_year + 1900));
    result.setMonth(static_cast<OpenWBEM::UInt8>(local.tm_mon + 1));
    result.setDay(static_cast<OpenWBEM::UInt32>(local.tm_mday));
    result.setHours(static_cast<OpenWBEM::UInt8>(local.tm_hour));
    result.setMinutes(static_cast<OpenWBEM::UInt8>(local.tm_min));
    result.setSeconds(static_cast<OpenWBEM::UInt8>(local.tm_sec));
    result.setMicroSeconds(static_cast<OpenWBEM::UInt32>(moment.tv_nsec / 1000));
    result.setUtc(static_cast<OpenWBEM::Int16>(local.tm_gmtoff / 60));
    return result;
}

} // namespace cimom
