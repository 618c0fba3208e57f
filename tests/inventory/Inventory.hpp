#ifndef TESTS_INVENTORY_INVENTORY_HPP
#define TESTS_INVENTORY_INVENTORY_HPP
#include "Processes.hpp"
#include "inventory/ProcessTree.hpp"
#include "inventory/Records.hpp"
#include "support/TempDir.hpp"

#include <gtest/gtest.h>
#include <string>

/** A test with fake processes. At first there are none. Each program is an application. */
class Inventory : public testing::Test {
protected:
    /** All processes, in the order of the directory. */
    std::vector<Record> readAll(QAV_UnixProcessAPI::tProcessInfoType type) const;
    /** Handles of all processes, sorted. */
    Texts found(QAV_UnixProcessAPI::tProcessInfoType type = information) const;
    /** A process by its ID. */
    Record read(const std::string& id, QAV_UnixProcessAPI::tProcessInfoType type) const;
    /** Whether a process is found in a mode. */
    bool isFound(const std::string& id, QAV_UnixProcessAPI::tProcessInfoType type) const;

    const support::TempDir m_directory;
    const ProcessTree m_tree{m_directory.file("proc")};
    inventory::Sources m_sources{m_tree.path(), [](const OpenWBEM::String&) { return 4; }};
};

#endif
