#include "Processes.hpp"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

namespace inventory {
namespace {

class Directory {
public:
    explicit Directory(const char* path)
        : m_directory(opendir(path)) {}
    ~Directory() {
        if (m_directory)
            closedir(m_directory);
    }
    /* The next name; null at the end, and if the directory cannot be opened. */
    const char* next() {
        const dirent* const entry = m_directory ? readdir(m_directory) : NULL;
        return entry ? entry->d_name : NULL;
    }

private:
    Directory(const Directory&);
    Directory& operator=(const Directory&);

    DIR* m_directory;
};

/* Bytes of a line with newline and NUL. A longer line counts as several. */
const int lineSize = 512;

/* A file of a process, open as long as this lives. */
class ProcFile {
public:
    explicit ProcFile(const char* path)
        : m_file(std::fopen(path, "re")) {
        if (m_file)
            std::setvbuf(m_file, m_buffer, _IOFBF, sizeof m_buffer);
    }
    ~ProcFile() {
        if (m_file)
            std::fclose(m_file);
    }

    bool isOpen() const { return m_file != NULL; }
    /* Reads into lineSize bytes. False at the end of the file, and when it cannot be read. */
    bool readLine(char* line) { return std::fgets(line, lineSize, m_file) != NULL; }

private:
    ProcFile(const ProcFile&);
    ProcFile& operator=(const ProcFile&);

    std::FILE* m_file;
    char m_buffer[4096]; /* stdio's own buffer costs an fstat(2), and a read(2) every 1,024 bytes */
};

/* The used fields of a stat file, proc(5). */
struct Stat {
    char name[lineSize];
    char state;
    unsigned long long parent;
    unsigned long long userTime;   /* clock ticks */
    unsigned long long systemTime; /* clock ticks */
};

/*
 * False if the file cannot be opened or lacks a field. The name ends at the first ")", even if the name
 * itself contains one: the fields after it are then wrong or missing.
 */
bool readStat(const char* path, Stat& stat) {
    ProcFile file(path);
    char line[lineSize];
    if (!file.isOpen() || !file.readLine(line))
        return false;
    /* NOLINTNEXTLINE(cert-err34-c): a number that is too large counts as the largest. */
    return std::sscanf(line,
                       "%*d (%511[^)]) %c %llu %*s %*s %*s %*s %*s %*s %*s %*s %*s %llu %llu "
                       "%*s %*s %*s %*s %*s %*s %*s %*s",
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
    const unsigned long long microsecondsPerTick = 10000; /* agents expect it, even if the system's differs */
    return OpenWBEM::CIMDateTime(
        static_cast<OpenWBEM::UInt64>((stat.userTime + stat.systemTime) * microsecondsPerTick));
}

OpenWBEM::String linkTarget(const char* path) {
    char target[512];
    const ssize_t size = readlink(path, target, sizeof target);
    return size > 0 ? OpenWBEM::String(target, static_cast<std::size_t>(size)) : OpenWBEM::String();
}

template <std::size_t size>
bool beginsWith(const char* line, const char (&key)[size]) {
    return std::memcmp(line, key, size - 1) == 0;
}

/* The number after the first word of a text. Without one, returns false and leaves the value unchanged. */
bool secondNumber(const char* text, unsigned long long& value) {
    /* NOLINTNEXTLINE(cert-err34-c): a number that is too large counts as the largest. */
    return std::sscanf(text, "%*s %llu", &value) == 1;
}

/* The effective IDs: the second numbers of the lines "Uid:" and "Gid:". */
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

/* Reads a status file up to the last line that is used. False if it cannot be opened. */
bool readStatus(const char* path, bool isInformation, Process& process) {
    ProcFile file(path);
    if (!file.isOpen())
        return false;
    char line[lineSize] = "";
    int missing = isInformation ? 2 : 4;
    while (missing > 0 && file.readLine(line))
        if (isInformation ? takeIdentity(line, process) : takeSize(line, process))
            --missing;
    return true;
}

/* The sign is extended, so that no directory has the name of a negative ID. */
std::string directoryOf(const Sources& sources, const OpenWBEM::String& handle) {
    const long long id = std::strtol(handle.c_str(), NULL, 10);
    return sources.procDirectory + "/" + std::to_string(static_cast<unsigned long long>(id));
}

/* The fields of the mode eProcessInformation that are not in the status file. */
bool describe(const Sources& sources, const std::string& directory, const Stat& stat, Process& process) {
    process.parentProcessID = OpenWBEM::String(static_cast<OpenWBEM::UInt64>(stat.parent));
    process.executionState = executionState(stat.state);
    if (!readParameters((directory + "/cmdline").c_str(), process.parameters))
        return false;
    process.modulePath = linkTarget((directory + "/exe").c_str());
    process.runType = sources.runType(process.name);
    return true;
}

} // namespace

void readProcesses(const Sources& sources, QAV_UnixProcessAPI::tProcessInfoType type,
                   OpenWBEM::Array<Process>& table) {
    Directory directory(sources.procDirectory.c_str());
    while (const char* const name = directory.next())
        if (std::strtol(name, NULL, 10) != 0)
            readProcess(sources, type, OpenWBEM::String(name), table);
}

bool readProcess(const Sources& sources, QAV_UnixProcessAPI::tProcessInfoType type,
                 const OpenWBEM::String& handle, OpenWBEM::Array<Process>& table) {
    const bool isInformation = type == QAV_UnixProcessAPI::eProcessInformation;
    const std::string directory = directoryOf(sources, handle);
    struct stat status;
    Stat stat;
    if (lstat(directory.c_str(), &status) != 0 || !readStat((directory + "/stat").c_str(), stat))
        return false;
    Process process = Process();
    process.handle = handle;
    process.name = stat.name;
    if (!isInformation)
        process.totalCpuTime = cpuTime(stat);
    else if (!describe(sources, directory, stat, process))
        return false;
    if (!readStatus((directory + "/status").c_str(), isInformation, process))
        return false;
    table.push_back(process);
    return true;
}

bool readParameters(const char* path, OpenWBEM::StringArray& parameters) {
    ProcFile file(path);
    if (!file.isOpen())
        return false;
    /* Zero bytes separate the texts. The rest of the buffer is zero, too, so an empty text ends the list. */
    char texts[lineSize + 1] = "";
    const bool isRead = file.readLine(texts);
    parameters.clear();
    if (!isRead || texts[0] == '\0')
        return true;
    for (const char* text = texts + std::strlen(texts) + 1; *text != '\0'; text += std::strlen(text) + 1)
        parameters.push_back(OpenWBEM::String(text));
    return true;
}

} // namespace inventory
