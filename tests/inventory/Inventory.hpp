#ifndef TESTS_INVENTORY_INVENTORY_HPP
#define TESTS_INVENTORY_INVENTORY_HPP
#include "inventory/ProcessTree.hpp"
#include "inventory/Records.hpp"
#include "support/TempDir.hpp"

#include <gtest/gtest.h>
#include <string>

/** A test whose processes, and whose software inventory, are made up. There is none of either at first. */
class Inventory : public testing::Test {
protected:
    Inventory();
    ~Inventory() override;
    Inventory(const Inventory&) = delete;
    Inventory& operator=(const Inventory&) = delete;

    /** Makes a program of a shell script the software inventory. */
    void setTool(const std::string& script) const;
    /** Makes it one that prints a text. */
    void setToolOutput(const std::string& text) const;
    /** Handles of all processes that a fill of the table finds, sorted. */
    Texts found(QAV_UnixProcessAPI::tProcessInfoType type = information) const;
    /** A process that is added to an empty table by its ID. */
    Record read(const std::string& id, QAV_UnixProcessAPI::tProcessInfoType type) const;
    /** Whether a process is found in a mode. */
    bool isFound(const std::string& id, QAV_UnixProcessAPI::tProcessInfoType type) const;

    const support::TempDir m_folder;
    const ProcessTree m_tree;

private:
    const std::string m_tool;
    const char* const m_realFolder;
    const char* const m_realTool;
};

#endif
