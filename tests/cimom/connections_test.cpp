#include "HostTree.hpp"
#include "host/InternetProtocols.hpp"

#include <gtest/gtest.h>

using namespace cimom;

namespace {

const std::string header =
    "  sl  local_address rem_address   st tx_queue rx_queue tr tm->when retrnsmt   uid  "
    "timeout inode\n";

std::string line(const std::string& local, const std::string& remote, const std::string& state,
                 unsigned inode) {
    return "   0: " + local + " " + remote + " " + state +
           " 00000000:00000000 00:00000000 00000000     0        0 " + std::to_string(inode) +
           " 1 00000000be348a3d 100 0 0 10 0\n";
}

std::vector<std::string> namesIn(const HostTree& tree) {
    std::vector<std::string> found;
    for (const TCPConnection& connection : tcpConnections(tree.host()))
        found.push_back(connection.name);
    return found;
}

using Names = std::vector<std::string>;

} // namespace

TEST(TCPConnections, TheKernelsStatesBecomeThoseOfTheMIB) {
    const std::pair<const char*, unsigned> states[] = {{"01", 5}, {"02", 3},  {"03", 4},  {"04", 6},
                                                       {"05", 7}, {"06", 11}, {"07", 1},  {"08", 8},
                                                       {"09", 9}, {"0A", 2},  {"0B", 10}, {"0C", 4}};
    for (const auto& [kernel, mib] : states) {
        HostTree tree;
        tree.write("/proc/net/tcp", header + line("0100007F:0050", "0100007F:0051", kernel, 1));
        const std::vector<TCPConnection> found = tcpConnections(tree.host());
        ASSERT_EQ(1u, found.size()) << kernel;
        EXPECT_EQ(mib, found[0].state) << kernel;
    }
}

TEST(TCPConnections, IPv6AddressesAreInBracketsInTheName) {
    HostTree tree;
    tree.write("/proc/net/tcp6", header + line("00000000000000000000000001000000:0016",
                                               "B80D01200000000000000000EFBE0000:FFFF", "01", 1));
    const std::vector<TCPConnection> found = tcpConnections(tree.host());
    ASSERT_EQ(1u, found.size());
    EXPECT_EQ("[::1]:22-[2001:db8::beef]:65535", found[0].name);
    EXPECT_EQ("::1", found[0].local.address);
    EXPECT_EQ("2001:db8::beef", found[0].remote.address);
    EXPECT_EQ(65535u, found[0].remote.port);
}

TEST(TCPConnections, AnIPv4AddressOnAnIPv6SocketIsNotTheIPv4Connection) {
    HostTree tree;
    tree.write("/proc/net/tcp", header + line("0100007F:0050", "0100007F:0051", "01", 1));
    tree.write("/proc/net/tcp6", header + line("0000000000000000FFFF00000100007F:0050",
                                               "0000000000000000FFFF00000100007F:0051", "01", 2));
    EXPECT_EQ((Names{"127.0.0.1:80-127.0.0.1:81", "[::ffff:127.0.0.1]:80-[::ffff:127.0.0.1]:81"}),
              namesIn(tree));
}

TEST(TCPConnections, SocketsThatShareBothEndsAreDistinguishedByTheirInodes) {
    HostTree tree;
    tree.write("/proc/net/tcp", header + line("00000000:0050", "00000000:0000", "0A", 11) +
                                    line("00000000:0051", "00000000:0000", "0A", 12) +
                                    line("00000000:0050", "00000000:0000", "0A", 13));
    EXPECT_EQ((Names{"0.0.0.0:80-0.0.0.0:0#11", "0.0.0.0:81-0.0.0.0:0", "0.0.0.0:80-0.0.0.0:0#13"}),
              namesIn(tree));
}

TEST(TCPConnections, AConnectionThatIsListedTwiceIsReportedOnce) {
    HostTree tree;
    tree.write("/proc/net/tcp", header + line("0100007F:0050", "0100007F:0051", "01", 11) +
                                    line("0100007F:0050", "0100007F:0051", "08", 11));
    const std::vector<TCPConnection> found = tcpConnections(tree.host());
    ASSERT_EQ(1u, found.size());
    EXPECT_EQ(5u, found[0].state);
}

TEST(TCPConnections, AConnectionThatLosesItsSocketDuringTheReadIsReportedOnce) {
    const std::string withSocket = line("0100007F:0050", "0100007F:0051", "01", 777);
    const std::string without = line("0100007F:0050", "0100007F:0051", "06", 0);
    for (const std::string& both : {withSocket + without, without + withSocket}) {
        HostTree tree;
        tree.write("/proc/net/tcp", header + both);
        const std::vector<TCPConnection> found = tcpConnections(tree.host());
        ASSERT_EQ(1u, found.size());
        EXPECT_EQ("127.0.0.1:80-127.0.0.1:81", found[0].name);
        EXPECT_EQ(5u, found[0].state);
    }
}

TEST(TCPConnections, ConnectionsWithoutSocketsAreReportedOnceEach) {
    HostTree tree;
    const std::string timeWait = line("0100007F:0050", "0100007F:0051", "06", 0);
    tree.write("/proc/net/tcp",
               header + timeWait + line("0100007F:0050", "0100007F:0052", "06", 0) + timeWait);
    EXPECT_EQ((Names{"127.0.0.1:80-127.0.0.1:81", "127.0.0.1:80-127.0.0.1:82"}), namesIn(tree));
}

TEST(TCPConnections, InodesBeyond32BitsAreKept) {
    HostTree tree;
    const std::string shared = line("00000000:0050", "00000000:0000", "0A", 11);
    std::string large = shared;
    large.replace(large.find(" 11 "), 4, " 4294967307 ");
    tree.write("/proc/net/tcp", header + shared + large);
    EXPECT_EQ((Names{"0.0.0.0:80-0.0.0.0:0#11", "0.0.0.0:80-0.0.0.0:0#4294967307"}), namesIn(tree));
}

TEST(TCPConnections, MalformedLinesAreSkipped) {
    HostTree tree;
    const std::string good = line("0100007F:0050", "0100007F:0051", "01", 1);
    tree.write("/proc/net/tcp", header + "\n" + good.substr(0, 40) + "\n" +
                                    line("0100007F", "0100007F:0051", "01", 2) +
                                    line("0100007G:0050", "0100007F:0051", "01", 3) +
                                    line("0100007F:10050", "0100007F:0051", "01", 4) +
                                    line("0100007F:0050", "0100007F:0051", "00", 5) +
                                    line("0100007F:0050", "0100007F:0051", "0D", 6) +
                                    line("0100007F:0050", "0100007F:0051", "zz", 7) + good);
    EXPECT_EQ((Names{"127.0.0.1:80-127.0.0.1:81"}), namesIn(tree));
}

TEST(TCPConnections, WithoutTheFilesThereAreNoConnections) {
    HostTree tree;
    EXPECT_TRUE(tcpConnections(tree.host()).empty());
}
