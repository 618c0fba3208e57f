#ifndef TESTS_SUPPORT_SNMPD_HPP
#define TESTS_SUPPORT_SNMPD_HPP
#include "support/Program.hpp"
#include "support/TempDir.hpp"

#include <optional>
#include <string>
#include <vector>

namespace support {

/** Says why net-snmp's programs cannot run, or returns "" if they can. scripts/unpack downloads them. A test
 * that needs them starts with if (const std::string reason = snmpToolsMissing(); !reason.empty())
 *         GTEST_SKIP() << reason;
 */
std::string snmpToolsMissing();

/** The arguments of a command that select version, credentials and context: "" (the default) or "owb". */
std::vector<std::string> v2c(const std::string& context);
/** The same for a user with SHA-256 and AES, and for any context. */
std::vector<std::string> v3(const std::string& context);

/**
 * net-snmp's snmpd, as the master of AgentX subagents, on a loopback port. Socket, settings, state and log
 * are in a temporary directory. All clients see and may write every object. A request for a context in which
 * no subagent has registered an object gets no answer. The destructor kills it.
 */
class Snmpd {
public:
    /** Starts it, with further lines of snmpd.conf. Returns when it answers. Throws std::runtime_error with
     * its log if it does not answer within 30 s. */
    explicit Snmpd(const std::vector<std::string>& settings = {});

    /** The path of the socket on which the master accepts subagents. */
    std::string masterSocket() const { return m_directory.file("master"); }
    /** Where it listens, in the form that the commands take. */
    const std::string& address() const { return m_address; }
    pid_t pid() const { return m_process->pid(); }
    std::string log() const { return readFile(m_directory.file("log")); }

    /** Kills it. The socket stays, as after a crash. */
    void kill();
    /** Starts it again after kill(), with the same port and socket. Throws as the constructor does. */
    void start();

    /** Runs snmpget, snmpwalk, snmpbulkwalk, snmpset or another command, for example
     *     run("snmpget", v2c("owb"), {".1.3.6.1.2.1.1.5.0"}).
     * The arguments follow the address; options may be among them. Object identifiers and enumerations are
     * printed as numbers. */
    ProgramResult run(const std::string& command, const std::vector<std::string>& access,
                      const std::vector<std::string>& arguments) const;
    /** Runs snmptable with the texts of the standard MIBs. The arguments are options and a name or number of
     * a table. Prints fields separated by "|". Enumerations have their names. */
    ProgramResult table(const std::vector<std::string>& access,
                        const std::vector<std::string>& arguments) const;

private:
    std::vector<std::string> program(const std::string& path, const std::string& mibs) const;

    TempDir m_directory;
    std::string m_address;
    std::optional<Daemon> m_process;
};

} // namespace support
#endif
