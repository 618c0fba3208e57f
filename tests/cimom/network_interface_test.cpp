#include "HostTree.hpp"
#include "host/NetworkInterfaces.hpp"
#include "objects/ObjectManager.hpp"
#include "providers/Providers.hpp"

#include <gtest/gtest.h>

using namespace cimom;
using namespace OpenWBEM;

namespace {

const std::string titles =
    "Inter-|   Receive                                                |  Transmit\n"
    " face |bytes    packets errs drop fifo frame compressed multicast|bytes    packets errs drop fifo colls "
    "carrier compressed\n";

void writeInterface(const HostTree& tree, const std::string& name, const std::string& file,
                    const std::string& value) {
    tree.write("/sys/class/net/" + name + "/" + file, value + "\n");
}

/** An Ethernet interface eth0 with index 4. */
void writeEthernet(const HostTree& tree) {
    tree.write("/proc/sys/kernel/hostname", "box\n");
    writeInterface(tree, "eth0", "ifindex", "4");
    writeInterface(tree, "eth0", "address", "02:fc:00:00:00:1a");
    writeInterface(tree, "eth0", "mtu", "1400");
    writeInterface(tree, "eth0", "speed", "10000");
    writeInterface(tree, "eth0", "operstate", "up");
    writeInterface(tree, "eth0", "type", "1");
    writeInterface(tree, "eth0", "flags", "0x1003");
    writeInterface(tree, "eth0", "ifalias", "to the core switch");
}

CIMInstance endpointOf(const HostTree& tree) {
    return onlyInstance(providerOf("QAV_LANEndpoint", tree.host()));
}

/** A property of the endpoint of eth0 after a change to one file. */
std::string propertyOf(const char* property, const char* file, const std::string& content) {
    HostTree tree;
    writeEthernet(tree);
    writeInterface(tree, "eth0", file, content);
    return text(endpointOf(tree), property);
}

CIMInstance statisticsOf(const HostTree& tree) {
    return onlyInstance(providerOf("QAV_NetworkPortStatistics", tree.host()));
}

} // namespace

TEST(NetworkInterface, InterfacesComeInTheOrderOfTheirIndexes) {
    HostTree tree;
    writeInterface(tree, "a", "ifindex", "10");
    writeInterface(tree, "b", "ifindex", "9");
    writeInterface(tree, "c", "ifindex", "4294967295");
    std::string found;
    for (const NetworkInterface& interface : networkInterfaces(tree.host()))
        found += interface.name + "=" + std::to_string(interface.index) + " ";
    EXPECT_EQ("b=9 a=10 c=4294967295 ", found);
}

TEST(NetworkInterface, AnEntryWithoutAnIndexIsSkipped) {
    HostTree tree;
    EXPECT_TRUE(networkInterfaces(tree.host()).empty());
    tree.write("/sys/class/net/bonding_masters", "bond0\n");
    writeInterface(tree, "gone", "mtu", "1500");
    writeInterface(tree, "zero", "ifindex", "0");
    writeInterface(tree, "negative", "ifindex", "-1");
    writeInterface(tree, "huge", "ifindex", "4294967296");
    EXPECT_TRUE(networkInterfaces(tree.host()).empty());
}

TEST(LANEndpoint, PropertiesComeKeysFirst) {
    HostTree tree;
    writeEthernet(tree);
    const CIMInstance endpoint = endpointOf(tree);
    EXPECT_EQ("QAV_LANEndpoint", endpoint.getClassName());
    EXPECT_EQ("SystemCreationClassName SystemName CreationClassName Name",
              names(endpoint.getKeyValuePairs()));
    EXPECT_EQ("SystemCreationClassName SystemName CreationClassName Name _INDEX MACAddress Description "
              "TimeOfLastStateChange OperationalStatus EnabledState Speed MaxDataSize ProtocolIFType",
              names(endpoint.getProperties()));
}

TEST(LANEndpoint, DataComesFromTheKernel) {
    HostTree tree;
    writeEthernet(tree);
    const CIMInstance endpoint = endpointOf(tree);
    EXPECT_EQ("QAV_System", text(endpoint, "SystemCreationClassName"));
    EXPECT_EQ("box", text(endpoint, "SystemName"));
    EXPECT_EQ("QAV_LANEndpoint", text(endpoint, "CreationClassName"));
    EXPECT_EQ("eth0", text(endpoint, "Name"));
    EXPECT_EQ("4", text(endpoint, "_INDEX"));
    EXPECT_EQ("02fc0000001a", text(endpoint, "MACAddress"));
    EXPECT_EQ("to the core switch", text(endpoint, "Description"));
    EXPECT_EQ("2", text(endpoint, "OperationalStatus"));
    EXPECT_EQ("2", text(endpoint, "EnabledState"));
    EXPECT_EQ("10000000000", text(endpoint, "Speed"));
    EXPECT_EQ("1400", text(endpoint, "MaxDataSize"));
    EXPECT_EQ("6", text(endpoint, "ProtocolIFType"));
    EXPECT_EQ("(null)", text(endpoint, "TimeOfLastStateChange"));
}

TEST(LANEndpoint, DataThatTheKernelDoesNotReportIsNull) {
    HostTree tree;
    tree.write("/proc/sys/kernel/hostname", "box\n");
    writeInterface(tree, "eth0", "ifindex", "4");
    const CIMInstance endpoint = endpointOf(tree);
    for (const char* const property : {"MACAddress", "OperationalStatus", "EnabledState", "Speed",
                                       "MaxDataSize", "ProtocolIFType", "TimeOfLastStateChange"})
        EXPECT_EQ("(null)", text(endpoint, property)) << property;
}

TEST(LANEndpoint, AnInterfaceWithoutAliasIsDescribedByItsName) {
    EXPECT_EQ("eth0", propertyOf("Description", "ifalias", ""));
}

TEST(LANEndpoint, TheStateOfRFC2863DeterminesTheOperationalStatus) {
    EXPECT_EQ("10", propertyOf("OperationalStatus", "operstate", "down"));
    EXPECT_EQ("11", propertyOf("OperationalStatus", "operstate", "testing"));
    EXPECT_EQ("0", propertyOf("OperationalStatus", "operstate", "unknown"));
    EXPECT_EQ("15", propertyOf("OperationalStatus", "operstate", "dormant"));
    EXPECT_EQ("6", propertyOf("OperationalStatus", "operstate", "notpresent"));
    EXPECT_EQ("16", propertyOf("OperationalStatus", "operstate", "lowerlayerdown"));
    EXPECT_EQ("(null)", propertyOf("OperationalStatus", "operstate", "sideways"));
}

TEST(LANEndpoint, AnInterfaceThatIsNotUpIsDisabled) {
    EXPECT_EQ("3", propertyOf("EnabledState", "flags", "0x1002"));
    EXPECT_EQ("2", propertyOf("EnabledState", "flags", "0x1"));
    for (const char* const odd : {"1003", "0x", "0xyz", "0x100000001", "x"})
        EXPECT_EQ("(null)", propertyOf("EnabledState", "flags", odd)) << odd;
}

TEST(LANEndpoint, AnUnknownSpeedIsNull) {
    for (const char* const odd : {"-1", "0", "4294967295", "fast"})
        EXPECT_EQ("(null)", propertyOf("Speed", "speed", odd)) << odd;
    EXPECT_EQ("2147483647000000", propertyOf("Speed", "speed", "2147483647"));
}

TEST(LANEndpoint, AnAddressOfAnotherLengthIsNotAMACAddress) {
    for (const char* const odd :
         {"0.0.0.0", "00:00:00:00", "02:fc:00:00:00", "02:fc:00:00:00:1", "02:fc:00:00:00:1g",
          "02-fc-00-00-00-1a", "02:fc:00:00:00:1a:00", "80:00:02:08:fe:80:00:00:00:00:00:00:00:02"})
        EXPECT_EQ("(null)", propertyOf("MACAddress", "address", odd)) << odd;
}

TEST(LANEndpoint, TheHardwareTypeDeterminesTheInterfaceType) {
    const char* const kinds[][2] = {{"772", "24"},  {"512", "23"},      {"801", "71"},  {"802", "71"},
                                    {"803", "71"},  {"768", "131"},     {"769", "131"}, {"776", "131"},
                                    {"778", "131"}, {"823", "131"},     {"32", "199"},  {"65534", "1"},
                                    {"280", "1"},   {"65536", "(null)"}};
    for (const auto& kind : kinds)
        EXPECT_EQ(kind[1], propertyOf("ProtocolIFType", "type", kind[0])) << kind[0];
}

TEST(NetworkPortStatistics, CountersAreFoundByTheirColumns) {
    HostTree tree;
    writeEthernet(tree);
    tree.write("/proc/net/dev", titles +
                                    "    lo: 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1\n"
                                    "  eth0:201 202 203 204 205 206 207 8 209 210 211 212 213 214 215 216\n");
    const CIMInstance statistics = statisticsOf(tree);
    EXPECT_EQ("QAV_NetworkPortStatistics", statistics.getClassName());
    EXPECT_EQ("InstanceID", names(statistics.getKeyValuePairs()));
    std::string all;
    for (const CIMProperty& property : statistics.getProperties())
        all += std::string(property.getName().c_str()) + "=" + property.getValue().toString().c_str() + " ";
    EXPECT_EQ("InstanceID=eth0 InOctets=201 InUcastPkts=194 InNUcastPkts=8 InDiscards=204 InErrors=203 "
              "InUnknownProtos=(null) OutOctets=209 OutUcastPkts=210 OutNUcastPkts=(null) OutDiscards=212 "
              "OutErrors=211 OutQLen=(null) ",
              all);
}

TEST(NetworkPortStatistics, CountersAreOf64Bits) {
    HostTree tree;
    writeEthernet(tree);
    tree.write("/proc/net/dev",
               titles + "eth0: 18446744073709551615 2 0 0 0 0 0 2 0 18446744073709551615 0 0 0 0 0 0\n");
    const CIMInstance statistics = statisticsOf(tree);
    EXPECT_EQ("18446744073709551615", text(statistics, "InOctets"));
    EXPECT_EQ("0", text(statistics, "InUcastPkts"));
    EXPECT_EQ("18446744073709551615", text(statistics, "OutUcastPkts"));
}

TEST(NetworkPortStatistics, WithMoreMulticastsThanPacketsUnicastsAreNull) {
    HostTree tree;
    writeEthernet(tree);
    tree.write("/proc/net/dev", titles + "eth0: 9 2 0 0 0 0 0 3 0 0 0 0 0 0 0 0\n");
    EXPECT_EQ("(null)", text(statisticsOf(tree), "InUcastPkts"));
    EXPECT_EQ("3", text(statisticsOf(tree), "InNUcastPkts"));
}

TEST(NetworkPortStatistics, MalformedLinesAreSkipped) {
    for (const char* const line : {"", "eth0\n", "eth0:\n", "eth0: 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15\n",
                                   "eth0: 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 x\n", "eth: 1 2 3\n",
                                   "eth0: -1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16\n"}) {
        HostTree tree;
        writeEthernet(tree);
        tree.write("/proc/net/dev", titles + line);
        const CIMInstance statistics = statisticsOf(tree);
        EXPECT_EQ("eth0", text(statistics, "InstanceID")) << line;
        EXPECT_EQ("(null)", text(statistics, "InOctets")) << line;
        EXPECT_EQ("(null)", text(statistics, "OutErrors")) << line;
    }
}

TEST(LANEndpointNetworkPortAssociation, EachEndpointRefersToTheCountersOfItsInterface) {
    HostTree tree;
    writeEthernet(tree);
    writeInterface(tree, "lo", "ifindex", "1");
    const std::vector<CIMInstance> pairs =
        allInstances(providerOf("QAV_LANEndpointNetworkPortAssociation", tree.host()));
    ASSERT_EQ(2u, pairs.size());
    EXPECT_EQ("Dependent Antecedent", names(pairs[1].getKeyValuePairs()));
    const ObjectManager manager(makeProviders(tree.host(), loop()));
    const auto at = [&](const CIMInstance& pair, const char* end) {
        return manager.getInstance("root/cimv2", pair.getProperty(end).getValue().toCIMObjectPath(), nullptr);
    };
    EXPECT_EQ("lo", text(at(pairs[0], "Dependent"), "Name"));
    EXPECT_EQ("lo", text(at(pairs[0], "Antecedent"), "InstanceID"));
    EXPECT_EQ("4", text(at(pairs[1], "Dependent"), "_INDEX"));
    EXPECT_EQ("QAV_NetworkPortStatistics", at(pairs[1], "Antecedent").getClassName());
    EXPECT_EQ("eth0", text(at(pairs[1], "Antecedent"), "InstanceID"));
}
