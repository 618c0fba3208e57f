#include "inventory/Records.hpp"

#include <gtest/gtest.h>

using namespace OpenWBEM;

namespace {

template <class Value>
Value get(const QAV_UnixProcessAPI& processes, int (QAV_UnixProcessAPI::*getter)(Value&) const) {
    Value value{};
    EXPECT_EQ(1, (processes.*getter)(value));
    return value;
}

std::string text(const QAV_UnixProcessAPI& processes, int (QAV_UnixProcessAPI::*getter)(String&) const) {
    const String value = get(processes, getter);
    return std::string(value.c_str(), value.length());
}

Texts parametersAt(const QAV_UnixProcessAPI& processes) {
    Texts texts;
    for (const String& parameter : get(processes, &QAV_UnixProcessAPI::getParameters))
        texts.emplace_back(parameter.c_str(), parameter.length());
    return texts;
}

} // namespace

Record recordAt(const QAV_UnixProcessAPI& processes) {
    using Table = QAV_UnixProcessAPI;
    return {text(processes, &Table::getHandle),
            text(processes, &Table::getName),
            text(processes, &Table::getModulePath),
            parametersAt(processes),
            get(processes, &Table::getRunType),
            get(processes, &Table::getExecutionState),
            text(processes, &Table::getParentProcessID),
            get(processes, &Table::getRealUserID),
            get(processes, &Table::getProcessGroupID),
            get(processes, &Table::getTotalCpuTime).toString().c_str(),
            get(processes, &Table::getRealText),
            get(processes, &Table::getRealData),
            get(processes, &Table::getRealStack)};
}

std::vector<Record> recordsIn(QAV_UnixProcessAPI& processes) {
    std::vector<Record> records;
    for (processes.begin(); processes.hasNext();) {
        processes.next();
        records.push_back(recordAt(processes));
    }
    processes.end();
    return records;
}

Texts handlesIn(QAV_UnixProcessAPI& processes) {
    Texts handles;
    for (const Record& record : recordsIn(processes))
        handles.push_back(record.handle);
    return handles;
}
