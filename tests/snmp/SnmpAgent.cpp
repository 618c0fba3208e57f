#include "snmp/SnmpAgent.hpp"

#include <chrono>
#include <sstream>
#include <thread>

namespace snmp_test {
namespace {

const std::string mib2 = ".1.3.6.1.2.1";

} // namespace

Below below(const std::string& text) {
    Below oid;
    std::istringstream in(text);
    for (std::string id; std::getline(in, id, '.');)
        oid.push_back(static_cast<std::uint32_t>(std::stoul(id)));
    return oid;
}

std::string textOf(const Below& oid) {
    std::string text;
    for (const std::uint32_t id : oid)
        text += (text.empty() ? "" : ".") + std::to_string(id);
    return text;
}

std::vector<std::pair<Below, std::string>> objectsIn(const std::string& output) {
    std::vector<std::pair<Below, std::string>> objects;
    std::istringstream in(output);
    for (std::string line; std::getline(in, line);) {
        const std::size_t equals = line.find(" = ");
        if (line.rfind(mib2 + ".", 0) == 0 && equals != std::string::npos)
            objects.emplace_back(below(line.substr(mib2.size() + 1, equals - mib2.size() - 1)),
                                 line.substr(equals + 3));
        else if (!objects.empty())
            objects.back().second += "\n" + line;
    }
    return objects;
}

void SnmpAgent::SetUp() {
    if (const std::string reason = support::snmpToolsMissing(); !reason.empty())
        GTEST_SKIP() << reason;
    snmpd.emplace();
}

void SnmpAgent::start(const std::vector<std::string>& managerOptions,
                      const std::vector<std::string>& options) {
    manager.emplace(managerOptions);
    m_command = {OWB_AGENTX, "--master", snmpd->masterSocket(), "--url", manager->url()};
    m_command.insert(m_command.end(), options.begin(), options.end());
    startSubagent();
    // sysServices: snmpd has none itself. The slowest subject comes last.
    const bool isDefault = options.size() > 1 && options[0] == "--context" && options[1].empty();
    ASSERT_TRUE(hasValue(isDefault ? "" : "owb", "1.7.0"));
    ASSERT_TRUE(hasValue(isDefault ? "" : "owb", "25.6.3.1.2.1"));
}

void SnmpAgent::startSubagent() {
    subagent.emplace(m_command);
}

bool SnmpAgent::hasValue(const std::string& context, const std::string& oid) const {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (std::chrono::steady_clock::now() < end) {
        const support::ProgramResult got =
            snmpd->run("snmpget", support::v2c(context), {"-t", "1", "-r", "0", mib2 + "." + oid});
        if (got.exitCode == 0 && got.out.find("No Such") == std::string::npos)
            return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    return false;
}

Values SnmpAgent::walk(const std::string& context, const std::string& command) const {
    const support::ProgramResult walked = snmpd->run(command, support::v2c(context), {mib2});
    EXPECT_EQ(0, walked.exitCode) << walked.err;
    auto objects = objectsIn(walked.out);
    // The last line is for the end of the walk.
    if (!objects.empty() && objects.back().second.rfind("No more variables", 0) == 0)
        objects.pop_back();
    for (std::size_t i = 1; i < objects.size(); ++i)
        EXPECT_LT(objects[i - 1].first, objects[i].first) << command;
    return Values(objects.begin(), objects.end());
}

std::string SnmpAgent::get(const std::string& oid, const std::string& context) const {
    const support::ProgramResult got = snmpd->run("snmpget", support::v2c(context), {mib2 + "." + oid});
    const auto objects = objectsIn(got.out);
    return got.exitCode == 0 && objects.size() == 1 ? objects[0].second : got.err;
}

support::ProgramResult SnmpAgent::set(const std::vector<std::string>& arguments) const {
    return snmpd->run("snmpset", support::v2c("owb"), arguments);
}

} // namespace snmp_test
