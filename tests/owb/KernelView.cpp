#include "KernelView.hpp"

#include "support/TempDir.hpp"

#include <cstdio>
#include <filesystem>
#include <map>
#include <sstream>

namespace fs = std::filesystem;

namespace {

// The interval of a number of clock ticks of 10 ms.
std::string interval(unsigned long long ticks) {
    const unsigned long long seconds = ticks / 100;
    char text[64];
    std::snprintf(text, sizeof text, "%08llu%02llu%02llu%02llu.%02llu0000:000", seconds / 86400,
                  seconds / 3600 % 24, seconds / 60 % 60, seconds % 60, ticks % 100);
    return text;
}

// The arguments up to the first empty one or the end of the first line.
std::vector<std::string> argumentsOf(const std::string& directory) {
    std::istringstream in(support::readFile(directory + "cmdline").substr(0, 511));
    std::vector<std::string> arguments;
    for (std::string text; std::getline(in, text, '\0') && !text.empty();) {
        const std::size_t lineEnd = text.find('\n');
        arguments.push_back(text.substr(0, lineEnd == std::string::npos ? lineEnd : lineEnd + 1));
        if (lineEnd != std::string::npos)
            break;
    }
    return arguments;
}

} // namespace

KernelView::KernelView(pid_t pid) {
    m_record.handle = std::to_string(pid);
    const std::string directory = "/proc/" + m_record.handle + "/";
    readStat(directory);
    readStatus(directory);
    std::error_code noProgram;
    m_record.modulePath = fs::read_symlink(directory + "exe", noProgram).string();
    m_record.parameters = argumentsOf(directory);
    if (!m_record.parameters.empty())
        m_record.parameters.erase(m_record.parameters.begin());
}

void KernelView::readStat(const std::string& directory) {
    const std::string line = support::readFile(directory + "stat");
    const std::size_t nameEnd = line.rfind(')'); // the name may contain others
    m_record.name = line.substr(line.find('(') + 1, nameEnd - line.find('(') - 1);
    std::istringstream in(line.substr(nameEnd + 1));
    std::vector<std::string> fields; // the first is the third of proc(5)
    for (std::string field; in >> field;)
        fields.push_back(field);
    m_state = fields.at(0).at(0);
    m_record.executionState =
        std::map<char, unsigned short>{{'R', 3}, {'S', 2}, {'D', 5}, {'T', 4}, {'Z', 7}}[m_state];
    m_record.parentProcessID = fields.at(1);
    m_record.totalCpuTime = interval(std::stoull(fields.at(11)) + std::stoull(fields.at(12)));
}

void KernelView::readStatus(const std::string& directory) {
    std::istringstream in(support::readFile(directory + "status"));
    std::map<std::string, std::vector<unsigned long long>> numbers;
    for (std::string line; std::getline(in, line);) {
        std::istringstream words(line.substr(line.find(':') + 1));
        std::vector<unsigned long long>& values = numbers[line.substr(0, line.find(':'))];
        for (unsigned long long value; words >> value;)
            values.push_back(value);
        values.resize(4);
    }
    m_record.realUserID = numbers.at("Uid")[1];
    m_record.processGroupID = numbers.at("Gid")[1];
    for (const char* const key : {"VmExe", "VmLib", "VmData", "VmStk"})
        numbers[key].resize(4); // a zombie has none
    m_record.realText = numbers["VmExe"][0] + numbers["VmLib"][0];
    m_record.realData = numbers["VmData"][0];
    m_record.realStack = numbers["VmStk"][0];
}

std::set<std::string> kernelProcesses() {
    std::set<std::string> ids;
    for (const fs::directory_entry& entry : fs::directory_iterator("/proc")) {
        const std::string name = entry.path().filename().string();
        if (name.find_first_not_of("0123456789") != std::string::npos)
            continue;
        try {
            const std::string line = support::readFile(entry.path().string() + "/stat");
            if (line.find(')') == line.rfind(')'))
                ids.insert(name);
        } catch (const std::runtime_error&) { // it has ended
        }
    }
    return ids;
}
