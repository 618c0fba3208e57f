#ifndef TESTS_SNMP_SNMP_AGENT_HPP
#define TESTS_SNMP_SNMP_AGENT_HPP
#include "support/Manager.hpp"
#include "support/Snmpd.hpp"

#include <cstdint>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace snmp_test {

/** Sub-identifiers below mib-2. */
using Below = std::vector<std::uint32_t>;

/** The values of a walk, as the commands print them: "INTEGER: 1". */
using Values = std::map<Below, std::string>;

/** Reads "4.1.0". */
Below below(const std::string& text);
std::string textOf(const Below& oid);

/** The objects that a command printed, in their order. Lines without an object below mib-2 continue a value.
 */
std::vector<std::pair<Below, std::string>> objectsIn(const std::string& output);

/** A real object manager, subagent and master of this host, in one temporary directory each. */
class SnmpAgent : public testing::Test {
protected:
    void SetUp() override;

    /** Starts the object manager, with options, and the subagent, with options. Returns when its values are
     * served. */
    void start(const std::vector<std::string>& managerOptions, const std::vector<std::string>& options);
    void startSubagent();
    /** Waits until an object of a context has a value. */
    bool hasValue(const std::string& context, const std::string& oid) const;

    /** The whole of mib-2 in a context. Fails if the walk does. */
    Values walk(const std::string& context, const std::string& command = "snmpbulkwalk") const;
    /** One object, below mib-2, as a command prints it; the error text if it fails. */
    std::string get(const std::string& oid, const std::string& context = "owb") const;
    support::ProgramResult set(const std::vector<std::string>& arguments) const;

    std::optional<support::Snmpd> snmpd;
    std::optional<support::Manager> manager;
    std::optional<support::Daemon> subagent;

private:
    std::vector<std::string> m_command;
};

} // namespace snmp_test
#endif
