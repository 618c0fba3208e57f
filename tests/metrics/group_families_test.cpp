#include "ExpositionReader.hpp"
#include "metrics/GroupFamilies.hpp"

#include <gtest/gtest.h>

using namespace metrics;
using agent::Group;

namespace {

using Values = std::map<const char*, std::vector<std::string>>;

/** A group with rows of texts by property. */
Group group(long number, const std::vector<Values>& rows) {
    Group group{number, agent::classOf(number).name, OWB_DONE, {}};
    for (const Values& values : rows) {
        agent::Row row{static_cast<long>(group.rows.size()), {}};
        for (const agent::Attribute* attribute : agent::attributesOf(number)) {
            for (const auto& [name, texts] : values) {
                if (agent::findAttribute(number, name) == attribute)
                    row.properties.push_back({attribute, texts});
            }
        }
        group.rows.push_back(row);
    }
    return group;
}

/** The metrics of a group, which keep all rules in both formats. */
exposition::Text metricsOf(const Group& read) {
    const std::vector<Family> families = familiesOf(read).families;
    const exposition::Text openMetrics =
        exposition::read(linesOf(families, Format::openMetrics) + "# EOF\n", Format::openMetrics);
    EXPECT_EQ(std::vector<std::string>(), openMetrics.faults);
    exposition::Text text = exposition::read(linesOf(families, Format::text), Format::text);
    EXPECT_EQ(std::vector<std::string>(), text.faults);
    return text;
}

} // namespace

TEST(GroupFamilies, ARowIsNamedByItsLabels) {
    const exposition::Text text =
        metricsOf(group(10, {{{"InstanceID", {"eth0"}}, {"InOctets", {"18446744073709551615"}}},
                             {{"InstanceID", {"lo"}}, {"InOctets", {"5"}}, {"OutQLen", {"0"}}}}));
    EXPECT_EQ("18446744073709551615", text.value("owb_network_receive_bytes_total", {{"device", "eth0"}}));
    EXPECT_EQ("5", text.value("owb_network_receive_bytes_total", {{"device", "lo"}}));
    EXPECT_EQ(3U, text.samples.size()) << "a value that a row does not have is absent";
}

TEST(GroupFamilies, TextsAreLabelsOfOneSample) {
    const exposition::Text text = metricsOf(
        group(2, {{{"SystemName", {"box"}}, {"PrimaryOwnerContact", {""}}, {"SysServices", {"72"}}}}));
    ASSERT_EQ(2U, text.samples.size());
    EXPECT_EQ((std::map<std::string, std::string>{{"name", "box"}}), text.samples[0].labels)
        << "an empty label is the same as none";
    EXPECT_EQ("1", text.value("owb_host_info"));
    EXPECT_EQ("72", text.value("owb_host_services"));
}

TEST(GroupFamilies, AllValuesOfHardwareAreLabels) {
    const exposition::Text text = metricsOf(group(27, {{{"DeviceID", {"slot 1"}},
                                                        {"SerialNumber", {"77"}},
                                                        {"PhysicalType", {"6"}},
                                                        {"CanBeFRUed", {"true"}}}}));
    ASSERT_EQ(1U, text.samples.size());
    EXPECT_EQ("1", text.value("owb_module_info", {{"module", "slot 1"},
                                                  {"serial_number", "77"},
                                                  {"physical_type", "power_supply"},
                                                  {"replaceable", "true"}}));
}

TEST(GroupFamilies, ASizeInBlocksIsInBytes) {
    const std::string most = "18446744073709551615";
    const exposition::Text text =
        metricsOf(group(3, {{{"DeviceID", {"a"}},
                             {"Blocksize", {"4096"}},
                             {"NumberOfBlocks", {"66053021"}},
                             {"StorageUsed", {"0"}}},
                            {{"DeviceID", {"b"}}, {"Blocksize", {most}}, {"NumberOfBlocks", {most}}},
                            {{"DeviceID", {"c"}}, {"NumberOfBlocks", {"1"}}}}));
    EXPECT_EQ("270553174016", text.value("owb_storage_size_bytes", {{"storage", "a"}}));
    EXPECT_EQ("0", text.value("owb_storage_used_bytes", {{"storage", "a"}}));
    EXPECT_EQ("340282366920938463426481119284349108225",
              text.value("owb_storage_size_bytes", {{"storage", "b"}}));
    EXPECT_EQ("(none)", text.value("owb_storage_size_bytes", {{"storage", "c"}}))
        << "the size of its blocks is unknown";
}

TEST(GroupFamilies, ValuesAreInBaseUnits) {
    EXPECT_EQ("0.2", metricsOf(group(5, {{{"TimeoutMin", {"200"}}}})).value("owb_tcp_timeout_min_seconds"));
    EXPECT_EQ("18889465931478580853760",
              metricsOf(group(19, {{{"Size", {"18446744073709551615"}}}})).value("owb_partition_size_bytes"));
    const exposition::Text text = metricsOf(
        group(9, {{{"Name", {"a"}}, {"Speed", {"10000000"}}}, {{"Name", {"b"}}, {"Speed", {"9"}}}}));
    EXPECT_EQ("1250000", text.value("owb_network_speed_bytes_per_second", {{"device", "a"}}));
    EXPECT_EQ("1.125", text.value("owb_network_speed_bytes_per_second", {{"device", "b"}}));
}

TEST(GroupFamilies, ALimitMayBeNegativeButNoCounter) {
    EXPECT_EQ("-1", metricsOf(group(5, {{{"MaxConnections", {"-1"}}}})).value("owb_tcp_max_connections"));
    EXPECT_EQ(0U, metricsOf(group(6, {{{"InSegs", {"-1"}}}})).samples.size());
}

TEST(GroupFamilies, AValueThatIsNoNumberIsAbsent) {
    for (const char* const text : {"", "many", "1e3", "0x10", "1 2", "99999999999999999999"})
        EXPECT_EQ(0U, metricsOf(group(6, {{{"InSegs", {text}}, {"CurrEstab", {text}}}})).samples.size())
            << text;
    EXPECT_EQ(0U, metricsOf(group(4, {{{"LastBootUpTime", {"yesterday"}}}})).samples.size());
}

TEST(GroupFamilies, ADateIsATimestamp) {
    const exposition::Text text = metricsOf(group(4, {{{"LastBootUpTime", {"20991231235959.250000+060"}}}}));
    EXPECT_EQ("4102441199.25", text.value("owb_system_boot_timestamp_seconds"));
}

TEST(GroupFamilies, AFlagIsOneOrZero) {
    const exposition::Text text =
        metricsOf(group(20, {{{"Root", {"/"}}, {"ReadOnly", {"TRUE"}}, {"Bootable", {"false"}}},
                             {{"Root", {"/x"}}, {"ReadOnly", {"maybe"}}}}));
    EXPECT_EQ("1", text.value("owb_filesystem_read_only", {{"mountpoint", "/"}}));
    EXPECT_EQ("0", text.value("owb_filesystem_bootable", {{"mountpoint", "/"}}));
    EXPECT_EQ("(none)", text.value("owb_filesystem_read_only", {{"mountpoint", "/x"}}));
}

TEST(GroupFamilies, AnArrayGivesItsFirstNumberAndAllTexts) {
    const exposition::Text text = metricsOf(
        group(9, {{{"Name", {"a"}}, {"OperationalStatus", {"2", "3"}}, {"MACAddress", {"x", "y"}}}}));
    EXPECT_EQ("2", text.value("owb_network_operational_status"));
    EXPECT_EQ("1", text.value("owb_network_info", {{"address", "x,y"}}));
}

TEST(GroupFamilies, OfRowsWithTheSameLabelsTheFirstRemains) {
    const Group read = group(10, {{{"InstanceID", {"eth0"}}, {"InOctets", {"1"}}},
                                  {{"InstanceID", {"eth0"}}, {"InOctets", {"2"}}, {"OutOctets", {"2"}}},
                                  {{"InstanceID", {"lo"}}, {"InOctets", {"3"}}}});
    const exposition::Text text = metricsOf(read);
    EXPECT_EQ("1", text.value("owb_network_receive_bytes_total", {{"device", "eth0"}}));
    EXPECT_EQ(0U, text.count("owb_network_transmit_bytes_total")) << "no sample of another row";
    EXPECT_EQ(1U, familiesOf(read).droppedRows);
}

TEST(GroupFamilies, RowsThatDifferInInvalidBytesAloneAreTheSame) {
    const Group read = group(10, {{{"InstanceID", {"a\xff"}}, {"InOctets", {"1"}}},
                                  {{"InstanceID", {"a\xfe"}}, {"InOctets", {"2"}}}});
    EXPECT_EQ("1", metricsOf(read).value("owb_network_receive_bytes_total", {{"device", "a\xef\xbf\xbd"}}));
    EXPECT_EQ(1U, familiesOf(read).droppedRows);
}

TEST(GroupFamilies, LabelsOfTwoValuesAreNotTheSameAsThoseOfOne) {
    const Group read = group(3, {{{"DeviceID", {"a"}}, {"Purpose", {"b"}}, {"Blocksize", {"1"}}},
                                 {{"DeviceID", {"a\",description=\"b"}}, {"Blocksize", {"2"}}}});
    EXPECT_EQ(2U, metricsOf(read).count("owb_storage_block_size_bytes"));
    EXPECT_EQ(0U, familiesOf(read).droppedRows);
}

TEST(GroupFamilies, HostileTextsStayLabels) {
    const std::string name = "a\"} 1\nowb_fake 2\n# EOF\n\\";
    const exposition::Text text =
        metricsOf(group(10, {{{"InstanceID", {name}}, {"InOctets", {"1"}}},
                             {{"InstanceID", {std::string(65536, '"')}}, {"InOctets", {"2"}}},
                             {{"InstanceID", {"\xed\xa0\x80\xc0\x80"}}, {"InOctets", {"3"}}}}));
    EXPECT_EQ(3U, text.samples.size());
    EXPECT_EQ("1", text.value("owb_network_receive_bytes_total", {{"device", name}}));
}

TEST(GroupFamilies, ProcessesAreCountedByStateAndKind) {
    const exposition::Text text =
        metricsOf(group(16, {{{"Handle", {"1"}}, {"ExecutionState", {"2"}}, {"RunType", {"4"}}},
                             {{"Handle", {"2"}}, {"ExecutionState", {"2"}}, {"RunType", {"4"}}},
                             {{"Handle", {"3"}}, {"ExecutionState", {"7"}}},
                             {{"Handle", {"4"}}, {"ExecutionState", {"4711"}}}}));
    EXPECT_EQ("2", text.value("owb_processes", {{"state", "ready"}}));
    EXPECT_EQ("1", text.value("owb_processes", {{"state", "zombie"}}));
    EXPECT_EQ("1", text.value("owb_processes", {{"state", "other"}})) << "a code without a known meaning";
    EXPECT_EQ("0", text.value("owb_processes", {{"state", "running"}}));
    EXPECT_EQ("2", text.value("owb_processes_by_kind", {{"kind", "application"}}));
    EXPECT_EQ("2", text.value("owb_processes_by_kind", {{"kind", "unknown"}})) << "rows without a code";
}

TEST(GroupFamilies, ManyRowsOfProcessesConnectionsAndPackagesGiveNoMoreSeries) {
    const auto seriesOf = [](long number, std::size_t rows) {
        std::vector<Values> all;
        for (std::size_t i = 0; i < rows; ++i)
            all.push_back({{"Handle", {std::to_string(i)}},
                           {"ExecutionState", {std::to_string(i)}},
                           {"ConnectionState", {std::to_string(i)}},
                           {"Name", {"p" + std::to_string(i)}},
                           {"RealText", {"1"}}});
        return metricsOf(group(number, all)).samples.size();
    };
    for (const long number : {7L, 15L, 16L, 22L})
        EXPECT_EQ(seriesOf(number, 20), seriesOf(number, 5000)) << number;
}

TEST(GroupFamilies, ValuesOfAllProcessesAreSummedUpExactly) {
    const exposition::Text text = metricsOf(
        group(22, {{{"RealText", {"18446744073709551615"}}, {"TotalCPUTime", {"00000000000001.500000:000"}}},
                   {{"RealText", {"1"}}, {"TotalCPUTime", {"00000001000000.000001:000"}}},
                   {{"RealText", {"none"}}}}));
    EXPECT_EQ("18889465931478580854784", text.value("owb_processes_text_bytes"));
    EXPECT_EQ("86401.500001", text.value("owb_processes_cpu_seconds"));
    EXPECT_EQ(2U, text.samples.size());
}

TEST(GroupFamilies, PackagesHaveANumberAndTheLatestDate) {
    const exposition::Text text =
        metricsOf(group(15, {{{"Name", {"a"}}, {"InstalledDate", {"20260101000000.000000+000"}}},
                             {{"Name", {"b"}}, {"InstalledDate", {"20260102000000.000000+000"}}},
                             {{"Name", {"c"}}}}));
    EXPECT_EQ("3", text.value("owb_packages"));
    EXPECT_EQ("1767312000", text.value("owb_packages_last_installed_timestamp_seconds"));
}

TEST(GroupFamilies, AGroupWithoutRowsHasCountsOnly) {
    EXPECT_EQ(0U, metricsOf(group(10, {})).samples.size());
    EXPECT_EQ("0", metricsOf(group(15, {})).value("owb_packages"));
    EXPECT_EQ("0", metricsOf(group(7, {})).value("owb_tcp_connections", {{"state", "established"}}));
}

TEST(GroupFamilies, AGroupThatWasNotReadHasNone) {
    Group read = group(15, {{{"Name", {"a"}}}});
    read.status = OWB_EXCEPTION;
    EXPECT_TRUE(familiesOf(read).families.empty());
}
