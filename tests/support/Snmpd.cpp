#include "support/Snmpd.hpp"

#include <arpa/inet.h>
#include <csignal>
#include <filesystem>
#include <netinet/in.h>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>

namespace support {
namespace {

const std::string tools = SNMP_TOOLS;
const char* const mibModule = "STANDARD-MIBS";

const char* const defaultSettings = R"(master agentx
com2sec        default-context 127.0.0.1 default
com2sec -Cn owb owb-context    127.0.0.1 owb
group  all v2c default-context
group  all v2c owb-context
group  all usm tester
view   everything included .1
access all "" any noauth prefix everything everything none
createUser tester SHA-256 authentication AES encryption
dontLogTCPWrappersConnects yes
)";

// A UDP port of the loopback address that is free now. The kernel gives the next caller another one.
int freePort() {
    const int descriptor = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    const bool bound = descriptor >= 0 &&
                       ::bind(descriptor, reinterpret_cast<const sockaddr*>(&address), size) == 0 &&
                       ::getsockname(descriptor, reinterpret_cast<sockaddr*>(&address), &size) == 0;
    ::close(descriptor);
    if (!bound)
        throw std::runtime_error("there is no free UDP port");
    return ntohs(address.sin_port);
}

void append(std::vector<std::string>& command, const std::vector<std::string>& arguments) {
    command.insert(command.end(), arguments.begin(), arguments.end());
}

} // namespace

std::string snmpToolsMissing() {
    return std::filesystem::exists(tools + "/packages")
               ? std::string()
               : "net-snmp is not in " + tools + ": run scripts/unpack snmp";
}

std::vector<std::string> v2c(const std::string& context) {
    return {"-v2c", "-c", context.empty() ? "default" : context};
}

std::vector<std::string> v3(const std::string& context) {
    return {"-v3", "-l",  "authPriv", "-u",         "tester", "-a",   "SHA-256", "-A", "authentication",
            "-x",  "AES", "-X",       "encryption", "-n",     context};
}

Snmpd::Snmpd(const std::vector<std::string>& settings)
    : m_address("udp:127.0.0.1:" + std::to_string(freePort())) {
    std::string text = defaultSettings;
    text += "agentXSocket unix:" + masterSocket() + "\n";
    for (const std::string& line : settings)
        text += line + "\n";
    m_directory.write("snmpd.conf", text);
    std::filesystem::create_directories(m_directory.file("mibs"));
    start();
}

void Snmpd::kill() {
    m_process->signal(SIGKILL);
    m_process->wait();
}

void Snmpd::start() {
    std::vector<std::string> command = program("/usr/sbin/snmpd", "");
    // SMUX would listen on a fixed TCP port.
    append(command, {"-f", "-I", "-smux", "-C", "-c", m_directory.file("snmpd.conf"), "-Lf",
                     m_directory.file("log"), m_address});
    m_process.emplace(command);
    const std::string sysUpTime = ".1.3.6.1.2.1.1.3.0";
    if (run("snmpget", v2c(""), {"-t", "0.1", "-r", "300", sysUpTime}).exitCode != 0)
        throw std::runtime_error("snmpd does not answer: " + log());
}

std::vector<std::string> Snmpd::program(const std::string& path, const std::string& mibs) const {
    return {"/usr/bin/env",
            "LD_LIBRARY_PATH=" + tools + "/usr/lib/" HOST_TRIPLET,
            "SNMP_PERSISTENT_DIR=" + m_directory.file("state"),
            "SNMPCONFPATH=" + m_directory.file("none"), // not the settings of the machine or the user
            "MIBDIRS=" + m_directory.file("mibs"),
            "MIBS=" + mibs,
            tools + path};
}

ProgramResult Snmpd::run(const std::string& command, const std::vector<std::string>& access,
                         const std::vector<std::string>& arguments) const {
    std::vector<std::string> whole = program("/usr/bin/" + command, "");
    append(whole, {"-One"});
    append(whole, access);
    append(whole, {m_address});
    append(whole, arguments);
    return runProgram(whole);
}

ProgramResult Snmpd::table(const std::vector<std::string>& access,
                           const std::vector<std::string>& arguments) const {
    const std::string text = m_directory.file(std::string("mibs/") + mibModule + ".txt");
    if (!std::filesystem::exists(text)) {
        const ProgramResult made = runProgram({"/usr/bin/env", "python3", "-B", SNMP_MIB_TEXTS, tools, text});
        if (made.exitCode != 0)
            throw std::runtime_error("cannot write " + text + ": " + made.err);
    }
    std::vector<std::string> whole = program("/usr/bin/snmptable", mibModule);
    append(whole, {"-Cf", "|"});
    append(whole, access);
    append(whole, {m_address});
    append(whole, arguments);
    return runProgram(whole);
}

} // namespace support
