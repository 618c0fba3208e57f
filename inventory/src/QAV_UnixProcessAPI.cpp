/* The table of processes and its cursor. Processes.cpp reads the processes. */
#include "QAV_UnixProcessAPI.hpp"

#include "Processes.hpp"
#include "SoftwareType.hpp"

#include <algorithm>
#include <climits>
#include <sblim_utilities.h>

namespace {

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

/* The processes of this host, and the run types that its software inventory reports. */
inventory::Sources sourcesOf(QAV_UnixProcessAPI& processes) {
    return {"/proc", [&processes](const OpenWBEM::String& name) { return processes.determineSWType(name); }};
}

/* The cursor has 16 bits: it does not reach later processes. */
const short lastReachable = SHRT_MAX;

template <class Field, class Result>
int copy(const QAV_UnixProcessAPI::tUnixProcess* process, Field field, Result& result) {
    if (!process)
        return 0;
    result = process->*field;
    return 1;
}

} // namespace

int QAV_UnixProcessAPI::internalInit(tProcessInfoType type, const OpenWBEM::String& handle) {
    return inventory::readProcess(sourcesOf(*this), type, handle, m_processes);
}

int QAV_UnixProcessAPI::readRunParameters(const char* path, tUnixProcess& record) {
    return inventory::readParameters(path, record.parameters);
}

unsigned short QAV_UnixProcessAPI::determineSWType(const OpenWBEM::String& name) {
    if (!m_swInventoryRead) {
        runcommand("/kq/bin/softinv", NULL, &m_swInventory, NULL);
        m_swInventoryRead = true;
    }
    return inventory::softwareType(m_swInventory, name);
}

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
    inventory::readProcesses(sourcesOf(*this), type, m_processes);
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
