// The objects against the MIBs, as python3-pysnmp4-mibs has them. scripts/unpack fetches it.
#include "snmp/Loop.hpp"
#include "snmp/mapping/Mapping.hpp"

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>

using namespace snmp;
using namespace snmp_test;

namespace {

const std::filesystem::path modules = MIB_MODULES;

/** An object as a module declares it. */
struct Declared {
    std::string name;
    std::string type;
    /** The rest of the declaration: constraints and named values. */
    std::string detail;
    std::string access;
};

/** Textual conventions and their types, as "class KBytes(Integer32):" declares them. */
using Conventions = std::map<std::string, std::string>;
using Declarations = std::map<Oid, Declared>;

Oid oidIn(const std::string& tuple) {
    Oid oid;
    static const std::regex number("[0-9]+");
    for (auto match = std::sregex_iterator(tuple.begin(), tuple.end(), number);
         match != std::sregex_iterator(); ++match)
        oid.push_back(static_cast<std::uint32_t>(std::stoul(match->str())));
    return oid;
}

void read(const char* module, Declarations& objects, Conventions& conventions) {
    static const std::regex object(
        R"re(^(\w+) = Mib(?:TableColumn|Scalar)\(\(([0-9, ]+)\), (\w+)\(\)(.*)\.setMaxAccess\("(\w+)"\).*)re");
    static const std::regex convention(R"(^class (\w+)\((?:TextualConvention, )?(\w+)\):)");
    std::ifstream file(modules / (std::string(module) + ".py"));
    ASSERT_TRUE(file) << module;
    std::smatch match;
    for (std::string line; std::getline(file, line);) {
        if (std::regex_match(line, match, object))
            objects[oidIn(match[2])] = {match[1], match[3], match[4], match[5]};
        else if (std::regex_search(line, match, convention))
            conventions[match[1]] = match[2];
    }
}

Type typeOfSyntax(std::string type, const Conventions& conventions) {
    static const std::map<std::string, Type> types = {{"Integer", Type::integer},
                                                      {"Integer32", Type::integer},
                                                      {"TruthValue", Type::integer},
                                                      {"IANAifType", Type::integer},
                                                      {"OctetString", Type::octetString},
                                                      {"DisplayString", Type::octetString},
                                                      {"SnmpAdminString", Type::octetString},
                                                      {"PhysAddress", Type::octetString},
                                                      {"DateAndTime", Type::octetString},
                                                      {"ObjectIdentifier", Type::objectIdentifier},
                                                      {"AutonomousType", Type::objectIdentifier},
                                                      {"IpAddress", Type::ipAddress},
                                                      {"Counter32", Type::counter32},
                                                      {"Gauge32", Type::gauge32},
                                                      {"Unsigned32", Type::gauge32},
                                                      {"TimeTicks", Type::timeTicks},
                                                      {"TimeStamp", Type::timeTicks},
                                                      {"Counter64", Type::counter64}};
    for (auto found = conventions.find(type); found != conventions.end(); found = conventions.find(type))
        type = found->second;
    const auto found = types.find(type);
    return found == types.end() ? Type::null : found->second;
}

class Mibs : public testing::Test {
protected:
    void SetUp() override {
        if (!std::filesystem::exists(modules / "IF-MIB.py"))
            GTEST_SKIP() << modules << " does not exist: scripts/unpack snmp";
        for (const char* module :
             {"IF-MIB", "IP-MIB", "TCP-MIB", "UDP-MIB", "HOST-RESOURCES-MIB", "ENTITY-MIB"})
            read(module, m_objects, m_conventions);
        ASSERT_GT(m_objects.size(), 300u);
    }

    /** Calls a function with each column that a module declares. */
    template <class Check>
    void eachColumn(Check check) {
        for (const TableMapping& mapping : tableMappings()) {
            for (const Column& column : mapping.columns) {
                const auto found = m_objects.find(joined(mapping.entry, {column.number}));
                if (found != m_objects.end())
                    check(mapping, column, found->second);
            }
        }
    }

    Declarations m_objects;
    Conventions m_conventions;
};

/** The largest size that "ValueSizeConstraint(0, 64)" allows. */
std::size_t largestSize(const std::string& detail) {
    std::smatch match;
    static const std::regex size(R"(ValueSizeConstraint\(\d+, (\d+)\))");
    return std::regex_search(detail, match, size) ? std::stoul(match[1]) : defaultSize;
}

} // namespace

TEST_F(Mibs, EachObjectOutsideTheSystemGroupIsDeclared) {
    for (const TableMapping& mapping : tableMappings()) {
        for (const Column& column : mapping.columns) {
            const Oid oid = joined(mapping.entry, {column.number});
            if (!startsWith(oid, below("1"))) {
                EXPECT_EQ(m_objects.count(oid), 1u) << text(oid);
            }
        }
    }
}

TEST_F(Mibs, EachObjectHasTheDeclaredType) {
    eachColumn([this](const TableMapping&, const Column& column, const Declared& declared) {
        EXPECT_EQ(typeOf(column.rule.syntax), typeOfSyntax(declared.type, m_conventions))
            << declared.name << " is " << declared.type;
    });
}

TEST_F(Mibs, NoTextIsLongerThanItsObject) {
    eachColumn([](const TableMapping&, const Column& column, const Declared& declared) {
        if (column.rule.syntax == Syntax::octets) {
            EXPECT_EQ(column.rule.size, largestSize(declared.detail)) << declared.name;
        }
    });
}

TEST_F(Mibs, TheCatalogueNamesEachDerivedObjectAsItsModuleDoes) {
    for (const agent::Attribute& attribute : agent::attributes) {
        if (*attribute.mib.oid == '\0')
            continue;
        const auto found = m_objects.find(below(attribute.mib.oid));
        if (found != m_objects.end()) {
            EXPECT_EQ(attribute.mib.name, found->second.name);
        }
    }
}

TEST_F(Mibs, CodesAreTranslatedToDeclaredOnes) {
    eachColumn([](const TableMapping&, const Column& column, const Declared& declared) {
        for (const Code& code : column.rule.codes) {
            if (column.rule.syntax == Syntax::integer32 &&
                declared.detail.find("NamedValues") != std::string::npos) {
                EXPECT_NE(declared.detail.find(std::string(", ") + code.to + ")"), std::string::npos)
                    << declared.name << " " << code.to;
            }
        }
    });
}

TEST_F(Mibs, OnlyObjectsThatMayBeWrittenAreWritable) {
    eachColumn([](const TableMapping&, const Column& column, const Declared& declared) {
        if (column.rule.access == Access::readWrite) {
            EXPECT_EQ(declared.access, "readwrite") << declared.name;
        }
        EXPECT_NE(declared.access, "noaccess") << declared.name;
    });
}
