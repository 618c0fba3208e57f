/* Reads one process. */
#include "QAV_UnixProcessAPI.hpp"

#include "ProcFile.hpp"
#include "Scanner.hpp"
#include "Sources.hpp"
#include "StatLine.hpp"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <unistd.h>

namespace {

using inventory::ProcFile;
using inventory::ProcLines;
using inventory::Scanner;
using inventory::StatLine;
typedef QAV_UnixProcessAPI::tUnixProcess Process;

/* Paths of the files of one process. The ID is widened with its sign, so that a negative one names nothing.
 */
class ProcessFolder {
public:
    explicit ProcessFolder(const OpenWBEM::String& handle) {
        const long long id = std::strtol(handle.c_str(), NULL, 10);
        char number[32];
        std::snprintf(number, sizeof number, "/%llu/", static_cast<unsigned long long>(id));
        m_path = inventory::procFolder;
        m_path += number;
        m_size = m_path.size();
    }
    /* Valid until the next call. */
    const char* file(const char* name) {
        m_path.resize(m_size);
        m_path += name;
        return m_path.c_str();
    }

private:
    std::string m_path;
    std::string::size_type m_size;
};

OpenWBEM::String decimal(unsigned long long number) {
    char text[32];
    std::snprintf(text, sizeof text, "%llu", number);
    return OpenWBEM::String(text);
}

/* CIM_Process.ExecutionState for a state letter. */
unsigned short executionState(char letter) {
    switch (letter) {
    case 'R':
        return 3;
    case 'S':
        return 2;
    case 'D':
        return 5;
    case 'T':
        return 4;
    case 'Z':
        return 7;
    default:
        return 0;
    }
}

OpenWBEM::CIMDateTime cpuTime(const StatLine& stat) {
    const unsigned long long microsecondsPerTick =
        10000; /* agents count on it, whatever the system's tick is */
    return OpenWBEM::CIMDateTime(
        static_cast<OpenWBEM::UInt64>((stat.userTime + stat.systemTime) * microsecondsPerTick));
}

OpenWBEM::String linkTarget(const char* path) {
    char target[512];
    const ssize_t size = readlink(path, target, sizeof target);
    return size > 0 ? OpenWBEM::String(target, static_cast<std::size_t>(size)) : OpenWBEM::String();
}

/* Whether a line begins with a text. */
template <std::size_t size>
bool beginsWith(const char* line, std::size_t lineSize, const char (&text)[size]) {
    return lineSize >= size - 1 && std::memcmp(line, text, size - 1) == 0;
}

/* The number behind the first word of a text; the value stays when there is none. */
bool secondNumber(const char* text, std::size_t size, unsigned long long& value) {
    Scanner in(text, size);
    return in.skipWord() && in.number(value);
}

/* The second number of "Uid:" and "Gid:" is the effective ID, and that is what is wanted. */
bool takeIdentity(const char* line, std::size_t size, Process& process) {
    const std::size_t key = sizeof "Uid:" - 1;
    if (beginsWith(line, size, "Uid:"))
        secondNumber(line + key, size - key, process.realUserID);
    else if (beginsWith(line, size, "Gid:"))
        secondNumber(line + key, size - key, process.processGroupID);
    else
        return false;
    return true;
}

bool takeSize(const char* line, std::size_t size, Process& process) {
    unsigned long long kilobytes = 0;
    if (beginsWith(line, size, "VmExe:") || beginsWith(line, size, "VmLib:")) {
        if (secondNumber(line, size, kilobytes))
            process.realText += kilobytes;
    } else if (beginsWith(line, size, "VmData:")) {
        secondNumber(line, size, process.realData);
    } else if (beginsWith(line, size, "VmStk:")) {
        secondNumber(line, size, process.realStack);
    } else {
        return false;
    }
    return true;
}

/* Reads a status file as far as it has lines that are wanted. False when it cannot be opened. */
bool readStatus(const char* path, bool isInformation, Process& process) {
    ProcFile file(path);
    if (!file.isOpen())
        return false;
    int missing = isInformation ? 2 : 4;
    ProcLines lines(file);
    const char* line;
    std::size_t size;
    while (missing > 0 && lines.next(line, size))
        if (isInformation ? takeIdentity(line, size, process) : takeSize(line, size, process))
            --missing;
    return true;
}

/* Reads a stat file. The texts of the result are in the buffer. */
bool readStat(const char* path, char (&buffer)[inventory::longestLine], StatLine& stat) {
    ProcFile file(path);
    if (!file.isOpen())
        return false;
    const std::size_t size = file.read(buffer, sizeof buffer);
    const void* const end = std::memchr(buffer, '\n', size);
    return parse(buffer, end ? static_cast<std::size_t>(static_cast<const char*>(end) - buffer) : size, stat);
}

} // namespace

int QAV_UnixProcessAPI::internalInit(tProcessInfoType type, const OpenWBEM::String& handle) {
    ProcessFolder folder(handle);
    char buffer[inventory::longestLine];
    StatLine stat;
    if (!readStat(folder.file("stat"), buffer, stat))
        return 0;
    tUnixProcess process = tUnixProcess();
    process.handle = handle;
    process.name = OpenWBEM::String(stat.name, stat.nameSize);
    const bool isInformation = type == eProcessInformation;
    if (isInformation) {
        process.parentProcessID = decimal(stat.parent);
        process.executionState = executionState(stat.state);
        if (!readRunParameters(folder.file("cmdline"), process))
            return 0;
        process.modulePath = linkTarget(folder.file("exe"));
        process.runType = determineSWType(process.name);
    } else {
        process.totalCpuTime = cpuTime(stat);
    }
    if (!readStatus(folder.file("status"), isInformation, process))
        return 0;
    m_processes.push_back(process);
    return 1;
}

int QAV_UnixProcessAPI::readRunParameters(const char* path, tUnixProcess& record) {
    ProcFile file(path);
    if (!file.isOpen())
        return 0;
    char buffer[inventory::longestLine + 1];
    std::size_t size = file.read(buffer, inventory::longestLine);
    if (const void* const lineEnd = std::memchr(buffer, '\n', size))
        size = static_cast<std::size_t>(static_cast<const char*>(lineEnd) + 1 - buffer);
    buffer[size] = '\0';
    record.parameters.clear();
    if (buffer[0] == '\0')
        return 1;
    const char* const end = buffer + size;
    for (const char* text = buffer + std::strlen(buffer) + 1; text < end && *text != '\0';
         text += std::strlen(text) + 1)
        record.parameters.push_back(OpenWBEM::String(text));
    return 1;
}
