#include "HostTree.hpp"
#include "providers/Providers.hpp"

#include <gtest/gtest.h>
#include <set>
#include <string>

using namespace cimom;
using namespace OpenWBEM;

namespace {

const char* const tcpTable =
    "  sl  local_address rem_address   st tx_queue rx_queue tr tm->when retrnsmt   uid  timeout inode\n"
    "   0: 0100007F:1F90 0200A8C0:D431 01 00000000:00000000 00:00000000 00000000     0        0 1214 1 0\n";

} // namespace

TEST(IPProtocolEndpoint, SettingsComeFromTheKernel) {
    HostTree tree;
    tree.write("/proc/net/snmp", "Ip: Forwarding DefaultTTL ReasmTimeout\nIp: 2 64 99\n");
    tree.write("/proc/sys/net/ipv4/ipfrag_time", "30\n");
    const CIMInstance ip = onlyInstance(providerOf("QAV_IPProtocolEndpoint", tree.host()));
    EXPECT_EQ("CreationClassName Name Forwarding DefaultTTL ReassemblyTimeout", names(ip.getProperties()));
    EXPECT_EQ("CreationClassName Name", names(ip.getKeyValuePairs()));
    EXPECT_EQ("QAV_IPProtocolEndpoint", text(ip, "CreationClassName"));
    EXPECT_EQ("IP", text(ip, "Name"));
    EXPECT_EQ("2", text(ip, "Forwarding"));
    EXPECT_EQ("64", text(ip, "DefaultTTL"));
    EXPECT_EQ("30", text(ip, "ReassemblyTimeout"));
}

TEST(IPProtocolEndpoint, SettingsThatTheHostDoesNotReportAreNull) {
    HostTree tree;
    const CIMInstance ip = onlyInstance(providerOf("QAV_IPProtocolEndpoint", tree.host()));
    for (const char* const property : {"Forwarding", "DefaultTTL", "ReassemblyTimeout"})
        EXPECT_EQ("(null)", text(ip, property)) << property;
}

TEST(TCPProtocolEndpoint, TheFirstInstanceHasTheSettingsAndNoConnection) {
    HostTree tree;
    tree.write("/proc/net/snmp", "Tcp: RtoAlgorithm RtoMin RtoMax MaxConn\nTcp: 1 200 120000 -1\n");
    tree.write("/proc/net/tcp", tcpTable);
    const CIMInstance settings = allInstances(providerOf("QAV_TCPProtocolEndpoint", tree.host())).at(0);
    EXPECT_EQ("CreationClassName Name TimeoutAlgorithm TimeoutMin TimeoutMax MaxConnections ConnectionState "
              "LocalAddress LocalPort RemoteAddress RemotePort",
              names(settings.getProperties()));
    EXPECT_EQ("TCP", text(settings, "Name"));
    EXPECT_EQ("1", text(settings, "TimeoutAlgorithm"));
    EXPECT_EQ("200", text(settings, "TimeoutMin"));
    EXPECT_EQ("120000", text(settings, "TimeoutMax"));
    EXPECT_EQ("-1", text(settings, "MaxConnections"));
    for (const char* const property :
         {"ConnectionState", "LocalAddress", "LocalPort", "RemoteAddress", "RemotePort"})
        EXPECT_EQ("(null)", text(settings, property)) << property;
}

TEST(TCPProtocolEndpoint, FurtherInstancesAreConnectionsWithoutSettings) {
    HostTree tree;
    tree.write("/proc/net/tcp", tcpTable);
    const std::vector<CIMInstance> all = allInstances(providerOf("QAV_TCPProtocolEndpoint", tree.host()));
    ASSERT_EQ(2u, all.size());
    EXPECT_EQ("CreationClassName Name", names(all[1].getKeyValuePairs()));
    EXPECT_EQ("127.0.0.1:8080-192.168.0.2:54321", text(all[1], "Name"));
    EXPECT_EQ("5", text(all[1], "ConnectionState"));
    EXPECT_EQ("127.0.0.1", text(all[1], "LocalAddress"));
    EXPECT_EQ("8080", text(all[1], "LocalPort"));
    EXPECT_EQ("192.168.0.2", text(all[1], "RemoteAddress"));
    EXPECT_EQ("54321", text(all[1], "RemotePort"));
    for (const char* const property : {"TimeoutAlgorithm", "TimeoutMin", "TimeoutMax", "MaxConnections"})
        EXPECT_EQ("(null)", text(all[1], property)) << property;
}

TEST(TCPProtocolEndpoint, WithoutFilesAllSettingsAreNull) {
    HostTree tree;
    const CIMInstance settings = onlyInstance(providerOf("QAV_TCPProtocolEndpoint", tree.host()));
    EXPECT_EQ("(null)", text(settings, "TimeoutAlgorithm"));
    EXPECT_EQ("(null)", text(settings, "MaxConnections"));
}

TEST(Providers, EveryClassIsServedOnce) {
    HostTree tree;
    std::multiset<std::string> classes;
    for (const auto& provider : makeProviders(tree.host(), loop()))
        classes.insert(provider.declaration->name);
    const std::multiset<std::string> all = {"HR_DEVICE",
                                            "HR_NETWORK",
                                            "QAV_CoreTelephony_ModuleLocation",
                                            "QAV_DiskPartition",
                                            "QAV_FileSystem",
                                            "QAV_ICMPStatisticalData",
                                            "QAV_IPProtocolEndpoint",
                                            "QAV_IPStatisticalData",
                                            "QAV_K70Chassis",
                                            "QAV_K70ExpansionChassis",
                                            "QAV_LANEndpoint",
                                            "QAV_LANEndpointNetworkPortAssociation",
                                            "QAV_MediaAccessDevice",
                                            "QAV_NetworkPortStatistics",
                                            "QAV_OperatingSystem",
                                            "QAV_ResidesOnExtent",
                                            "QAV_ResidesOnPartition",
                                            "QAV_SoftwareIdentity",
                                            "QAV_StorageExtent",
                                            "QAV_System",
                                            "QAV_TCPProtocolEndpoint",
                                            "QAV_TCPStatisticalData",
                                            "QAV_UDPStatisticalData",
                                            "QAV_UnixProcess",
                                            "QAV_UnixProcessStatisticalInformation",
                                            "QAV_XRULogicalModule",
                                            "QAV_XRULogicalModuleLocation",
                                            "QAV_XRUPackageDependency"};
    EXPECT_EQ(all, classes);
}
