#include "inventory/Inventory.hpp"

#include <algorithm>

namespace {

std::vector<Record> recordsOf(const OpenWBEM::Array<inventory::Process>& processes) {
    std::vector<Record> records;
    for (const inventory::Process& process : processes)
        records.push_back(recordOf(process));
    return records;
}

} // namespace

std::vector<Record> Inventory::readAll(QAV_UnixProcessAPI::tProcessInfoType type) const {
    OpenWBEM::Array<inventory::Process> processes;
    inventory::readProcesses(m_sources, type, processes);
    return recordsOf(processes);
}

Texts Inventory::found(QAV_UnixProcessAPI::tProcessInfoType type) const {
    Texts handles;
    for (const Record& record : readAll(type))
        handles.push_back(record.handle);
    std::sort(handles.begin(), handles.end());
    return handles;
}

Record Inventory::read(const std::string& id, QAV_UnixProcessAPI::tProcessInfoType type) const {
    OpenWBEM::Array<inventory::Process> processes;
    EXPECT_TRUE(inventory::readProcess(m_sources, type, id.c_str(), processes)) << id;
    const std::vector<Record> records = recordsOf(processes);
    EXPECT_EQ(1U, records.size()) << id;
    return records.empty() ? Record() : records.front();
}

bool Inventory::isFound(const std::string& id, QAV_UnixProcessAPI::tProcessInfoType type) const {
    OpenWBEM::Array<inventory::Process> processes;
    const bool result = inventory::readProcess(m_sources, type, id.c_str(), processes);
    EXPECT_EQ(result ? 1U : 0U, processes.size()) << id;
    return result;
}
