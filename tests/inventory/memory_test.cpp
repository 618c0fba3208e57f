// Allocations that fail.
#include "SoftwareType.hpp"
#include "inventory/Inventory.hpp"
#include "inventory/OwnProcess.hpp"
#include "inventory/SoftwareProgram.hpp"
#include "support/FailingAllocator.hpp"

#include <functional>
#include <new>
#include <unistd.h>

namespace memory = support::memory;

namespace {

int lowestDescriptor() {
    const int descriptor = ::dup(0);
    ::close(descriptor);
    return descriptor;
}

/** Whether an action fails if only a number of allocations succeed. */
bool runsOut(const std::function<void()>& action, int allocations) {
    memory::failFrom(allocations);
    try {
        action();
    } catch (const std::bad_alloc&) {
    }
    return memory::stopFailing();
}

/** Fails each allocation of an action, and all later ones. The action must free everything. */
void expectToLoseNothing(const std::function<void()>& action) {
    action(); // allocates what the C library keeps
    const long before = memory::outstanding();
    const int descriptor = lowestDescriptor();
    int count = 0;
    while (runsOut(action, count)) {
        ASSERT_EQ(before, memory::outstanding()) << count;
        ASSERT_EQ(descriptor, lowestDescriptor()) << count;
        ++count;
    }
    EXPECT_LT(3, count);
    EXPECT_EQ(before, memory::outstanding());
}

class OutOfMemoryForATree : public Inventory {
protected:
    OutOfMemoryForATree() {
        FakeProcess process;
        process.cmdline = std::string("prog\0-a\0x\0", 10);
        for (const char* const id : {"7", "8", "9"})
            m_tree.add(id, process);
        m_sources.runType = [](const OpenWBEM::String& name) {
            const char* const lines[] = {"prog a b Driver", "other a b Oper", nullptr};
            return inventory::softwareType(lines, name);
        };
    }
};

TEST_F(OutOfMemoryForATree, AReadLeaksNothing) {
    for (const auto type : {information, statistics})
        expectToLoseNothing([&] {
            OpenWBEM::Array<inventory::Process> processes;
            inventory::readProcesses(m_sources, type, processes);
        });
}

TEST_F(OutOfMemoryForATree, TheNextReadHasAllProcesses) {
    bool hasRunOut = true;
    for (int allocations = 0; hasRunOut; ++allocations) {
        hasRunOut = runsOut(
            [&] {
                OpenWBEM::Array<inventory::Process> processes;
                inventory::readProcesses(m_sources, information, processes);
            },
            allocations);
        const std::vector<Record> records = readAll(information);
        ASSERT_EQ(3U, records.size()) << allocations;
        for (const Record& record : records)
            EXPECT_EQ(3, record.runType) << allocations;
    }
}

class OutOfMemory : public OwnProcess {
protected:
    OutOfMemory() {
        SoftwareProgram& program = SoftwareProgram::instance();
        program = SoftwareProgram();
        program.lines = {"inventory a b Driver", "other a b Oper"};
    }

    const OpenWBEM::String m_handle{handle().c_str()};
};

TEST_F(OutOfMemory, AnAddedProcessLeaksNothing) {
    for (const auto type : {information, statistics})
        expectToLoseNothing([&] {
            QAV_UnixProcessAPI processes;
            processes.init(type, m_handle);
        });
}

TEST_F(OutOfMemory, AProcessReadWithoutInitLeaksNothing) {
    expectToLoseNothing([&] {
        QAV_UnixProcessAPI processes;
        processes.internalInit(information, m_handle);
    });
}

TEST_F(OutOfMemory, AFillAfterAProcessReadWithoutInitLeaksNothing) {
    expectToLoseNothing([&] {
        QAV_UnixProcessAPI processes;
        processes.internalInit(information, m_handle);
        processes.init(information, m_handle);
    });
}

// A fill frees the lines at its end, before the table is destroyed.
TEST_F(OutOfMemory, TheLinesOfTheToolAreFreedWhenAFillThrows) {
    add(handle(), information);
    const long before = memory::outstanding();
    int allocations = 0;
    while (runsOut([this] { m_processes.init(information, m_handle); }, allocations)) {
        ASSERT_EQ(1U, handlesIn(m_processes).size()) << allocations;
        ASSERT_EQ(before, memory::outstanding()) << allocations;
        ++allocations;
    }
    EXPECT_LT(5, allocations);
    EXPECT_EQ(2U, handlesIn(m_processes).size());
}

} // namespace
