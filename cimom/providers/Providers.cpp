#include "providers/Providers.hpp"

namespace cimom {

std::vector<std::unique_ptr<Provider>> makeProviders(const Host& host, boost::asio::io_context& io) {
    std::vector<std::unique_ptr<Provider>> providers;
    for (const auto make : {makeChassis,
                            makeSystem,
                            makeOperatingSystem,
                            makeTCPProtocolEndpoint,
                            makeTCPStatisticalData,
                            makeUDPStatisticalData,
                            makeIPProtocolEndpoint,
                            makeIPStatisticalData,
                            makeICMPStatisticalData,
                            makeLANEndpoint,
                            makeLANEndpointNetworkPortAssociation,
                            makeNetworkPortStatistics,
                            makeExpansionChassis,
                            makeLogicalModule,
                            makePackageDependency,
                            makeLogicalModuleLocation,
                            makeModuleLocation,
                            makeUnixProcessStatisticalInformation,
                            makeStorageExtent,
                            makeFileSystem,
                            makeDiskPartition,
                            makeMediaAccessDevice,
                            makeResidesOnPartition,
                            makeResidesOnExtent,
                            makeHRDevice,
                            makeHRNetwork})
        providers.push_back(make(host));
    providers.push_back(makeSoftwareIdentity(host, io));
    providers.push_back(makeUnixProcess(host, io));
    return providers;
}

} // namespace cimom
