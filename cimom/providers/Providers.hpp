#ifndef CIMOM_PROVIDERS_PROVIDERS_HPP_INCLUDED
#define CIMOM_PROVIDERS_PROVIDERS_HPP_INCLUDED
#include "host/Host.hpp"
#include "objects/Provider.hpp"

#include <boost/asio/io_context.hpp>
#include <memory>
#include <vector>

namespace cimom {

// One function a class. The host must outlive the provider. Those that ask a program of the host do so in io,
// which must not run any more when the provider is gone; their instances() throw AnswerPending.
std::unique_ptr<Provider> makeChassis(const Host& host);
std::unique_ptr<Provider> makeSystem(const Host& host);
std::unique_ptr<Provider> makeOperatingSystem(const Host& host);
std::unique_ptr<Provider> makeTCPProtocolEndpoint(const Host& host);
std::unique_ptr<Provider> makeTCPStatisticalData(const Host& host);
std::unique_ptr<Provider> makeUDPStatisticalData(const Host& host);
std::unique_ptr<Provider> makeIPProtocolEndpoint(const Host& host);
std::unique_ptr<Provider> makeIPStatisticalData(const Host& host);
std::unique_ptr<Provider> makeICMPStatisticalData(const Host& host);
std::unique_ptr<Provider> makeLANEndpoint(const Host& host);
std::unique_ptr<Provider> makeLANEndpointNetworkPortAssociation(const Host& host);
std::unique_ptr<Provider> makeNetworkPortStatistics(const Host& host);
std::unique_ptr<Provider> makeSoftwareIdentity(const Host& host, boost::asio::io_context& io);
std::unique_ptr<Provider> makeExpansionChassis(const Host& host);
std::unique_ptr<Provider> makeLogicalModule(const Host& host);
std::unique_ptr<Provider> makeLogicalModuleLocation(const Host& host);
std::unique_ptr<Provider> makeModuleLocation(const Host& host);
std::unique_ptr<Provider> makePackageDependency(const Host& host);
std::unique_ptr<Provider> makeUnixProcess(const Host& host, boost::asio::io_context& io);
std::unique_ptr<Provider> makeUnixProcessStatisticalInformation(const Host& host);
std::unique_ptr<Provider> makeStorageExtent(const Host& host);
std::unique_ptr<Provider> makeFileSystem(const Host& host);
std::unique_ptr<Provider> makeDiskPartition(const Host& host);
std::unique_ptr<Provider> makeMediaAccessDevice(const Host& host);
std::unique_ptr<Provider> makeResidesOnPartition(const Host& host);
std::unique_ptr<Provider> makeResidesOnExtent(const Host& host);
std::unique_ptr<Provider> makeHRDevice(const Host& host);
std::unique_ptr<Provider> makeHRNetwork(const Host& host);

/** A provider for every class that is served. */
std::vector<std::unique_ptr<Provider>> makeProviders(const Host& host, boost::asio::io_context& io);

} // namespace cimom
#endif
