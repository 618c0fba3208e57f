// A real object manager on a real socket, read through the library and compared with the kernel's files. The
// test reads values that change before and after: the library's value must lie between.
#include "owb.h"

#include "ServedGroups.hpp"
#include "TraceLog.hpp"

#include <arpa/inet.h>
#include <csignal>
#include <ctime>
#include <dirent.h>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <netinet/in.h>
#include <sstream>
#include <string>
#include <sys/socket.h>
#include <unistd.h>

namespace {

using Columns = std::map<std::string, long long>;

Row onlyRowOf(long group) {
    const std::vector<Row> rows = rowsOf(group);
    EXPECT_EQ(1U, rows.size()) << group;
    return rows.empty() ? Row() : rows.front();
}

// The two lines of a protocol in /proc/net/snmp, by column.
Columns snmp(const std::string& protocol) {
    std::ifstream in("/proc/net/snmp");
    std::string names;
    for (std::string line; std::getline(in, line);) {
        if (line.compare(0, protocol.size() + 1, protocol + ":") != 0)
            continue;
        if (names.empty()) {
            names = line;
            continue;
        }
        Columns columns;
        std::istringstream name(names);
        std::istringstream value(line);
        std::string column;
        std::string number;
        for (name >> column, value >> number; name >> column && value >> number;)
            columns[column] = std::stoll(number);
        return columns;
    }
    return Columns();
}

class EndToEnd : public ServedGroups {
protected:
    // Compares every property of a group of counters with the column of the same name; exceptions map a
    // property to another column.
    void expectCounters(long group, const std::string& protocol,
                        const std::map<std::string, std::string>& exceptions, std::size_t expected) {
        run([&] {
            const Columns before = snmp(protocol);
            const Row row = onlyRowOf(group);
            const Columns after = snmp(protocol);
            EXPECT_EQ(expected, row.size());
            for (const auto& [property, text] : row) {
                const auto exception = exceptions.find(property);
                const std::string column = exception == exceptions.end() ? property : exception->second;
                ASSERT_EQ(1U, before.count(column)) << column;
                EXPECT_LE(before.at(column), std::stoll(text)) << property;
                EXPECT_GE(after.at(column), std::stoll(text)) << property;
            }
        });
    }
};

TEST_F(EndToEnd, IpCounters) {
    expectCounters(13, "Ip",
                   {{"InForwDatagrams", "ForwDatagrams"},
                    {"ReassemblyRequired", "ReasmReqds"},
                    {"ReassemblyOKs", "ReasmOKs"},
                    {"ReassemblyFails", "ReasmFails"}},
                   16); // all of the group but RoutingDiscards, which Linux does not count
}

TEST_F(EndToEnd, IcmpCounters) {
    expectCounters(11, "Icmp", {}, 26);
}

TEST_F(EndToEnd, UdpCounters) {
    expectCounters(14, "Udp", {}, 4);
}

TEST_F(EndToEnd, TcpCounters) {
    run([] {
        const Columns before = snmp("Tcp");
        Row row = onlyRowOf(6);
        const Columns after = snmp("Tcp");
        EXPECT_EQ(10U, row.size());
        row.erase("CurrEstab"); // a gauge: it may go down again
        for (const auto& [property, text] : row) {
            EXPECT_LE(before.at(property), std::stoll(text)) << property;
            EXPECT_GE(after.at(property), std::stoll(text)) << property;
        }
    });
}

// Repeats a read of a changing value until it equals the values read directly before and after.
void expectSettles(const std::function<std::string()>& directly,
                   const std::function<std::string()>& throughLibrary) {
    std::string seen;
    for (int attempt = 0; attempt < 200; ++attempt) {
        const std::string before = directly();
        const std::string value = throughLibrary();
        if (before == value && directly() == value)
            return;
        seen += " " + before + "/" + value;
    }
    FAIL() << "never the same:" << seen;
}

TEST_F(EndToEnd, TcpConnectionsUp) {
    run([] {
        expectSettles([] { return std::to_string(snmp("Tcp").at("CurrEstab")); },
                      [] { return onlyRowOf(6)["CurrEstab"]; });
    });
}

TEST_F(EndToEnd, TcpSettings) {
    run([] {
        const Columns tcp = snmp("Tcp");
        Row row = onlyRowOf(5);
        EXPECT_EQ((Row{{"TimeoutAlgorithm", std::to_string(tcp.at("RtoAlgorithm"))},
                       {"TimeoutMin", std::to_string(tcp.at("RtoMin"))},
                       {"TimeoutMax", std::to_string(tcp.at("RtoMax"))},
                       {"MaxConnections", std::to_string(tcp.at("MaxConn"))}}),
                  row);
    });
}

TEST_F(EndToEnd, IpSettings) {
    run([] {
        EXPECT_EQ((Row{{"Forwarding", std::to_string(snmp("Ip").at("Forwarding"))},
                       {"DefaultTTL", std::to_string(snmp("Ip").at("DefaultTTL"))},
                       {"ReassemblyTimeout", firstLine("/proc/sys/net/ipv4/ipfrag_time")}}),
                  onlyRowOf(12));
    });
}

// A socket on the loopback address of a family, its port chosen by the kernel.
int listenOnLoopback(int family, std::uint16_t& port) {
    const int listener = ::socket(family, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_storage storage{};
    auto* const v4 = reinterpret_cast<sockaddr_in*>(&storage);
    auto* const v6 = reinterpret_cast<sockaddr_in6*>(&storage);
    storage.ss_family = static_cast<sa_family_t>(family);
    if (family == AF_INET)
        v4->sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    else
        v6->sin6_addr = in6addr_loopback;
    auto* const address = reinterpret_cast<sockaddr*>(&storage);
    socklen_t size = family == AF_INET ? sizeof *v4 : sizeof *v6;
    if (::bind(listener, address, size) != 0 || ::listen(listener, 1) != 0) {
        ::close(listener);
        return -1;
    }
    ::getsockname(listener, address, &size);
    port = ntohs(family == AF_INET ? v4->sin_port : v6->sin6_port);
    return listener;
}

bool hasRow(const Rows& rows, const Row& wanted) {
    return std::any_of(rows.begin(), rows.end(), [&](const auto& row) { return row.second == wanted; });
}

TEST_F(EndToEnd, TcpConnectionsOfThisTest) {
    run([] {
        std::uint16_t port = 0;
        const int listener = listenOnLoopback(AF_INET, port);
        ASSERT_GE(listener, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        address.sin_port = htons(port);
        const int client = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        ASSERT_EQ(0, ::connect(client, reinterpret_cast<sockaddr*>(&address), sizeof address));
        const int server = ::accept(listener, nullptr, nullptr);
        sockaddr_in own{};
        socklen_t size = sizeof own;
        ::getsockname(client, reinterpret_cast<sockaddr*>(&own), &size);

        const Rows rows = numberedRowsOf(7);
        const std::string here = "127.0.0.1";
        const std::string serverPort = std::to_string(port);
        const std::string clientPort = std::to_string(ntohs(own.sin_port));
        EXPECT_TRUE(hasRow(rows, {{"ConnectionState", "2"}, // listen
                                  {"LocalAddress", here},
                                  {"LocalPort", serverPort},
                                  {"RemoteAddress", "0.0.0.0"},
                                  {"RemotePort", "0"}}));
        EXPECT_TRUE(hasRow(rows, {{"ConnectionState", "5"}, // established
                                  {"LocalAddress", here},
                                  {"LocalPort", clientPort},
                                  {"RemoteAddress", here},
                                  {"RemotePort", serverPort}}));
        EXPECT_TRUE(hasRow(rows, {{"ConnectionState", "5"},
                                  {"LocalAddress", here},
                                  {"LocalPort", serverPort},
                                  {"RemoteAddress", here},
                                  {"RemotePort", clientPort}}));
        EXPECT_EQ(0U, rows.count(0)) << "row 0 has the settings";
        ::close(server);
        ::close(client);
        ::close(listener);
    });
}

TEST_F(EndToEnd, TcpListenerOverIpv6) {
    std::uint16_t port = 0;
    const int listener = listenOnLoopback(AF_INET6, port);
    if (listener < 0)
        GTEST_SKIP() << "no IPv6 on this host";
    run([&] {
        EXPECT_TRUE(hasRow(numberedRowsOf(7), {{"ConnectionState", "2"},
                                               {"LocalAddress", "::1"},
                                               {"LocalPort", std::to_string(port)},
                                               {"RemoteAddress", "::"},
                                               {"RemotePort", "0"}}));
    });
    ::close(listener);
}

std::string processes() {
    DIR* const directory = ::opendir("/proc");
    unsigned count = 0;
    while (const dirent* entry = ::readdir(directory))
        if (std::isdigit(static_cast<unsigned char>(entry->d_name[0])))
            ++count;
    ::closedir(directory);
    return std::to_string(count);
}

// The CIM text of a moment, without its microseconds.
std::string cimSeconds(std::time_t seconds) {
    char text[32];
    tm local{};
    ::localtime_r(&seconds, &local);
    std::strftime(text, sizeof text, "%Y%m%d%H%M%S", &local);
    return text;
}

std::time_t bootTime() {
    std::ifstream in("/proc/stat");
    for (std::string word; in >> word;)
        if (word == "btime") {
            std::time_t seconds = 0;
            in >> seconds;
            return seconds;
        }
    return 0;
}

TEST_F(EndToEnd, OperatingSystem) {
    run([] {
        const std::string before = cimSeconds(std::time(nullptr));
        const Row row = onlyRowOf(4);
        const std::string after = cimSeconds(std::time(nullptr));
        EXPECT_EQ(cimSeconds(bootTime()), row.at("LastBootUpTime").substr(0, 14));
        EXPECT_LE(before, row.at("LocalDateTime").substr(0, 14));
        EXPECT_GE(after, row.at("LocalDateTime").substr(0, 14));
        EXPECT_EQ(25U, row.at("LocalDateTime").size());
        EXPECT_EQ(firstLine("/proc/sys/kernel/pid_max"), row.at("MaxNumberOfProcesses"));
        expectSettles(processes, [] { return onlyRowOf(4)["NumberOfProcesses"]; });

        const Row times = onlyRowOf(17);
        EXPECT_EQ(2U, times.size());
        EXPECT_EQ(row.at("LastBootUpTime"), times.at("LastBootUpTime"));
    });
}

TEST_F(EndToEnd, System) {
    run([] {
        const Row row = onlyRowOf(2);
        const std::string name = firstLine("/proc/sys/kernel/hostname");
        const std::string kernel = "/proc/sys/kernel/";
        EXPECT_EQ(name, row.at("SystemName"));
        EXPECT_EQ(firstLine(kernel + "ostype") + " " + name + " " + firstLine(kernel + "osrelease") + " " +
                      firstLine(kernel + "version"),
                  row.at("Description"));
        const bool forwards = firstLine("/proc/sys/net/ipv4/ip_forward") == "1";
        EXPECT_EQ(forwards ? "76" : "72", row.at("SysServices"));
        EXPECT_EQ(0U, row.count("PrimaryOwnerContact")) << "not written yet";
    });
}

TEST_F(EndToEnd, WhenTheSystemChanged) {
    run([] {
        const Row row = onlyRowOf(1);
        EXPECT_EQ(25U, row.at("LastChangeTime").size());
        EXPECT_GE(cimSeconds(std::time(nullptr)), row.at("LastChangeTime").substr(0, 14));
    });
}

TEST_F(EndToEnd, ARestartCausesNoError) {
    runWithoutTrace([] {
        support::Manager manager;
        OWB_URLSet(manager.url().c_str());
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(1U, rowsOf(4).size());
            EXPECT_EQ(0, manager.end(SIGTERM));
            manager.start();
        }
        EXPECT_EQ(1U, rowsOf(4).size());
    });
}

} // namespace
