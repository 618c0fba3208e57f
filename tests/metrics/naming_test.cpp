#include "ExpositionReader.hpp"
#include "metrics/Naming.hpp"
#include "metrics/Scrape.hpp"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>

using namespace metrics;
using agent::Attribute;

namespace {

const Attribute& attribute(long group, const char* property) {
    return *agent::findAttribute(group, property);
}

/** All families of a group, each with one sample. */
std::vector<Family> familiesOfGroup(long group) {
    std::vector<Family> families;
    const Subject& subject = *subjectOf(group);
    if (subject.shape != Shape::sums)
        families.push_back(infoFamilyOf(subject));
    for (const Count& count : countsOf(group))
        families.push_back({count.name, Type::gauge, "", count.help, {}});
    for (const Attribute* each : agent::attributesOf(group)) {
        if (useOf(*each) == Use::value)
            families.push_back(familyOf(*each));
    }
    for (Family& family : families)
        family.samples = {{{}, "1"}};
    return families;
}

std::vector<Family> allFamilies() {
    std::vector<Family> all;
    for (const long group : measuredGroups()) {
        for (const Family& family : familiesOfGroup(group)) {
            // Groups of one subject share the name of the labels, but one of them has some.
            const bool isInfo = family.type == Type::info;
            const auto attributes = agent::attributesOf(group);
            if (!isInfo || std::any_of(attributes.begin(), attributes.end(),
                                       [](const Attribute* each) { return useOf(*each) == Use::label; }))
                all.push_back(family);
        }
    }
    Scrape scrape{{0}, {{0, 0, {}, 0}}, {}, {}, std::chrono::microseconds(0)};
    const std::vector<Family> about = familiesOf(scrape);
    all.insert(all.end(), about.begin(), about.end());
    return all;
}

} // namespace

TEST(Naming, ANameIsSubjectQuantityAndBaseUnit) {
    EXPECT_EQ("owb_network_receive_bytes", familyOf(attribute(10, "InOctets")).name);
    EXPECT_EQ("owb_tcp_active_opens", familyOf(attribute(6, "ActiveOpens")).name);
    EXPECT_EQ("owb_tcp_timeout_min_seconds", familyOf(attribute(5, "TimeoutMin")).name);
    EXPECT_EQ("owb_network_speed_bytes_per_second", familyOf(attribute(9, "Speed")).name);
    EXPECT_EQ("owb_storage_size_bytes", familyOf(attribute(3, "NumberOfBlocks")).name);
    EXPECT_EQ("owb_partition_size_bytes", familyOf(attribute(19, "Size")).name);
    EXPECT_EQ("owb_processes_cpu_seconds", familyOf(attribute(22, "TotalCPUTime")).name);
    EXPECT_EQ("owb_system_boot_timestamp_seconds", familyOf(attribute(4, "LastBootUpTime")).name);
    EXPECT_EQ("owb_host_last_change_timestamp_seconds", familyOf(attribute(1, "LastChangeTime")).name);
}

TEST(Naming, TypeUnitAndHelpComeFromTheCatalogue) {
    const Family family = familyOf(attribute(10, "InOctets"));
    EXPECT_EQ(Type::counter, family.type);
    EXPECT_EQ("bytes", family.unit);
    EXPECT_EQ(attribute(10, "InOctets").description, family.help);
    EXPECT_EQ(Type::gauge, familyOf(attribute(6, "CurrEstab")).type);
}

TEST(Naming, ACounterOfTheCatalogueIsACounterWithAndWithoutUnit) {
    for (const Attribute& each : agent::attributes) {
        if (subjectOf(each.group) != nullptr && useOf(each) == Use::value) {
            EXPECT_EQ(each.kind == agent::Kind::counter, familyOf(each).type == Type::counter)
                << each.property;
        }
    }
}

TEST(Naming, EachNumberOfTheCatalogueHasAMetric) {
    for (const Attribute& each : agent::attributes) {
        const bool isNumber = each.kind == agent::Kind::counter || each.kind == agent::Kind::gauge ||
                              each.kind == agent::Kind::size || each.kind == agent::Kind::interval;
        if (isNumber) {
            EXPECT_TRUE(subjectOf(each.group) != nullptr && useOf(each) == Use::value) << each.property;
        }
    }
}

TEST(Naming, AllNamesKeepTheRulesOfPromtoolAndNoneIsUsedTwice) {
    for (const Format format : formats) {
        const exposition::Text text =
            exposition::read(linesOf(allFamilies(), format) + endOf(format), format);
        EXPECT_EQ(std::vector<std::string>(), text.faults);
    }
}

TEST(Naming, NoNameIsAnotherWithASuffix) {
    std::set<std::string> names;
    for (const Family& family : allFamilies())
        names.insert(family.name);
    for (const std::string& name : names) {
        for (const char* const suffix : {"_total", "_info", "_created", "_count", "_sum", "_bucket"})
            EXPECT_EQ(0U, names.count(name + suffix)) << name << suffix;
    }
}

TEST(Naming, TheLabelsOfAGroupHaveDifferentNames) {
    for (const long group : measuredGroups()) {
        std::set<std::string> names;
        for (const Attribute* each : agent::attributesOf(group)) {
            if (useOf(*each) == Use::key || useOf(*each) == Use::label) {
                EXPECT_TRUE(names.insert(labelOf(*each)).second) << group << ' ' << labelOf(*each);
            }
        }
    }
}

TEST(Naming, ProcessesConnectionsAndPackagesHaveNoLabels) {
    for (const long group : {7L, 15L, 16L, 22L}) {
        for (const Attribute* each : agent::attributesOf(group))
            EXPECT_TRUE(useOf(*each) == Use::none || useOf(*each) == Use::value) << each->property;
    }
}

TEST(Naming, WordsAreInSnakeCase) {
    EXPECT_EQ("in_octets", inSnakeCase("InOctets"));
    EXPECT_EQ("in_n_ucast_pkts", inSnakeCase("InNUcastPkts"));
    EXPECT_EQ("default_ttl", inSnakeCase("DefaultTTL"));
    EXPECT_EQ("hr_device_index", inSnakeCase("_HR_DEVICE_INDEX"));
    EXPECT_EQ("syn_sent", inSnakeCase("SYN sent"));
    EXPECT_EQ("fin_wait_1", inSnakeCase("FIN wait 1"));
    EXPECT_EQ("mil_std_1778", inSnakeCase("MIL-STD-1778"));
}

TEST(Naming, GroupsWithoutMetricsAreLeftOutOfAList) {
    EXPECT_EQ(std::vector<long>{4}, measuredGroupsNamed("4"));
    EXPECT_EQ((std::vector<long>{5, 7}), measuredGroupsNamed("qav_tcpprotocolendpoint"));
    EXPECT_EQ(std::vector<long>{4}, measuredGroupsNamed("QAV_OperatingSystem")) << "not 17, which repeats it";
    EXPECT_EQ((std::vector<long>{7, 9}), measuredGroupsNamed("7-9"));
    EXPECT_EQ(measuredGroups(), measuredGroupsNamed("all"));
    for (const char* const name : {"", "17", "8", "31", "-1", "4 ", "QAV_ResidesOnExtent"})
        EXPECT_TRUE(measuredGroupsNamed(name).empty()) << name;
}
