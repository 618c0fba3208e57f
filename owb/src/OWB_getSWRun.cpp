/* The running software, read from /proc instead of the CIMOM. */
#include "OW_Array.hpp"
#include "OW_CIMDateTime.hpp"
#include "OW_String.hpp"

#include "owb.h"

#include "QAV_UnixProcessAPI.hpp"

#include <cstdio>

using namespace OpenWBEM;

namespace {

/* Appends the items of one process. */
class ProcessItems {
public:
    ProcessItems(_qHead* q, long group, long row)
        : m_queue(q)
        , m_group(group)
        , m_row(row) {}

    void add(long nom, const String& text, long array = 0) const {
        OWB_itemAdd(m_queue, m_group, nom, m_row, array, text.c_str());
    }
    void add(long nom, unsigned long long number) const {
        char text[128];
        std::snprintf(text, sizeof text, "%llu", number);
        OWB_itemAdd(m_queue, m_group, nom, m_row, 0, text);
    }

private:
    _qHead* m_queue;
    long m_group;
    long m_row;
};

/* QAV_UnixProcess */
void addInformation(const QAV_UnixProcessAPI& process, const ProcessItems& items) {
    String text;
    Array<String> parameters;
    unsigned short code = 0;

    process.getName(text);
    items.add(1, text);
    process.getHandle(text);
    items.add(2, text);
    process.getModulePath(text);
    items.add(3, text);
    process.getParameters(parameters);
    const Array<String>& elements = parameters; /* reading through const takes no copy of shared elements */
    for (size_t i = 0; i < elements.size(); ++i)
        items.add(4, elements[i], static_cast<long>(i));
    process.getRunType(code);
    items.add(5, code);
    process.getExecutionState(code);
    items.add(6, code);
}

/* QAV_UnixProcessStatisticalInformation */
void addStatistics(const QAV_UnixProcessAPI& process, const ProcessItems& items) {
    String handle;
    CIMDateTime time;
    unsigned long long kilobytes = 0;

    process.getHandle(handle);
    items.add(12, handle);
    process.getRealStack(kilobytes);
    items.add(11, kilobytes);
    process.getRealData(kilobytes);
    items.add(10, kilobytes);
    process.getRealText(kilobytes);
    items.add(9, kilobytes);
    process.getTotalCpuTime(time);
    items.add(7, time.toString());
}

} // namespace

extern "C" int OWB_getSWRun(_qHead* q) {
    QAV_UnixProcessAPI processes;
    long row = 0;

    processes.init(QAV_UnixProcessAPI::eProcessInformation);
    processes.begin();
    while (processes.hasNext()) {
        processes.next();
        addInformation(processes, ProcessItems(q, 16, row++));
    }
    processes.end();

    /* The rows run on: it is the handle that ties the two groups of a process together. */
    processes.init(QAV_UnixProcessAPI::eStatisticalInformation);
    processes.begin();
    while (processes.hasNext()) {
        processes.next();
        addStatistics(processes, ProcessItems(q, 22, row++));
    }
    processes.end();
    return 1;
}
