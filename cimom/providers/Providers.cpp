#include "providers/Providers.hpp"

namespace cimom {

std::vector<std::unique_ptr<Provider>> makeProviders(const Host& host) {
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
                            makeSoftwareIdentity,
                            makeExpansionChassis,
                            makeLogicalModule,
                            makePackageDependency,
                            makeLogicalModuleLocation,
                            makeModuleLocation,
                            makeUnixProcess,
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
    return providers;
}

} // namespace cimom
