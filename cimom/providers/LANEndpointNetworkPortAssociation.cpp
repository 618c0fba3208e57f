#include "objects/Naming.hpp"
#include "providers/Association.hpp"
#include "providers/NetworkPorts.hpp"
#include "providers/Providers.hpp"

namespace cimom {
namespace {

std::vector<References> endpointsAndPorts(const Host& host) {
    const std::optional<std::string> name = host.name();
    std::vector<References> pairs;
    for (const NetworkInterface& interface : networkInterfaces(host))
        pairs.emplace_back(pathOf(namedLANEndpoint(interface, name).build()),
                           pathOf(namedPortStatistics(interface).build()));
    return pairs;
}

} // namespace

/** An instance for each network interface. No class of ports is served but that of their counters. */
std::unique_ptr<Provider> makeLANEndpointNetworkPortAssociation(const Host& host) {
    return std::make_unique<Association>("QAV_LANEndpointNetworkPortAssociation",
                                         AssociationEnd{"Dependent", "QAV_LANEndpoint"},
                                         AssociationEnd{"Antecedent", "QAV_NetworkPortStatistics"},
                                         [&host] { return endpointsAndPorts(host); });
}

} // namespace cimom
