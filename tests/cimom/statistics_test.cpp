#include "HostTree.hpp"
#include "providers/Providers.hpp"
#include "system/Text.hpp"

#include <gtest/gtest.h>

using namespace cimom;
using namespace OpenWBEM;

namespace {

/** A pair of lines in which column n has the value first + n. */
std::string lineFor(const std::string& protocol, const std::string& columns, unsigned first) {
    std::string values;
    for (std::size_t i = 0; i < words(columns).size(); ++i)
        values += " " + std::to_string(first + i);
    return protocol + ": " + columns + "\n" + protocol + ":" + values + "\n";
}

const std::string ip = lineFor("Ip",
                               "Forwarding DefaultTTL InReceives InHdrErrors InAddrErrors ForwDatagrams "
                               "InUnknownProtos InDiscards InDelivers OutRequests OutDiscards OutNoRoutes "
                               "ReasmTimeout ReasmReqds ReasmOKs ReasmFails FragOKs FragFails FragCreates",
                               100);
const std::string icmp =
    lineFor("Icmp",
            "InMsgs InErrors InCsumErrors InDestUnreachs InTimeExcds InParmProbs InSrcQuenchs "
            "InRedirects InEchos InEchoReps InTimestamps InTimestampReps InAddrMasks "
            "InAddrMaskReps OutMsgs OutErrors OutDestUnreachs OutTimeExcds OutParmProbs "
            "OutSrcQuenchs OutRedirects OutEchos OutEchoReps OutTimestamps OutTimestampReps "
            "OutAddrMasks OutAddrMaskReps",
            200) +
    lineFor("IcmpMsg", "InType3", 900);
const std::string tcp =
    lineFor("Tcp",
            "RtoAlgorithm RtoMin RtoMax MaxConn ActiveOpens PassiveOpens AttemptFails "
            "EstabResets CurrEstab InSegs OutSegs RetransSegs InErrs OutRsts InCsumErrors",
            300);
const std::string udp = lineFor("Udp", "InDatagrams NoPorts InErrors OutDatagrams RcvbufErrors", 400) +
                        lineFor("UdpLite", "InDatagrams NoPorts InErrors OutDatagrams", 500);

/** The values of all properties in order, separated by blanks. */
std::string values(const CIMInstance& instance) {
    std::string result;
    for (const CIMProperty& property : instance.getProperties())
        result += (result.empty() ? "" : " ") + std::string(property.getValue().toString().c_str());
    return result;
}

HostTree& withCounters(HostTree& tree) {
    tree.write("/proc/net/snmp", ip + icmp + tcp + udp);
    return tree;
}

} // namespace

TEST(Statistics, TCPCountersAreFoundByTheirColumns) {
    HostTree tree;
    const CIMInstance found = onlyInstance(providerOf("QAV_TCPStatisticalData", withCounters(tree).host()));
    EXPECT_EQ(
        "InstanceID ActiveOpens PassiveOpens AttemptFails EstabResets CurrEstab InSegs OutSegs RetransSegs "
        "InErrs OutRsts",
        names(found.getProperties()));
    EXPECT_EQ("TCP 304 305 306 307 308 309 310 311 312 313", values(found));
    EXPECT_EQ("InstanceID", names(found.getKeyValuePairs()));
}

TEST(Statistics, UDPCountersAreFoundByTheirColumns) {
    HostTree tree;
    const CIMInstance found = onlyInstance(providerOf("QAV_UDPStatisticalData", withCounters(tree).host()));
    EXPECT_EQ("InstanceID InDatagrams NoPorts InErrors OutDatagrams", names(found.getProperties()));
    EXPECT_EQ("UDP 400 401 402 403", values(found));
}

TEST(Statistics, IPCountersAreFoundByTheirColumnsAndRoutingDiscardsAreNull) {
    HostTree tree;
    const CIMInstance found = onlyInstance(providerOf("QAV_IPStatisticalData", withCounters(tree).host()));
    EXPECT_EQ("InstanceID InReceives InHdrErrors InAddrErrors InForwDatagrams InUnknownProtos InDiscards "
              "InDelivers "
              "OutRequests OutDiscards OutNoRoutes ReassemblyRequired ReassemblyOKs ReassemblyFails FragOKs "
              "FragFails FragCreates RoutingDiscards",
              names(found.getProperties()));
    EXPECT_EQ("IP 102 103 104 105 106 107 108 109 110 111 113 114 115 116 117 118 (null)", values(found));
}

TEST(Statistics, ICMPCountersAreFoundByTheirColumns) {
    HostTree tree;
    const CIMInstance found = onlyInstance(providerOf("QAV_ICMPStatisticalData", withCounters(tree).host()));
    EXPECT_EQ(
        "InstanceID InMsgs InErrors InDestUnreachs InTimeExcds InParmProbs InSrcQuenchs InRedirects InEchos "
        "InEchoReps InTimestamps InTimestampReps InAddrMasks InAddrMaskReps OutMsgs OutErrors "
        "OutDestUnreachs OutTimeExcds OutParmProbs OutSrcQuenchs OutRedirects OutEchos OutEchoReps "
        "OutTimestamps OutTimestampReps OutAddrMasks OutAddrMaskReps",
        names(found.getProperties()));
    EXPECT_EQ("ICMP 200 201 203 204 205 206 207 208 209 210 211 212 213 214 215 216 217 218 219 220 221 222 "
              "223 224 "
              "225 226",
              values(found));
}

TEST(Statistics, CountersAreOf64BitsAndTheGaugeOf32) {
    HostTree tree;
    tree.write("/proc/net/snmp", "Tcp: CurrEstab InSegs\nTcp: 4294967295 18446744073709551615\n");
    const CIMInstance found = onlyInstance(providerOf("QAV_TCPStatisticalData", tree.host()));
    EXPECT_EQ(CIMDataType::UINT32, found.getProperty("CurrEstab").getDataType().getType());
    EXPECT_EQ(CIMDataType::UINT64, found.getProperty("InSegs").getDataType().getType());
    EXPECT_EQ("4294967295", text(found, "CurrEstab"));
    EXPECT_EQ("18446744073709551615", text(found, "InSegs"));
}

TEST(Statistics, WithoutTheFileAllCountersAreNull) {
    HostTree tree;
    EXPECT_EQ("UDP (null) (null) (null) (null)",
              values(onlyInstance(providerOf("QAV_UDPStatisticalData", tree.host()))));
}

TEST(Statistics, AColumnThatTheKernelDoesNotHaveIsNull) {
    HostTree tree;
    tree.write("/proc/net/snmp", "Udp: OutDatagrams InDatagrams\nUdp: 7 8\n");
    EXPECT_EQ("UDP 8 (null) (null) 7",
              values(onlyInstance(providerOf("QAV_UDPStatisticalData", tree.host()))));
}

TEST(Statistics, MalformedLinesAreSkipped) {
    HostTree tree;
    tree.write("/proc/net/snmp",
               "\nUdp: alone\nTcp:\nrubbish\nUdp: InDatagrams NoPorts InErrors\nUdp: 7 x\n");
    EXPECT_EQ("UDP 7 (null) (null) (null)",
              values(onlyInstance(providerOf("QAV_UDPStatisticalData", tree.host()))));
}
