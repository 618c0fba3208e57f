#ifndef CIMOM_PROVIDERS_SUBJECTS_HPP_INCLUDED
#define CIMOM_PROVIDERS_SUBJECTS_HPP_INCLUDED
#include "OW_CIMDateTime.hpp"
#include "OW_CIMObjectPath.hpp"
#include "OW_DateTime.hpp"
#include "host/Host.hpp"
#include "providers/Provider.hpp"

#include <boost/asio/io_context.hpp>
#include <ctime>
#include <vector>

namespace cimom {

// The served classes by subject: one source file a subject, whose table has one row a class. For the
// parameters see makeProviders().
std::vector<Provider> chassisProviders(const Host& host);
std::vector<Provider> systemProviders(const Host& host);
std::vector<Provider> operatingSystemProviders(const Host& host);
std::vector<Provider> internetProtocolProviders(const Host& host);
std::vector<Provider> networkInterfaceProviders(const Host& host);
std::vector<Provider> moduleProviders(const Host& host);
std::vector<Provider> processStatisticsProviders(const Host& host);
std::vector<Provider> storageProviders(const Host& host);
std::vector<Provider> deviceProviders(const Host& host);
std::vector<Provider> softwareProviders(const Host& host, boost::asio::io_context& io);
std::vector<Provider> processProviders(const Host& host, boost::asio::io_context& io);

/** A moment as a CIM date in local time; cut to microseconds. */
inline OpenWBEM::CIMDateTime localTime(const std::timespec& moment) {
    return OpenWBEM::DateTime(moment.tv_sec, static_cast<OpenWBEM::UInt32>(moment.tv_nsec / 1000));
}

/** The path of the chassis of the host, to which associations of modules refer. */
OpenWBEM::CIMObjectPath chassisPath();

} // namespace cimom
#endif
