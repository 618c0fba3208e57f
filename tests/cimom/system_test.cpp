#include "HostTree.hpp"
#include "providers/Providers.hpp"

#include <gtest/gtest.h>

using namespace cimom;
using namespace OpenWBEM;

namespace {

CIMInstance systemOf(const HostTree& tree) {
    return onlyInstance(providerOf("QAV_System", tree.host()));
}

void writeKernel(const HostTree& tree) {
    tree.write("/proc/sys/kernel/ostype", "Linux\n");
    tree.write("/proc/sys/kernel/hostname", "box.example.org\n");
    tree.write("/proc/sys/kernel/osrelease", "6.1.0-9-amd64\n");
    tree.write("/proc/sys/kernel/version", "#1 SMP PREEMPT_DYNAMIC\n");
}

} // namespace

TEST(System, PropertiesComeKeysFirst) {
    HostTree tree;
    writeKernel(tree);
    const CIMInstance system = systemOf(tree);
    EXPECT_EQ("QAV_System", system.getClassName());
    EXPECT_EQ("Name CreationClassName", names(system.getKeyValuePairs()));
    EXPECT_EQ(
        "Name CreationClassName SystemName PrimaryOwnerContact InstalledLocation SysServices SNMPObjectID "
        "Description SystemVersion LastChangeTime",
        names(system.getProperties()));
}

TEST(System, NameAndDescriptionComeFromTheKernel) {
    HostTree tree;
    writeKernel(tree);
    const CIMInstance system = systemOf(tree);
    EXPECT_EQ("box.example.org", text(system, "Name"));
    EXPECT_EQ("box.example.org", text(system, "SystemName"));
    EXPECT_EQ("QAV_System", text(system, "CreationClassName"));
    EXPECT_EQ("Linux box.example.org 6.1.0-9-amd64 #1 SMP PREEMPT_DYNAMIC", text(system, "Description"));
}

TEST(System, DataThatTheHostDoesNotReportIsNull) {
    HostTree tree;
    const CIMInstance system = systemOf(tree);
    for (const char* const property : {"Name", "SystemName", "PrimaryOwnerContact", "InstalledLocation",
                                       "SNMPObjectID", "Description", "SystemVersion", "LastChangeTime"})
        EXPECT_EQ("(null)", text(system, property)) << property;
    EXPECT_EQ("CreationClassName", names(system.getKeyValuePairs()));
}

TEST(System, AnIncompleteDescriptionIsNull) {
    HostTree tree;
    tree.write("/proc/sys/kernel/hostname", "box\n");
    EXPECT_EQ("(null)", text(systemOf(tree), "Description"));
}

TEST(System, ServicesIncludeTheInternetLayerIfTheHostForwards) {
    HostTree tree;
    EXPECT_EQ("72", text(systemOf(tree), "SysServices"));
    tree.write("/proc/sys/net/ipv4/ip_forward", "0\n");
    EXPECT_EQ("72", text(systemOf(tree), "SysServices"));
    tree.write("/proc/sys/net/ipv4/ip_forward", "1\n");
    EXPECT_EQ("76", text(systemOf(tree), "SysServices"));
}

TEST(System, VersionIsThePrettyNameWithoutItsQuotes) {
    HostTree tree;
    tree.write("/etc/os-release", "NAME=\"Test\"\nPRETTY_NAME=\"Test \\\"OS\\\" 12 ('\\$5')\"\nID=test\n");
    EXPECT_EQ("Test \"OS\" 12 ('$5')", text(systemOf(tree), "SystemVersion"));
    tree.write("/etc/os-release", "PRETTY_NAME='Test \\ 13'\n");
    EXPECT_EQ("Test \\ 13", text(systemOf(tree), "SystemVersion"));
    tree.write("/etc/os-release", "PRETTY_NAME=Plain");
    EXPECT_EQ("Plain", text(systemOf(tree), "SystemVersion"));
}

TEST(System, OfSeveralPrettyNamesTheLastIsValid) {
    HostTree tree;
    tree.write("/etc/os-release", "PRETTY_NAME=First\nPRETTY_NAME=Last\nID=test\n");
    EXPECT_EQ("Last", text(systemOf(tree), "SystemVersion"));
}

TEST(System, VersionComesFromTheVendorsFileOnlyWithoutOneInEtc) {
    HostTree tree;
    tree.write("/usr/lib/os-release", "PRETTY_NAME=Vendor\n");
    EXPECT_EQ("Vendor", text(systemOf(tree), "SystemVersion"));
    tree.write("/etc/os-release", "NAME=Nameless\n");
    EXPECT_EQ("(null)", text(systemOf(tree), "SystemVersion"));
}

TEST(System, LastChangeIsTheLaterOfTwoModificationsInLocalTime) {
    const TimeZone zone("TST-05:30");
    HostTree tree;
    tree.write("/etc/hostname", "box\n");
    tree.setModificationTime("/etc/hostname", 1700000000, 123456789);
    EXPECT_EQ("20231115034320.123456+330", text(systemOf(tree), "LastChangeTime"));
    tree.write("/etc/os-release", "");
    tree.setModificationTime("/etc/os-release", 1700000000, 123455000);
    EXPECT_EQ("20231115034320.123456+330", text(systemOf(tree), "LastChangeTime"));
    tree.setModificationTime("/etc/os-release", 1700000001, 0);
    EXPECT_EQ("20231115034321.000000+330", text(systemOf(tree), "LastChangeTime"));
}
