/* Reads one process. */
#include "QAV_UnixProcessAPI.hpp"

#include "Sources.hpp"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace {

typedef QAV_UnixProcessAPI::tUnixProcess Process;

/* With its end and a NUL. A longer line counts as several. */
const int longestLine = 512;

/* A file of a process, open as long as this lives. */
class ProcFile {
public:
    explicit ProcFile(const std::string& path)
        : m_file(std::fopen(path.c_str(), "re")) {
        if (m_file)
            std::setvbuf(m_file, m_buffer, _IOFBF, sizeof m_buffer);
    }
    ~ProcFile() {
        if (m_file)
            std::fclose(m_file);
    }

    bool isOpen() const { return m_file != NULL; }
    /* Reads into longestLine bytes. False at the end of the file, and when it cannot be read. */
    bool readLine(char* line) { return std::fgets(line, longestLine, m_file) != NULL; }

private:
    ProcFile(const ProcFile&);
    ProcFile& operator=(const ProcFile&);

    std::FILE* m_file;
    char m_buffer[4096]; /* one of stdio's own costs fstat(2), and read(2) again every 1,024 bytes */
};

/* What is taken of a stat file, proc(5). */
struct Stat {
    char name[longestLine];
    char state;
    unsigned long long parent;
    unsigned long long userTime;   /* clock ticks */
    unsigned long long systemTime; /* clock ticks */
};

/*
 * False when the file cannot be opened or does not have all fields. The name ends at the first ")", even if
 * the name itself contains it: the fields that follow are then wrong or missing.
 */
bool readStat(const std::string& path, Stat& stat) {
    ProcFile file(path);
    char line[longestLine];
    if (!file.isOpen() || !file.readLine(line))
        return false;
    /* NOLINTNEXTLINE(cert-err34-c): a number that is too large counts as the largest. */
    return std::sscanf(line, "%*d (%511[^)]) %c %llu %*s %*s %*s %*s %*s %*s %*s %*s %*s %llu %llu",
                       stat.name, &stat.state, &stat.parent, &stat.userTime, &stat.systemTime) == 5;
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

OpenWBEM::CIMDateTime cpuTime(const Stat& stat) {
    const unsigned long long microsecondsPerTick =
        10000; /* agents count on it, whatever the system's tick is */
    return OpenWBEM::CIMDateTime(
        static_cast<OpenWBEM::UInt64>((stat.userTime + stat.systemTime) * microsecondsPerTick));
}

OpenWBEM::String linkTarget(const std::string& path) {
    char target[512];
    const ssize_t size = readlink(path.c_str(), target, sizeof target);
    return size > 0 ? OpenWBEM::String(target, static_cast<std::size_t>(size)) : OpenWBEM::String();
}

template <std::size_t size>
bool beginsWith(const char* line, const char (&key)[size]) {
    return std::memcmp(line, key, size - 1) == 0;
}

/* The number behind the first word of a text. False, leaving the value alone, when there is none. */
bool secondNumber(const char* text, unsigned long long& value) {
    /* NOLINTNEXTLINE(cert-err34-c): a number that is too large counts as the largest. */
    return std::sscanf(text, "%*s %llu", &value) == 1;
}

/* The second number of "Uid:" and "Gid:" is the effective ID, and that is what is wanted. */
bool takeIdentity(const char* line, Process& process) {
    const std::size_t key = sizeof "Uid:" - 1;
    if (beginsWith(line, "Uid:"))
        secondNumber(line + key, process.realUserID);
    else if (beginsWith(line, "Gid:"))
        secondNumber(line + key, process.processGroupID);
    else
        return false;
    return true;
}

bool takeSize(const char* line, Process& process) {
    unsigned long long kilobytes = 0;
    if (beginsWith(line, "VmExe:") || beginsWith(line, "VmLib:")) {
        if (secondNumber(line, kilobytes))
            process.realText += kilobytes;
    } else if (beginsWith(line, "VmData:")) {
        secondNumber(line, process.realData);
    } else if (beginsWith(line, "VmStk:")) {
        secondNumber(line, process.realStack);
    } else {
        return false;
    }
    return true;
}

/* Reads a status file as far as it has lines that are wanted. False when it cannot be opened. */
bool readStatus(const std::string& path, bool isInformation, Process& process) {
    ProcFile file(path);
    if (!file.isOpen())
        return false;
    char line[longestLine] = "";
    int missing = isInformation ? 2 : 4;
    while (missing > 0 && file.readLine(line))
        if (isInformation ? takeIdentity(line, process) : takeSize(line, process))
            --missing;
    return true;
}

/* The ID is widened with its sign, so that a negative one names nothing. */
std::string folderOf(const OpenWBEM::String& handle) {
    const long long id = std::strtol(handle.c_str(), NULL, 10);
    return inventory::procFolder + ("/" + std::to_string(static_cast<unsigned long long>(id)));
}

} // namespace

int QAV_UnixProcessAPI::internalInit(tProcessInfoType type, const OpenWBEM::String& handle) {
    const std::string folder = folderOf(handle);
    struct stat status;
    Stat stat;
    if (lstat(folder.c_str(), &status) != 0 || !readStat(folder + "/stat", stat))
        return 0;
    tUnixProcess process = tUnixProcess();
    process.handle = handle;
    process.name = stat.name;
    const bool isInformation = type == eProcessInformation;
    if (isInformation) {
        process.parentProcessID = OpenWBEM::String(static_cast<OpenWBEM::UInt64>(stat.parent));
        process.executionState = executionState(stat.state);
        if (!readRunParameters((folder + "/cmdline").c_str(), process))
            return 0;
        process.modulePath = linkTarget(folder + "/exe");
        process.runType = determineSWType(process.name);
    } else {
        process.totalCpuTime = cpuTime(stat);
    }
    if (!readStatus(folder + "/status", isInformation, process))
        return 0;
    m_processes.push_back(process);
    return 1;
}

int QAV_UnixProcessAPI::readRunParameters(const char* path, tUnixProcess& record) {
    ProcFile file(path);
    if (!file.isOpen())
        return 0;
    /* Zero bytes, which separate the texts, also follow the last one: the list ends there. */
    char texts[longestLine + 1] = "";
    const bool isRead = file.readLine(texts);
    record.parameters.clear();
    if (!isRead || texts[0] == '\0')
        return 1;
    for (const char* text = texts + std::strlen(texts) + 1; *text != '\0'; text += std::strlen(text) + 1)
        record.parameters.push_back(OpenWBEM::String(text));
    return 1;
}
