// What objects hold whose content is not simply the text of an attribute.
#include "snmp/Readings.hpp"
#include "snmp/mapping/Date.hpp"

using namespace snmp;
using namespace snmp_test;

namespace {

/** An interface with index 4 and the name eth0. */
Readings interface(const Items& more, const Items& counters = {}) {
    Items items{{27, "4"}, {24, "eth0"}};
    items.insert(items.end(), more.begin(), more.end());
    Items statistics{{26, "eth0"}};
    statistics.insert(statistics.end(), counters.begin(), counters.end());
    return readings(reading(9, {items}), reading(10, {{{26, "lo"}, {9, "1"}}, statistics}));
}

Readings storage(const std::string& unit, const std::string& size, const std::string& used) {
    return readings(reading(3, {{{8, "7"}, {3, unit}, {4, size}, {5, used}}}));
}

Readings process(const Items& more, const Items& statistics = {}) {
    Items items{{2, "17"}};
    items.insert(items.end(), more.begin(), more.end());
    Items counted{{12, "17"}};
    counted.insert(counted.end(), statistics.begin(), statistics.end());
    return readings(reading(16, {items}), reading(22, {counted}));
}

} // namespace

TEST(Content, StatusOfAnInterfaceIsTranslated) {
    const std::vector<std::pair<std::string, std::string>> operational = {
        {"2", "1"}, {"10", "2"}, {"11", "3"}, {"0", "4"}, {"15", "5"}, {"16", "6"}, {"17", "7"}, {"3", "4"}};
    for (const auto& [code, status] : operational)
        EXPECT_EQ(valueIn(interface({{7, code}}), "2.2.1.8.4"), status) << code;
    EXPECT_EQ(valueIn(interface({{6, "2"}}), "2.2.1.7.4"), "1");
    EXPECT_EQ(valueIn(interface({{6, "3"}}), "2.2.1.7.4"), "2");
    EXPECT_EQ(valueIn(interface({{6, "9"}}), "2.2.1.7.4"), "absent");
    EXPECT_EQ(valueIn(interface({}), "2.2.1.8.4"), "absent");
}

TEST(Content, AFastInterfaceSaturatesItsSpeedAndHasItInMegabits) {
    EXPECT_EQ(valueIn(interface({{4, "10000000000"}}), "2.2.1.5.4"), "4294967295");
    EXPECT_EQ(valueIn(interface({{4, "10000000000"}}), "31.1.1.1.15.4"), "10000");
    EXPECT_EQ(valueIn(interface({{4, "1544000"}}), "31.1.1.1.15.4"), "2");
    EXPECT_EQ(valueIn(interface({}), "2.2.1.5.4"), "absent");
    EXPECT_EQ(valueIn(interface({}), "31.1.1.1.15.4"), "absent");
}

TEST(Content, CountersOfAnInterfaceComeFromTheGroupWithItsName) {
    const Readings read = interface({}, {{9, "9007199254740993"}, {15, "18446744073709551615"}});
    EXPECT_EQ(valueIn(read, "2.2.1.10.4"), "1");
    EXPECT_EQ(valueIn(read, "31.1.1.1.6.4"), "9007199254740993");
    EXPECT_EQ(valueIn(read, "31.1.1.1.10.4"), "18446744073709551615");
    EXPECT_EQ(valueIn(read, "2.2.1.11.4"), "absent");
}

TEST(Content, AnInterfaceWithoutCountersHasNone) {
    EXPECT_EQ(
        valueIn(readings(reading(9, {{{27, "4"}, {24, "eth9"}}}), reading(10, {{{26, "eth0"}, {9, "5"}}})),
                "2.2.1.10.4"),
        "absent");
}

TEST(Content, TheAliasIsADescriptionOtherThanTheName) {
    EXPECT_EQ(valueIn(interface({{1, "eth0"}}), "31.1.1.1.18.4"), "");
    EXPECT_EQ(valueIn(interface({{1, "uplink"}}), "31.1.1.1.18.4"), "uplink");
    EXPECT_EQ(valueIn(interface({{1, "uplink"}}), "2.2.1.2.4"), "eth0");
}

TEST(Content, AChangeOfAnInterfaceIsInTheTimeOfTheMaster) {
    Context context;
    context.upTime = 6000;
    context.now = hundredthsOf("20260101000100.000000+000").value();
    EXPECT_EQ(valueIn(interface({{8, "20260101000030.500000+000"}}), "2.2.1.9.4", context), "3050");
    EXPECT_EQ(valueIn(interface({{8, "20251231000000.000000+000"}}), "2.2.1.9.4", context), "0");
    EXPECT_EQ(valueIn(interface({{8, "20260101000200.000000+000"}}), "2.2.1.9.4", context), "6000");
    EXPECT_EQ(valueIn(interface({}), "2.2.1.9.4", context), "0");
}

TEST(Content, InterfacesAreCounted) {
    EXPECT_EQ(valueIn(readings(reading(9, {{{27, "1"}}, {{27, "9"}}})), "2.1.0"), "2");
}

TEST(Content, AUnitOfStorageDoublesUntilTheSizesFit) {
    EXPECT_EQ(valueIn(storage("4096", "2147483647", "1"), "25.2.3.1.4.7"), "4096");
    EXPECT_EQ(valueIn(storage("4096", "2147483648", "2147483647"), "25.2.3.1.4.7"), "8192");
    EXPECT_EQ(valueIn(storage("4096", "2147483648", "2147483647"), "25.2.3.1.5.7"), "1073741824");
    EXPECT_EQ(valueIn(storage("4096", "2147483648", "2147483647"), "25.2.3.1.6.7"), "1073741823");
    // 64 PiB
    EXPECT_EQ(valueIn(storage("4096", "17592186044416", "5"), "25.2.3.1.4.7"), "67108864");
    EXPECT_EQ(valueIn(storage("4096", "17592186044416", "5"), "25.2.3.1.5.7"), "1073741824");
}

TEST(Content, AnUnknownUseOfStorageIsAbsentAndNotZero) {
    const Readings read = readings(reading(3, {{{8, "7"}, {3, "4096"}, {4, "100"}}}));
    EXPECT_EQ(valueIn(read, "25.2.3.1.5.7"), "100");
    EXPECT_EQ(valueIn(read, "25.2.3.1.6.7"), "absent");
}

TEST(Content, TheSizeOfMemoryIsThatOfTheStorageOfItsType) {
    EXPECT_EQ(valueIn(readings(reading(3, {{{8, "9"}, {1, "4"}, {3, "1024"}, {4, "5"}},
                                           {{8, "1"}, {1, "2"}, {3, "4096"}, {4, "3000"}}})),
                      "25.2.2.0"),
              "12000");
    EXPECT_EQ(valueIn(storage("1024", "5", "1"), "25.2.2.0"), "absent");
}

TEST(Content, TypesOfStorageAndDevicesAreObjectIdentifiers) {
    EXPECT_EQ(valueIn(readings(reading(3, {{{8, "9"}, {1, "10"}}})), "25.2.3.1.2.9"),
              "1.3.6.1.2.1.25.2.1.10");
    EXPECT_EQ(valueIn(readings(reading(21, {{{0, "5"}, {1, "3"}}})), "25.3.2.1.2.5"), "1.3.6.1.2.1.25.3.1.3");
    EXPECT_EQ(valueIn(readings(reading(21, {{{0, "5"}, {3, "1af4:1000"}}})), "25.3.2.1.4.5"), "0.0");
}

TEST(Content, AFileSystemHasTheTypeOfItsName) {
    const std::vector<std::pair<std::string, std::string>> types = {
        {"ext4", "23"}, {"vfat", "22"}, {"nfs4", "14"}, {"iso9660", "12"}, {"xfs", "11"}, {"tmpfs", "1"}};
    for (const auto& [name, number] : types)
        EXPECT_EQ(valueIn(readings(reading(20, {{{0, "27"}, {3, name}}})), "25.3.8.1.4.27"),
                  "1.3.6.1.2.1.25.3.9." + number);
    EXPECT_EQ(valueIn(readings(reading(20, {{{0, "27"}}})), "25.3.8.1.4.27"), "absent");
}

TEST(Content, AccessToAFileSystemIsReadWriteOrReadOnly) {
    EXPECT_EQ(valueIn(readings(reading(20, {{{0, "27"}, {4, "false"}}})), "25.3.8.1.5.27"), "1");
    EXPECT_EQ(valueIn(readings(reading(20, {{{0, "27"}, {4, "true"}}})), "25.3.8.1.5.27"), "2");
}

TEST(Content, AnUnknownDateOfABackupIsInTheYearZero) {
    const std::string date = valueIn(readings(reading(20, {{{0, "27"}}})), "25.3.8.1.8.27");
    EXPECT_EQ(date, std::string("\0\0\1\1\0\0\0\0", 8));
}

TEST(Content, CapabilitiesOfADiskAreItsAccessAndWhetherItIsRemovable) {
    const auto disk = [](const Items& capabilities) {
        Items items{{4, "393220"}};
        items.insert(items.end(), capabilities.begin(), capabilities.end());
        return readings(reading(18, {items}));
    };
    EXPECT_EQ(valueIn(disk({{0, "3"}, {0, "4"}, {0, "7"}}), "25.3.6.1.1.393220"), "1");
    EXPECT_EQ(valueIn(disk({{0, "3"}, {0, "4"}, {0, "7"}}), "25.3.6.1.3.393220"), "1");
    EXPECT_EQ(valueIn(disk({{0, "3"}}), "25.3.6.1.1.393220"), "2");
    EXPECT_EQ(valueIn(disk({{0, "3"}}), "25.3.6.1.3.393220"), "2");
    EXPECT_EQ(valueIn(disk({}), "25.3.6.1.1.393220"), "absent");
    EXPECT_EQ(valueIn(disk({{3, "3000000000"}}), "25.3.6.1.4.393220"), "2147483647");
}

TEST(Content, APartitionHasTheFileSystemThatResidesOnIt) {
    const Readings read = readings(
        reading(19, {{{5, "393220"}, {0, "1"}, {6, "vda1"}}, {{5, "393220"}, {0, "2"}, {6, "vda2"}}}),
        reading(20, {{{0, "27"}, {1, "/"}}, {{0, "31"}, {1, "/a \"b\" \\c"}}}),
        reading(
            23,
            {{{0,
               "/root/cimv2:QAV_FileSystem.CreationClassName=\"QAV_FileSystem\",Name=\"/a \\\"b\\\" \\\\c\""},
              {1, "/root/cimv2:QAV_DiskPartition.CreationClassName=\"x\",DeviceID=\"vda2\""}}}));
    EXPECT_EQ(valueIn(read, "25.3.7.1.5.393220.2"), "31");
    EXPECT_EQ(valueIn(read, "25.3.7.1.5.393220.1"), "0");
}

TEST(Content, ArgumentsOfAProcessAreSeparatedByBlanks) {
    EXPECT_EQ(valueIn(process({{4, "-c"}, {4, "a b"}, {4, ""}}), "25.4.2.1.5.17"), "-c a b ");
    EXPECT_EQ(valueIn(process({}), "25.4.2.1.5.17"), "");
    EXPECT_EQ(
        valueIn(process({{4, std::string(100, 'x')}, {4, std::string(100, 'y')}}), "25.4.2.1.5.17").size(),
        128u);
}

TEST(Content, TheStateOfAProcessIsTranslated) {
    const std::vector<std::pair<std::string, std::string>> states = {
        {"0", "3"}, {"2", "2"}, {"3", "1"}, {"4", "3"}, {"5", "3"}, {"6", "3"}, {"7", "4"}};
    for (const auto& [code, status] : states)
        EXPECT_EQ(valueIn(process({{6, code}}), "25.4.2.1.7.17"), status) << code;
}

TEST(Content, ProcessorTimeSaturatesAfter248Days) {
    const auto processorTime = [](const char* interval) {
        return valueIn(process({}, {{7, interval}}), "25.5.1.1.1.17");
    };
    EXPECT_EQ(processorTime("00000000000242.290000:000"), "16229");
    EXPECT_EQ(processorTime("00000248131347.000000:000"), "2147482700"); // 2^31 - 1 is 9.47 s later
    EXPECT_EQ(processorTime("00000248131357.000000:000"), "2147483647");
    EXPECT_EQ(processorTime("00000249000000.000000:000"), "2147483647");
    EXPECT_EQ(processorTime("00000498000000.000000:000"), "2147483647");
    EXPECT_EQ(processorTime("99999999000000.000000:000"), "2147483647");
    EXPECT_EQ(processorTime("unknown"), "absent");
}

TEST(Content, MemoryOfAProcessIsTheSumOfItsParts) {
    EXPECT_EQ(valueIn(process({}, {{9, "1"}, {10, "20"}, {11, "300"}}), "25.5.1.1.2.17"), "321");
    EXPECT_EQ(valueIn(process({}, {{9, "1"}, {10, "20"}}), "25.5.1.1.2.17"), "absent");
    EXPECT_EQ(valueIn(process({}, {{9, "2147483647"}, {10, "1"}, {11, "0"}}), "25.5.1.1.2.17"), "2147483647");
}

TEST(Content, UptimeIsTheTimeSinceTheBoot) {
    const auto uptime = [](const char* boot, const char* now) {
        return valueIn(readings(reading(4, {{{0, boot}, {1, now}}})), "25.1.1.0");
    };
    EXPECT_EQ(uptime("20260101000000.000000+000", "20260101010001.500000+060"), "150");
    EXPECT_EQ(uptime("20380119031407.000000+000", "20380119031408.250000+000"), "125");
    EXPECT_EQ(uptime("20260101000000.000000+000", "20270513022752.960000+000"), "0"); // 2^32 hundredths
    EXPECT_EQ(uptime("20260101000000.000000+000", "20250101000000.000000+000"), "absent");
    EXPECT_EQ(uptime("**************.******+***", "20250101000000.000000+000"), "absent");
}

TEST(Content, TheCommandLineOfTheKernelIsCut) {
    EXPECT_EQ(valueIn(readings(reading(4, {{{3, std::string(300, 'x')}}})), "25.1.4.0").size(), 128u);
}

TEST(Content, APackageOfUnknownTypeAndDateHasTheValuesForThat) {
    const Readings read = readings(reading(15, {{{1, "b-2"}, {3, "8"}}, {{1, "a-1"}}}));
    EXPECT_EQ(valueIn(read, "25.6.3.1.2.1"), "a-1");
    EXPECT_EQ(valueIn(read, "25.6.3.1.4.1"), "1");
    EXPECT_EQ(valueIn(read, "25.6.3.1.5.1"), std::string("\0\0\1\1\0\0\0\0", 8));
    EXPECT_EQ(valueIn(read, "25.6.3.1.4.2"), "2");
    EXPECT_EQ(valueIn(read, "25.6.3.1.3.2"), "0.0");
    EXPECT_EQ(valueIn(read, "25.6.3.1.1.2"), "2");
}

TEST(Content, PhysicalPartsHaveNamesDescriptionsAndClasses) {
    const Readings read = readings(
        reading(0, {{{0, "1"}, {19, "0"}, {1, "Server 9"}, {4, "23"}}}),
        reading(26, {{{0, "2"}, {17, "Shelf"}, {11, "ACME"}, {12, "S-1"}}}),
        reading(27,
                {{{0, "65544"}, {19, "1"}, {18, "pci:0000:00:01.0"}, {4, "9"}, {11, "1af4"}, {15, "true"}}}));
    EXPECT_EQ(valueIn(read, "47.1.1.1.1.2.1"), "Server 9");
    EXPECT_EQ(valueIn(read, "47.1.1.1.1.2.2"), "ACME S-1");
    EXPECT_EQ(valueIn(read, "47.1.1.1.1.2.65544"), "1af4");
    EXPECT_EQ(valueIn(read, "47.1.1.1.1.4.1"), "0");
    EXPECT_EQ(valueIn(read, "47.1.1.1.1.4.65544"), "1");
    EXPECT_EQ(valueIn(read, "47.1.1.1.1.5.1"), "3");
    EXPECT_EQ(valueIn(read, "47.1.1.1.1.5.2"), "3");
    EXPECT_EQ(valueIn(read, "47.1.1.1.1.5.65544"), "9");
    EXPECT_EQ(valueIn(read, "47.1.1.1.1.7.2"), "Shelf");
    EXPECT_EQ(valueIn(read, "47.1.1.1.1.7.65544"), "pci:0000:00:01.0");
    EXPECT_EQ(valueIn(read, "47.1.1.1.1.16.65544"), "1");
    EXPECT_EQ(valueIn(read, "47.1.1.1.1.11.1"), "absent");
}

TEST(Content, AnObjectWithoutAValueInTheSourceIsAbsent) {
    const Readings read = readings(reading(2, {{{4, "box"}}}));
    EXPECT_EQ(valueIn(read, "1.5.0"), "box");
    EXPECT_EQ(valueIn(read, "1.1.0"), "absent");
    EXPECT_EQ(valueIn(read, "1.7.0"), "absent");
    EXPECT_EQ(valueIn(read, "1.4.0"), ""); // the value of a contact that is not known
    EXPECT_EQ(valueIn(read, "1.2.0"), "0.0");
}
