#include "inventory/Inventory.hpp"

#include "Sources.hpp"

#include <algorithm>
#include <filesystem>

Inventory::Inventory()
    : m_tree(m_folder.file("proc"))
    , m_tool(m_folder.file("softinv"))
    , m_realFolder(inventory::procFolder)
    , m_realTool(inventory::softwareInventory) {
    inventory::procFolder = m_tree.path().c_str();
    inventory::softwareInventory = m_tool.c_str();
}

Inventory::~Inventory() {
    inventory::procFolder = m_realFolder;
    inventory::softwareInventory = m_realTool;
}

void Inventory::setTool(const std::string& script) const {
    m_folder.write("softinv", "#!/bin/sh\n" + script);
    std::filesystem::permissions(m_tool, std::filesystem::perms::owner_all);
}

void Inventory::setToolOutput(const std::string& text) const {
    setTool("cat '" + m_folder.write("software", text) + "'\n");
}

Texts Inventory::found(QAV_UnixProcessAPI::tProcessInfoType type) const {
    QAV_UnixProcessAPI processes;
    processes.init(type);
    Texts handles = handlesIn(processes);
    std::sort(handles.begin(), handles.end());
    return handles;
}

Record Inventory::read(const std::string& id, QAV_UnixProcessAPI::tProcessInfoType type) const {
    QAV_UnixProcessAPI processes;
    EXPECT_EQ(1, processes.init(type, id.c_str())) << id;
    const std::vector<Record> records = recordsIn(processes);
    EXPECT_EQ(1U, records.size()) << id;
    return records.empty() ? Record() : records.front();
}

bool Inventory::isFound(const std::string& id, QAV_UnixProcessAPI::tProcessInfoType type) const {
    QAV_UnixProcessAPI processes;
    const int result = processes.init(type, id.c_str());
    EXPECT_EQ(static_cast<std::size_t>(result), recordsIn(processes).size()) << id;
    return result == 1;
}
