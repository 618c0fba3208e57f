/* The table of processes and its cursor. How one process is read: internalInit.cpp; how its program is
 * classified: determineSWType.cpp. */
#include "QAV_UnixProcessAPI.hpp"

#include "Sources.hpp"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <dirent.h>
#include <sblim_utilities.h>

namespace {

class Directory {
public:
    explicit Directory(const char* path)
        : m_directory(opendir(path)) {}
    ~Directory() {
        if (m_directory)
            closedir(m_directory);
    }
    /* The next name; null at the end, and when there is no such folder. */
    const char* next() {
        const dirent* const entry = m_directory ? readdir(m_directory) : NULL;
        return entry ? entry->d_name : NULL;
    }

private:
    Directory(const Directory&);
    Directory& operator=(const Directory&);

    DIR* m_directory;
};

void release(char**& lines) {
    if (lines)
        freeresultbuf(lines);
    lines = NULL;
}

/* Releases the lines of the software inventory at the end of its scope. */
class Release {
public:
    explicit Release(char**& lines)
        : m_lines(lines) {}
    ~Release() { release(m_lines); }

private:
    Release(const Release&);
    Release& operator=(const Release&);

    char**& m_lines;
};

/* The cursor has 16 bits, so there are processes that it does not reach. */
const short lastReachable = SHRT_MAX;

template <class Field, class Result>
int copy(const QAV_UnixProcessAPI::tUnixProcess* process, Field field, Result& result) {
    if (!process)
        return 0;
    result = process->*field;
    return 1;
}

} // namespace

QAV_UnixProcessAPI::QAV_UnixProcessAPI()
    : m_swInventory(NULL)
    , m_swInventoryRead(false)
    , m_current(-1) {}

QAV_UnixProcessAPI::~QAV_UnixProcessAPI() {
    release(m_swInventory);
}

void QAV_UnixProcessAPI::init(tProcessInfoType type) {
    m_processes.clear();
    release(m_swInventory);
    m_swInventoryRead = false;
    const Release atEnd(m_swInventory);
    Directory folder(inventory::procFolder);
    while (const char* const name = folder.next())
        if (std::strtol(name, NULL, 10) != 0)
            internalInit(type, OpenWBEM::String(name));
}

int QAV_UnixProcessAPI::init(tProcessInfoType type, const OpenWBEM::String& handle) {
    release(m_swInventory);
    m_swInventoryRead = false;
    const Release atEnd(m_swInventory);
    return internalInit(type, handle);
}

void QAV_UnixProcessAPI::begin() {
    m_current = -1;
}

void QAV_UnixProcessAPI::next() {
    if (m_current < lastReachable)
        ++m_current;
}

int QAV_UnixProcessAPI::hasNext() {
    const OpenWBEM::Array<tUnixProcess>& processes = m_processes;
    const long reachable = std::min(static_cast<long>(processes.size()), lastReachable + 1L);
    return m_current + 1 < reachable;
}

void QAV_UnixProcessAPI::end() {}

const QAV_UnixProcessAPI::tUnixProcess* QAV_UnixProcessAPI::current() const {
    const bool isInside = m_current >= 0 && static_cast<long>(m_processes.size()) > m_current;
    return isInside ? &m_processes[static_cast<std::size_t>(m_current)] : NULL;
}

int QAV_UnixProcessAPI::getHandle(OpenWBEM::String& handle) const {
    return copy(current(), &tUnixProcess::handle, handle);
}

int QAV_UnixProcessAPI::getName(OpenWBEM::String& name) const {
    return copy(current(), &tUnixProcess::name, name);
}

int QAV_UnixProcessAPI::getModulePath(OpenWBEM::String& modulePath) const {
    return copy(current(), &tUnixProcess::modulePath, modulePath);
}

int QAV_UnixProcessAPI::getParameters(OpenWBEM::Array<OpenWBEM::String>& parameters) const {
    return copy(current(), &tUnixProcess::parameters, parameters);
}

int QAV_UnixProcessAPI::getRunType(unsigned short& runType) const {
    return copy(current(), &tUnixProcess::runType, runType);
}

int QAV_UnixProcessAPI::getExecutionState(unsigned short& executionState) const {
    return copy(current(), &tUnixProcess::executionState, executionState);
}

int QAV_UnixProcessAPI::getParentProcessID(OpenWBEM::String& parentProcessID) const {
    return copy(current(), &tUnixProcess::parentProcessID, parentProcessID);
}

int QAV_UnixProcessAPI::getRealUserID(unsigned long long& realUserID) const {
    return copy(current(), &tUnixProcess::realUserID, realUserID);
}

int QAV_UnixProcessAPI::getProcessGroupID(unsigned long long& processGroupID) const {
    return copy(current(), &tUnixProcess::processGroupID, processGroupID);
}

int QAV_UnixProcessAPI::getTotalCpuTime(OpenWBEM::CIMDateTime& totalCpuTime) const {
    return copy(current(), &tUnixProcess::totalCpuTime, totalCpuTime);
}

int QAV_UnixProcessAPI::getRealText(unsigned long long& realText) const {
    return copy(current(), &tUnixProcess::realText, realText);
}

int QAV_UnixProcessAPI::getRealData(unsigned long long& realData) const {
    return copy(current(), &tUnixProcess::realData, realData);
}

int QAV_UnixProcessAPI::getRealStack(unsigned long long& realStack) const {
    return copy(current(), &tUnixProcess::realStack, realStack);
}
