#ifndef CIMOM_PROVIDERS_NETWORK_PORTS_HPP_INCLUDED
#define CIMOM_PROVIDERS_NETWORK_PORTS_HPP_INCLUDED
#include "host/NetworkInterfaces.hpp"
#include "objects/InstanceBuilder.hpp"

#include <optional>
#include <string>

namespace cimom {

// What a network interface is in CIM: an endpoint that sends and receives, and the counters of its port.
// Each is made with its keys and no other values yet.

/** @param systemName name of the host */
InstanceBuilder namedLANEndpoint(const NetworkInterface& interface,
                                 const std::optional<std::string>& systemName);
InstanceBuilder namedPortStatistics(const NetworkInterface& interface);

} // namespace cimom
#endif
