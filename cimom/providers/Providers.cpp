#include "providers/Providers.hpp"

#include "providers/Subjects.hpp"

#include <iterator>
#include <utility>

namespace cimom {
namespace {

void append(std::vector<Provider>& all, std::vector<Provider> more) {
    all.insert(all.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

} // namespace

std::vector<Provider> makeProviders(const Host& host, boost::asio::io_context& io) {
    std::vector<Provider> all;
    append(all, chassisProviders(host));
    append(all, systemProviders(host));
    append(all, operatingSystemProviders(host));
    append(all, internetProtocolProviders(host));
    append(all, networkInterfaceProviders(host));
    append(all, moduleProviders(host));
    append(all, processStatisticsProviders(host));
    append(all, storageProviders(host));
    append(all, deviceProviders(host));
    append(all, softwareProviders(host, io));
    append(all, processProviders(host, io));
    return all;
}

} // namespace cimom
