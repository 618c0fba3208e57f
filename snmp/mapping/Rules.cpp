#include "snmp/mapping/Rules.hpp"

namespace snmp {
namespace {

// clang-format off

using std::chrono::seconds;

constexpr seconds readLimit{10};
/** The library waits up to 30 s for the software inventory. */
constexpr seconds processLimit{40};
/** Package managers are slow on a cold disk. */
constexpr seconds packageLimit{60};

// IF-MIB, ifAdminStatus and ifOperStatus, from EnabledState and OperationalStatus.
const Codes adminStatus{{"2", "1"}, {"3", "2"}, {"7", "3"}};
const Codes operStatus{{"2", "1"}, {"10", "2"}, {"11", "3"}, {"0", "4"}, {"15", "5"}, {"16", "6"}, {"17", "7"}};

// HOST-RESOURCES-MIB.
const Codes runStatus{{"3", "1"}, {"2", "2"}, {"7", "4"}};
const Codes installedType{{"4", "4"}, {"8", "2"}, {"10", "3"}};
const Codes diskAccess{{"4", "1"}};
const Codes diskRemovable{{"7", "1"}};
const Codes fileSystemAccess{{"false", "1"}, {"true", "2"}};
const Codes fileSystemTypes{
    {"ext2", "23"}, {"ext3", "23"}, {"ext4", "23"}, {"vfat", "22"}, {"msdos", "5"}, {"ntfs", "9"}, {"ntfs3", "9"},
    {"hfs", "7"}, {"hfsplus", "7"}, {"hpfs", "6"}, {"iso9660", "12"}, {"nfs", "14"}, {"nfs4", "14"}, {"afs", "16"},
    {"ufs", "3"}, {"xfs", "11"}, {"jfs", "11"}};

const char* const storageTypes = "1.3.6.1.2.1.25.2.1.";
const char* const deviceTypes = "1.3.6.1.2.1.25.3.1.";
const char* const fileSystems = "1.3.6.1.2.1.25.3.9.";

const char* const noObject = "0.0";
/** January 1 of the year 0, without an offset: an unknown date. */
const char* const noDate = "00000101000000.000000+***";

constexpr Access readWrite = Access::readWrite;

using Kind = IndexRule::Kind;

// clang-format on

} // namespace

// clang-format off

const std::vector<SubjectRule>& subjectRules() {
    static const std::vector<SubjectRule> rules{
        {Subject::system, AgeClass::counters, {2}, readLimit},
        {Subject::interfaces, AgeClass::counters, {9, 10}, readLimit},
        {Subject::ip, AgeClass::counters, {12, 13}, readLimit},
        {Subject::icmp, AgeClass::counters, {11}, readLimit},
        {Subject::tcp, AgeClass::counters, {6}, readLimit},
        // The settings of TCP are in the class of its connections, which takes long to read.
        {Subject::connections, AgeClass::tables, {5, 7}, readLimit},
        {Subject::udp, AgeClass::counters, {14}, readLimit},
        {Subject::host, AgeClass::counters, {4}, readLimit},
        {Subject::storage, AgeClass::tables, {3, 18, 19, 20, 21, 23, 25}, readLimit},
        {Subject::running, AgeClass::tables, {16, 22}, processLimit},
        {Subject::installed, AgeClass::packages, {15}, packageLimit},
        {Subject::entity, AgeClass::tables, {0, 26, 27}, readLimit}};
    return rules;
}

const std::vector<TableRule>& tableRules() {
    static const std::vector<TableRule> rules{
        {"1", Subject::system, {2}},
        {"2", Subject::interfaces, {9}},
        {"2.2.1", Subject::interfaces, {9}, {Kind::integers, {27}}, {}, JoinRule{10, 24, 26}},
        {"4", Subject::ip, {12}},
        {"4", Subject::ip, {13}},
        {"4.31.1.1", Subject::ip, {13}, {Kind::one}},
        {"5", Subject::icmp, {11}},
        {"5.29.1", Subject::icmp, {11}, {Kind::one}},
        {"6", Subject::connections, {5}},
        {"6", Subject::tcp, {6}},
        {"6.13.1", Subject::connections, {7}, {Kind::ipAddresses, {1, 2, 3, 4}}},
        {"6.19.1", Subject::connections, {7}, {Kind::inetAddresses, {1, 2, 3, 4}}, {{0, "2", false}}},
        {"6.20.1", Subject::connections, {7}, {Kind::inetAddresses, {1, 2}}, {{0, "2", true}}},
        {"7", Subject::udp, {14}},
        {"25.1", Subject::host, {4}},
        {"25.2", Subject::storage, {3}, {}, {{1, "2", true}}},
        {"25.2.3.1", Subject::storage, {3}, {Kind::integers, {8}}},
        {"25.3.2.1", Subject::storage, {21}, {Kind::integers, {0}}},
        {"25.3.4.1", Subject::storage, {25}, {Kind::integers, {1}}},
        {"25.3.6.1", Subject::storage, {18}, {Kind::integers, {4}}},
        {"25.3.7.1", Subject::storage, {19}, {Kind::integers, {5, 0}}, {},
         JoinRule{20, 6, 1, 23, "DeviceID", "Name"}},
        {"25.3.8.1", Subject::storage, {20}, {Kind::integers, {0}}},
        {"25.4.2.1", Subject::running, {16}, {Kind::integers, {2}}},
        {"25.5.1.1", Subject::running, {22}, {Kind::integers, {12}}},
        {"25.6", Subject::installed, {15}},
        {"25.6.3.1", Subject::installed, {15}, {Kind::ordinal, {1}}},
        {"31.1.1.1", Subject::interfaces, {9}, {Kind::integers, {27}}, {}, JoinRule{10, 24, 26}},
        {"47.1.1.1.1", Subject::entity, {0, 26, 27}, {Kind::integers, {0}}},
        {"47.1.3.3.1", Subject::entity, {0, 27}, {Kind::integers, {19, 0}}, {{19, "0", false}}},
        {"47.1.4", Subject::entity, {0, 26, 27}}};
    return rules;
}

const std::vector<ObjectRule>& objectRules() {
    using S = Syntax;
    static const std::vector<ObjectRule> rules{
        // SNMPv2-MIB
        {"1.2", S::objectId, 0, {}, firstValue, {}, "", noObject, noObject},
        {"1.4", S::octets, 255, {}, firstValue, {}, "", "", nullptr, readWrite},
        {"1.6", S::octets, 255, {}, firstValue, {}, "", "", nullptr, readWrite},
        // IF-MIB. The attribute of ifDescr may be the alias of the interface.
        {"2.1", S::integer32, 0, {{9, 27}}, rowCount},
        {"2.2.1.2", S::octets, 255, {{9, 24}}},
        {"2.2.1.6", S::hexOctets},
        {"2.2.1.7", S::integer32, 0, {}, translated, adminStatus},
        {"2.2.1.8", S::integer32, 0, {}, translated, operStatus, "", nullptr, "4"},
        {"2.2.1.9", S::timeTicks, 0, {}, timeStamp, {}, "", "0"},
        {"31.1.1.1.2", S::counter32, 0, {{10, 11}}},
        {"31.1.1.1.6", S::counter64, 0, {{10, 9}}},
        {"31.1.1.1.7", S::counter64, 0, {{10, 10}}},
        {"31.1.1.1.8", S::counter64, 0, {{10, 11}}},
        {"31.1.1.1.10", S::counter64, 0, {{10, 15}}},
        {"31.1.1.1.11", S::counter64, 0, {{10, 16}}},
        {"31.1.1.1.15", S::gauge32, 0, {{9, 4}}, megabits},
        {"31.1.1.1.18", S::octets, 64, {{9, 1}, {9, 24}}, alias},
        // IP-MIB
        {"4.2", S::integer32},
        {"4.13", S::integer32},
        {"4.31.1.1.3", S::counter32, 0, {{13, 2}}},
        {"4.31.1.1.4", S::counter64, 0, {{13, 2}}},
        {"4.31.1.1.7", S::counter32, 0, {{13, 3}}},
        {"4.31.1.1.9", S::counter32, 0, {{13, 4}}},
        {"4.31.1.1.10", S::counter32, 0, {{13, 6}}},
        {"4.31.1.1.12", S::counter32, 0, {{13, 5}}},
        {"4.31.1.1.13", S::counter64, 0, {{13, 5}}},
        {"4.31.1.1.14", S::counter32, 0, {{13, 13}}},
        {"4.31.1.1.15", S::counter32, 0, {{13, 14}}},
        {"4.31.1.1.16", S::counter32, 0, {{13, 15}}},
        {"4.31.1.1.17", S::counter32, 0, {{13, 7}}},
        {"4.31.1.1.18", S::counter32, 0, {{13, 8}}},
        {"4.31.1.1.19", S::counter64, 0, {{13, 8}}},
        {"4.31.1.1.20", S::counter32, 0, {{13, 9}}},
        {"4.31.1.1.21", S::counter64, 0, {{13, 9}}},
        {"4.31.1.1.22", S::counter32, 0, {{13, 11}}},
        {"4.31.1.1.25", S::counter32, 0, {{13, 10}}},
        {"4.31.1.1.27", S::counter32, 0, {{13, 16}}},
        {"4.31.1.1.28", S::counter32, 0, {{13, 17}}},
        {"4.31.1.1.29", S::counter32, 0, {{13, 18}}},
        {"5.29.1.2", S::counter32, 0, {{11, 0}}},
        {"5.29.1.3", S::counter32, 0, {{11, 1}}},
        {"5.29.1.4", S::counter32, 0, {{11, 13}}},
        {"5.29.1.5", S::counter32, 0, {{11, 14}}},
        // TCP-MIB
        {"6.2", S::integer32},
        {"6.3", S::integer32},
        {"6.4", S::integer32},
        {"6.17", S::counter64, 0, {{6, 9}}},
        {"6.18", S::counter64, 0, {{6, 10}}},
        {"6.13.1.2", S::ipAddress},
        {"6.13.1.4", S::ipAddress},
        {"6.19.1.7", S::integer32, 0, {{7, 0}}},
        {"6.19.1.8", S::gauge32, 0, {}, firstValue, {}, "", "0"},
        {"6.20.1.4", S::gauge32, 0, {}, firstValue, {}, "", "0"},
        // UDP-MIB
        {"7.8", S::counter64, 0, {{14, 0}}},
        {"7.9", S::counter64, 0, {{14, 3}}},
        // HOST-RESOURCES-MIB
        {"25.1.1", S::timeTicks, 0, {{4, 0}, {4, 1}}, hundredthsBetween},
        {"25.1.4", S::octets, 128},
        {"25.1.7", S::integer32},
        {"25.2.2", S::integer32, 0, {{3, 3}, {3, 4}}, kilobytes},
        {"25.2.3.1.2", S::objectId, 0, {}, firstValue, {}, storageTypes},
        {"25.2.3.1.4", S::integer32, 0, {{3, 3}, {3, 4}, {3, 5}}, storageUnit},
        {"25.2.3.1.5", S::integer32, 0, {{3, 3}, {3, 4}, {3, 5}}, storageSize},
        {"25.2.3.1.6", S::integer32, 0, {{3, 3}, {3, 4}, {3, 5}}, storageUsed},
        {"25.3.2.1.2", S::objectId, 0, {}, firstValue, {}, deviceTypes},
        {"25.3.2.1.3", S::octets, 64},
        {"25.3.2.1.4", S::objectId, 0, {}, firstValue, {}, "", noObject, noObject},
        {"25.3.6.1.1", S::integer32, 0, {}, translated, diskAccess, "", nullptr, "2"},
        {"25.3.6.1.3", S::integer32, 0, {{18, 0}}, translated, diskRemovable, "", nullptr, "2"},
        {"25.3.7.1.2", S::octets, 128},
        {"25.3.7.1.5", S::integer32, 0, {{20, 0}}, firstValue, {}, "", "0"},
        {"25.3.8.1.2", S::octets, 128},
        {"25.3.8.1.3", S::octets, 128},
        {"25.3.8.1.4", S::objectId, 0, {}, translated, fileSystemTypes, fileSystems, nullptr, "1"},
        {"25.3.8.1.5", S::integer32, 0, {}, translated, fileSystemAccess},
        {"25.3.8.1.8", S::dateAndTime, 0, {}, firstValue, {}, "", noDate},
        {"25.3.8.1.9", S::dateAndTime, 0, {}, firstValue, {}, "", noDate},
        {"25.4.2.1.1", S::integer32},
        {"25.4.2.1.2", S::octets, 64},
        {"25.4.2.1.3", S::objectId, 0, {}, firstValue, {}, "", noObject},
        {"25.4.2.1.4", S::octets, 128},
        {"25.4.2.1.5", S::octets, 128, {}, joinedValues, {}, "", ""},
        {"25.4.2.1.7", S::integer32, 0, {}, translated, runStatus, "", nullptr, "3"},
        {"25.5.1.1.1", S::integer32, 0, {}, hundredthsOfInterval},
        {"25.5.1.1.2", S::integer32, 0, {}, sum},
        {"25.6.1", S::timeTicks, 0, {{15, 1}}, lastChange},
        {"25.6.2", S::timeTicks, 0, {{15, 1}}, lastUpdate},
        {"25.6.3.1.1", S::integer32, 0, {}, ordinal},
        {"25.6.3.1.2", S::octets, 64},
        {"25.6.3.1.3", S::objectId, 0, {}, firstValue, {}, "", noObject},
        {"25.6.3.1.4", S::integer32, 0, {}, translated, installedType, "", "1", "1"},
        {"25.6.3.1.5", S::dateAndTime, 0, {}, firstValue, {}, "", noDate},
        // ENTITY-MIB. The types that vendors name are no object identifiers.
        {"47.1.1.1.1.1", S::integer32, 0, {}, firstValue, {}, "", nullptr, nullptr, Access::notAccessible},
        {"47.1.1.1.1.2", S::octets, 255, {{0, 1}, {26, 11}, {26, 12}, {27, 11}, {27, 12}}, joinedValues},
        {"47.1.1.1.1.3", S::objectId, 0, {}, firstValue, {}, "", noObject, noObject},
        {"47.1.1.1.1.4", S::integer32, 0, {}, firstValue, {}, "", "0"},
        {"47.1.1.1.1.5", S::integer32, 0, {{27, 4}}, physicalClass},
        {"47.1.1.1.1.6", S::integer32, 0, {}, firstValue, {}, "", "-1"},
        {"47.1.1.1.1.11", S::octets, 32},
        {"47.1.1.1.1.14", S::octets, 32, {}, firstValue, {}, "", "", nullptr, readWrite},
        {"47.1.1.1.1.15", S::octets, 32, {}, firstValue, {}, "", "", nullptr, readWrite},
        {"47.1.3.3.1.1", S::integer32, 0, {{0, 0}, {27, 0}}},
        {"47.1.4.1", S::timeTicks, 0, {{0, 0}}, lastChange}};
    return rules;
}

// clang-format on

ObjectRule derivedRule(const agent::Attribute& attribute) {
    switch (attribute.kind) {
    case agent::Kind::counter:
        return {attribute.mib.oid, Syntax::counter32};
    case agent::Kind::gauge:
        return {attribute.mib.oid, Syntax::gauge32};
    case agent::Kind::date:
        return {attribute.mib.oid, Syntax::dateAndTime};
    case agent::Kind::flag:
        return {attribute.mib.oid, Syntax::truthValue};
    case agent::Kind::key:
    case agent::Kind::text:
        return {attribute.mib.oid, Syntax::octets};
    default:
        return {attribute.mib.oid, Syntax::integer32};
    }
}

} // namespace snmp
