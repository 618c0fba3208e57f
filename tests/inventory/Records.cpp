#include "inventory/Records.hpp"

#include <gtest/gtest.h>

using namespace OpenWBEM;

namespace {

std::string text(const String& string) {
    return std::string(string.c_str(), string.length());
}

} // namespace

Record recordOf(const QAV_UnixProcessAPI::tUnixProcess& process) {
    Texts parameters;
    for (const String& parameter : process.parameters)
        parameters.push_back(text(parameter));
    return {text(process.handle),
            text(process.name),
            text(process.modulePath),
            parameters,
            process.runType,
            process.executionState,
            text(process.parentProcessID),
            process.realUserID,
            process.processGroupID,
            process.totalCpuTime.toString().c_str(),
            process.realText,
            process.realData,
            process.realStack};
}

Record recordAt(const QAV_UnixProcessAPI& processes) {
    QAV_UnixProcessAPI::tUnixProcess process{};
    EXPECT_EQ(1, processes.getHandle(process.handle));
    EXPECT_EQ(1, processes.getName(process.name));
    EXPECT_EQ(1, processes.getModulePath(process.modulePath));
    EXPECT_EQ(1, processes.getParameters(process.parameters));
    EXPECT_EQ(1, processes.getRunType(process.runType));
    EXPECT_EQ(1, processes.getExecutionState(process.executionState));
    EXPECT_EQ(1, processes.getParentProcessID(process.parentProcessID));
    EXPECT_EQ(1, processes.getRealUserID(process.realUserID));
    EXPECT_EQ(1, processes.getProcessGroupID(process.processGroupID));
    EXPECT_EQ(1, processes.getTotalCpuTime(process.totalCpuTime));
    EXPECT_EQ(1, processes.getRealText(process.realText));
    EXPECT_EQ(1, processes.getRealData(process.realData));
    EXPECT_EQ(1, processes.getRealStack(process.realStack));
    return recordOf(process);
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
