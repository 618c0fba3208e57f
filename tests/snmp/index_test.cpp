// How rows are named, and which rows a table has.
#include "snmp/Readings.hpp"

using namespace snmp;
using namespace snmp_test;

namespace {

Items connection(const char* state, const char* local, const char* port, const char* remote,
                 const char* remotePort) {
    return {{0, state}, {1, local}, {2, port}, {3, remote}, {4, remotePort}};
}

} // namespace

TEST(Index, AConnectionOfTheOldTableIsNamedByAddressesAndPorts) {
    const Readings read = readings(reading(7, {connection("5", "192.0.2.1", "22", "192.0.2.9", "50000")}));
    EXPECT_EQ(indexesIn(read, "6.13.1"), "192.0.2.1.22.192.0.2.9.50000");
    EXPECT_EQ(valueIn(read, "6.13.1.1.192.0.2.1.22.192.0.2.9.50000"), "5");
}

TEST(Index, TheOldTableOfConnectionsHasNoIpv6) {
    EXPECT_EQ(indexesIn(readings(reading(7, {connection("5", "2001:db8::1", "22", "2001:db8::2", "50000")})),
                        "6.13.1"),
              "");
}

TEST(Index, AConnectionIsNamedByTypesLengthsAddressesAndPorts) {
    EXPECT_EQ(
        indexesIn(readings(reading(7, {connection("5", "192.0.2.1", "22", "192.0.2.9", "50000")})), "6.19.1"),
        "1.4.192.0.2.1.22.1.4.192.0.2.9.50000");
    EXPECT_EQ(
        indexesIn(readings(reading(7, {connection("5", "2001:db8::1", "22", "::1", "50000")})), "6.19.1"),
        "2.16.32.1.13.184.0.0.0.0.0.0.0.0.0.0.0.1.22.2.16.0.0.0.0.0.0.0.0.0.0.0.0.0.0.0.1.50000");
}

TEST(Index, AListenerIsNotAConnectionAndIsNamedByItsOwnEnd) {
    const Readings read = readings(reading(7, {connection("2", "0.0.0.0", "22", "0.0.0.0", "0")}));
    EXPECT_EQ(indexesIn(read, "6.19.1"), "");
    EXPECT_EQ(indexesIn(read, "6.20.1"), "1.4.0.0.0.0.22");
    EXPECT_EQ(valueIn(read, "6.20.1.4.1.4.0.0.0.0.22"), "0");
}

TEST(Index, OfEqualListenersOneIsServed) {
    const Items listener = connection("2", "0.0.0.0", "53", "0.0.0.0", "0");
    EXPECT_EQ(indexesIn(readings(reading(7, {listener, listener, listener})), "6.20.1"), "1.4.0.0.0.0.53");
}

TEST(Index, ARowWithoutANameIsLeftOut) {
    EXPECT_EQ(
        indexesIn(readings(reading(16, {{{2, "3"}}, {{1, "unnamed"}}, {{2, "x"}}, {{2, "1"}}})), "25.4.2.1"),
        "1 3");
    EXPECT_EQ(
        indexesIn(readings(reading(7, {connection("5", "nowhere", "22", "192.0.2.9", "50000")})), "6.19.1"),
        "");
    EXPECT_EQ(indexesIn(readings(reading(16, {{{2, "4294967296"}}})), "25.4.2.1"), "");
}

TEST(Index, RowsAreSortedByNumberAndNotByText) {
    EXPECT_EQ(indexesIn(readings(reading(16, {{{2, "10"}}, {{2, "9"}}, {{2, "100"}}})), "25.4.2.1"),
              "9 10 100");
}

TEST(Index, APartitionIsNamedByItsDiskAndItsNumber) {
    EXPECT_EQ(indexesIn(readings(reading(19, {{{5, "393220"}, {0, "2"}}})), "25.3.7.1"), "393220.2");
}

TEST(Index, PackagesAreNumberedByTheirSortedNames) {
    EXPECT_EQ(indexesIn(readings(reading(15, {{{1, "c"}}, {{1, "a"}}, {{1, "b"}}})), "25.6.3.1"), "1 2 3");
}

TEST(Index, ThePartsOfAnEnclosureAreNamedByBoth) {
    const Readings read = readings(reading(0, {{{0, "1"}, {19, "0"}}}), reading(26, {{{0, "2"}}}),
                                   reading(27, {{{0, "70"}, {19, "1"}}}));
    EXPECT_EQ(indexesIn(read, "47.1.1.1.1"), "1 2 70");
    EXPECT_EQ(indexesIn(read, "47.1.3.3.1"), "1.70");
    EXPECT_EQ(valueIn(read, "47.1.3.3.1.1.1.70"), "70");
}

TEST(Index, StatisticsOfIpHaveTheIndexOfVersion4) {
    EXPECT_EQ(valueIn(readings(reading(13, {{{2, "4294967297"}}})), "4.31.1.1.3.1"), "1");
    EXPECT_EQ(valueIn(readings(reading(13, {{{2, "4294967297"}}})), "4.31.1.1.4.1"), "4294967297");
}
