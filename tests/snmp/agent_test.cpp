// The whole way: object manager, subagent and net-snmp's master, asked by net-snmp's commands.
#include "snmp/SnmpAgent.hpp"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <set>
#include <sstream>
#include <thread>

using namespace support;
using namespace snmp_test;

namespace {

const std::string mib2Prefix = ".1.3.6.1.2.1.";
const std::string contact = "1.4.0";
const std::string location = "1.6.0";

/** Hardware that a virtual machine may not have. */
const char* const siteFile = R"({
"QAV_K70Chassis": [{"CreationClassName": "QAV_K70Chassis", "Tag": "Chassis", "_INDEX": 1, "Model": "Server 9",
                    "SerialNumber": "S1", "_CONTAINED_IN": 0}],
"QAV_K70ExpansionChassis": [{"CreationClassName": "QAV_K70ExpansionChassis", "Tag": "shelf-2", "_INDEX": 2,
                             "Manufacturer": "Maker", "PartNumber": "K70"}],
"QAV_XRULogicalModule": [{"CreationClassName": "QAV_XRULogicalModule", "DeviceID": "slot-7", "_INDEX": 7,
                          "PhysicalType": 9, "_CONTAINED_IN": 1, "Manufacturer": "Maker", "PartNumber": "M7"}],
"QAV_DiskPartition": [{"CreationClassName": "QAV_DiskPartition", "DeviceID": "sdz1", "Index": 1,
                         "HR_DEVICE_INDEX": 999999, "Label": "data", "Size": 4096}],
"QAV_MediaAccessDevice": [{"CreationClassName": "QAV_MediaAccessDevice", "DeviceID": "sdz", "Capabilities": [3, 4],
                           "StorageType": 3, "MaxMediaSize": 8192, "_HR_DEVICE_INDEX": 999999}],
"QAV_TCPProtocolEndpoint": [{"CreationClassName": "QAV_TCPProtocolEndpoint", "Name": "connection", "ConnectionState": 5,
                             "LocalAddress": "192.0.2.1", "LocalPort": 161, "RemoteAddress": "192.0.2.9",
                             "RemotePort": 40000}]
})";

class SnmpAgentTest : public SnmpAgent {
protected:
    void startWithSite(const std::vector<std::string>& options = {}) {
        site.write("parts.json", siteFile);
        start({"--instances", site.path()}, options);
    }
    /** Rows of snmptable, without its two lines of headings. */
    std::vector<std::string> rowsOf(const std::string& table) const {
        const ProgramResult printed = snmpd->table(v2c("owb"), {table});
        EXPECT_EQ(0, printed.exitCode) << printed.err;
        std::istringstream in(printed.out);
        std::vector<std::string> rows;
        for (std::string line; std::getline(in, line);) {
            if (!line.empty())
                rows.push_back(line);
        }
        if (rows.size() < 2)
            return {};
        return {rows.begin() + 2, rows.end()};
    }
    bool isAnswering(const std::string& context, const std::string& oid) const {
        const ProgramResult got =
            snmpd->run("snmpget", v2c(context), {"-t", "1", "-r", "0", mib2Prefix + oid});
        return got.exitCode == 0 && got.out.find("No Such") == std::string::npos;
    }

    TempDir site;
};

bool hasRow(const std::vector<std::string>& rows, const std::string& part) {
    return std::any_of(rows.begin(), rows.end(),
                       [&part](const std::string& row) { return row.find(part) != std::string::npos; });
}

} // namespace

TEST_F(SnmpAgentTest, WalksOfTheWholeTreeAscendAndHaveTheSameColumns) {
    startWithSite();
    const auto columnsOf = [](const Values& values) {
        std::set<Below> columns; // processes and connections come and go
        for (const auto& [oid, value] : values)
            columns.insert(oid[0] == 25 && oid[1] > 3 && oid[1] < 6 ? Below(oid.begin(), oid.begin() + 5)
                                                                    : Below{oid[0]});
        return columns;
    };
    const Values bulk = walk("owb");
    EXPECT_LT(300u, bulk.size());
    EXPECT_EQ(columnsOf(bulk), columnsOf(walk("owb", "snmpwalk")));
    const ProgramResult v3Walk = snmpd->run("snmpbulkwalk", v3("owb"), {mib2Prefix + "25.2"});
    EXPECT_EQ(0, v3Walk.exitCode) << v3Walk.err;
    EXPECT_LT(3u, objectsIn(v3Walk.out).size());
}

TEST_F(SnmpAgentTest, EachTableIsPrinted) {
    startWithSite();
    const std::map<std::string, std::string> partsOfRows{
        {"ifTable", "1|lo|softwareLoopback|"},
        {"ifXTable", "lo|"},
        {"ipSystemStatsTable", "|"},
        {"icmpStatsTable", "|"},
        {"tcpConnTable", "established|192.0.2.1|161|192.0.2.9|40000"},
        {"tcpConnectionTable", "established|0"},
        {"tcpListenerTable", "0"},
        {"hrStorageTable", "|STANDARD-MIBS::hrStorageRam|"},
        {"hrDeviceTable", "|STANDARD-MIBS::hrDeviceProcessor|"},
        {"hrNetworkTable", "1"},
        {"hrDiskStorageTable", "readWrite|hardDisk|false|8192"},
        {"hrPartitionTable", "1|\"data\"|"},
        {"hrFSTable", "|\"/\"|"},
        {"hrSWRunTable", "|\"owbcimomd\"|ccitt.0|"},
        {"hrSWRunPerfTable", "|"},
        {"hrSWInstalledTable", "|ccitt.0|"},
        {"entPhysicalTable", "|slot-7|"},
        {"entPhysicalContainsTable", "7"}};
    for (const auto& [table, part] : partsOfRows)
        EXPECT_TRUE(hasRow(rowsOf(table), part)) << table << "\n" << snmpd->table(v2c("owb"), {table}).out;
}

TEST_F(SnmpAgentTest, PhysicalPartsAreBelowTheirChassis) {
    startWithSite();
    EXPECT_EQ("STRING: \"Server 9\"", get("47.1.1.1.1.2.1"));
    EXPECT_EQ("INTEGER: 0", get("47.1.1.1.1.4.1"));
    EXPECT_EQ("INTEGER: 3", get("47.1.1.1.1.5.1"));
    EXPECT_EQ("STRING: \"S1\"", get("47.1.1.1.1.11.1"));
    EXPECT_EQ("STRING: \"Maker K70\"", get("47.1.1.1.1.2.2"));
    EXPECT_EQ("STRING: \"Maker M7\"", get("47.1.1.1.1.2.7"));
    EXPECT_EQ("INTEGER: 1", get("47.1.1.1.1.4.7"));
    EXPECT_EQ("INTEGER: 7", get("47.1.3.3.1.1.1.7"));
}

TEST_F(SnmpAgentTest, EachObjectThatExistsOnceHasItsType) {
    startWithSite();
    // Not of every host: a kernel without a command line or a boot device (25.1.3, 25.1.4), no log of users
    // (25.1.5).
    const std::map<std::string, std::vector<std::string>> objects{
        {"STRING: ", {"1.1.0", "1.5.0"}},
        {"OID: .0.0", {"1.2.0"}},
        {"INTEGER: ",
         {"1.7.0", "2.1.0", "4.1.0", "4.2.0", "4.13.0", "6.1.0", "6.2.0", "6.3.0", "6.4.0", "25.1.7.0",
          "25.2.2.0"}},
        {"Counter32: ",
         {"4.3.0",  "4.4.0",  "4.5.0",  "4.6.0",  "4.7.0",  "4.8.0",  "4.9.0",  "4.10.0", "4.11.0", "4.12.0",
          "4.14.0", "4.15.0", "4.16.0", "4.17.0", "4.18.0", "4.19.0", "5.1.0",  "5.2.0",  "5.3.0",  "5.4.0",
          "5.5.0",  "5.6.0",  "5.7.0",  "5.8.0",  "5.9.0",  "5.10.0", "5.11.0", "5.12.0", "5.13.0", "5.14.0",
          "5.15.0", "5.16.0", "5.17.0", "5.18.0", "5.19.0", "5.20.0", "5.21.0", "5.22.0", "5.23.0", "5.24.0",
          "5.25.0", "5.26.0", "6.5.0",  "6.6.0",  "6.7.0",  "6.8.0",  "6.10.0", "6.11.0", "6.12.0", "6.14.0",
          "6.15.0", "7.1.0",  "7.2.0",  "7.3.0",  "7.4.0"}},
        {"Counter64: ", {"6.17.0", "6.18.0", "7.8.0", "7.9.0"}},
        {"Gauge32: ", {"6.9.0", "25.1.6.0"}},
        {"Timeticks: ", {"25.1.1.0", "25.6.1.0", "25.6.2.0", "47.1.4.1.0"}},
        {"Hex-STRING: ", {"25.1.2.0"}}};
    for (const auto& [type, oids] : objects) {
        for (const std::string& oid : oids)
            EXPECT_EQ(0u, get(oid).find(type)) << oid << " = " << get(oid);
    }
}

TEST_F(SnmpAgentTest, WritesContactAndLocation) {
    startWithSite();
    EXPECT_EQ(0, set({mib2Prefix + contact, "s", "ops@example.net"}).exitCode);
    EXPECT_EQ("STRING: \"ops@example.net\"", get(contact));
    const ProgramResult both =
        snmpd->run("snmpset", v3("owb"),
                   {mib2Prefix + contact, "s", "night shift", mib2Prefix + location, "s", "rack 4"});
    EXPECT_EQ(0, both.exitCode) << both.err;
    EXPECT_EQ("STRING: \"night shift\"", get(contact));
    EXPECT_EQ("STRING: \"rack 4\"", get(location));
}

TEST_F(SnmpAgentTest, WritesNeitherOfTwoValuesIfOneIsBad) {
    startWithSite();
    ASSERT_EQ(0, set({mib2Prefix + contact, "s", "before", mib2Prefix + location, "s", "before"}).exitCode);
    const std::vector<std::pair<std::vector<std::string>, std::string>> bad{
        {{mib2Prefix + location, "s", std::string(256, 'x')}, "wrongLength"},
        {{mib2Prefix + location, "i", "1"}, "wrongType"},
        {{mib2Prefix + location, "x", "FF"}, "wrongValue"},
        {{mib2Prefix + "1.5.0", "s", "name"}, "notWritable"},
        {{mib2Prefix + "25.4.2.1.7.1", "i", "4"}, "notWritable"},
        {{mib2Prefix + "47.1.1.1.1.14.99", "s", "alias"}, "noCreation"}};
    for (const auto& [arguments, error] : bad) {
        std::vector<std::string> two{mib2Prefix + contact, "s", "after"};
        two.insert(two.end(), arguments.begin(), arguments.end());
        const ProgramResult result = set(two);
        EXPECT_NE(std::string::npos, result.err.find(error)) << error << ": " << result.err;
        EXPECT_EQ("STRING: \"before\"", get(contact)) << error;
        EXPECT_EQ("STRING: \"before\"", get(location)) << error;
    }
}

TEST_F(SnmpAgentTest, AReadOnlySubagentRefusesSets) {
    startWithSite({"--read-only"});
    const ProgramResult result = set({mib2Prefix + contact, "s", "x"});
    EXPECT_NE(std::string::npos, result.err.find("notWritable")) << result.err;
    EXPECT_EQ("\"\"", get(contact));
}

TEST_F(SnmpAgentTest, ReplacesTablesOfTheDefaultContext) {
    startWithSite({"--context", ""});
    EXPECT_EQ("STRING: \"Maker M7\"", get("47.1.1.1.1.2.7", ""));
    EXPECT_EQ("INTEGER: 4", get("2.2.1.8.1", "")) << "snmpd says that lo is up";
    EXPECT_EQ(0u, get("1.3.0", "").find("Timeticks: ")) << "sysUpTime stays with the master";
    EXPECT_EQ(0, snmpd->run("snmpset", v2c(""), {mib2Prefix + contact, "s", "ops"}).exitCode);
    EXPECT_EQ("STRING: \"ops\"", get(contact, ""));
    const Values all = walk("");
    EXPECT_EQ(1u, all.count(below("47.1.1.1.1.2.7")));
    EXPECT_EQ(1u, all.count(below("1.3.0")));
}

TEST_F(SnmpAgentTest, WalksNeverTimeOutWhileTheObjectManagerHangs) {
    startWithSite({"--counters-age", "1", "--tables-age", "1", "--packages-age", "1"});
    const Values before = walk("owb");
    manager->daemon().signal(SIGSTOP);
    std::this_thread::sleep_for(std::chrono::milliseconds(1100));
    for (const char* const command : {"snmpbulkwalk", "snmpwalk"}) {
        const auto start = std::chrono::steady_clock::now();
        const ProgramResult walked = snmpd->run(command, v2c("owb"), {"-t", "1", "-r", "0", ".1.3.6.1.2.1"});
        EXPECT_EQ(0, walked.exitCode) << walked.err;
        // One wait for each subject, not one for each step, which would be minutes.
        EXPECT_GT(std::chrono::seconds(30), std::chrono::steady_clock::now() - start) << command;
        EXPECT_LT(before.size() / 2, objectsIn(walked.out).size()) << command;
    }
    manager->daemon().signal(SIGCONT);
}

TEST_F(SnmpAgentTest, AllComeBackAfterKillsInAnyOrder) {
    startWithSite({"--counters-age", "1"});
    std::vector<int> order{0, 1, 2};
    do {
        for (const int which : order) {
            if (which == 0)
                manager->end(SIGKILL);
            else if (which == 1)
                snmpd->kill();
            else {
                subagent->signal(SIGKILL);
                subagent->wait();
            }
        }
        for (const int which : order) {
            if (which == 0)
                manager->start();
            else if (which == 1)
                snmpd->start();
            else
                startSubagent();
        }
        EXPECT_TRUE(hasValue("owb", "1.7.0")) << order[0] << order[1] << order[2];
    } while (std::next_permutation(order.begin(), order.end()));
}

TEST_F(SnmpAgentTest, TheOthersLiveWhenOneIsKilled) {
    startWithSite({"--counters-age", "1"});
    manager->end(SIGKILL);
    EXPECT_TRUE(isAnswering("owb", "1.7.0")) << "old values serve";
    manager->start();
    ASSERT_EQ(0, set({mib2Prefix + contact, "s", "back"}).exitCode);

    subagent->signal(SIGKILL);
    subagent->wait();
    EXPECT_TRUE(isAnswering("", "1.3.0")) << "the master lives";
    startSubagent();
    EXPECT_TRUE(hasValue("owb", "1.7.0"));

    snmpd->kill();
    snmpd->start();
    EXPECT_TRUE(hasValue("owb", "1.7.0"));
    EXPECT_EQ("STRING: \"back\"", get(contact));
}
