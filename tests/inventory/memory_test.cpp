// Memory that runs out.
#include "inventory/Inventory.hpp"
#include "support/ShortMemory.hpp"

#include <functional>
#include <new>
#include <unistd.h>

namespace memory = support::memory;

namespace {

using Action = std::function<void(QAV_UnixProcessAPI&)>;

class OutOfMemory : public Inventory {
protected:
    OutOfMemory() {
        MadeProcess process;
        process.cmdline = std::string("prog\0-a\0x\0", 10);
        for (const char* const id : {"7", "8", "9"})
            m_tree.add(id, process);
        setTool("echo prog a b Driver\necho other a b Oper\n");
    }

    // Lets an action run out of memory at each of its allocations in turn, and does it once more without.
    void expectToLoseNothing(const Action& action) {
        succeed(action); // what the C library allocates once
        const long before = memory::outstanding();
        const int descriptor = lowestDescriptor();
        int count = 0;
        while (runsOut(action, count)) {
            ASSERT_EQ(before, memory::outstanding()) << count;
            ASSERT_EQ(descriptor, lowestDescriptor()) << count;
            ++count;
        }
        EXPECT_LT(10, count);
        EXPECT_EQ(before, memory::outstanding());
        succeed(action);
    }

private:
    static void succeed(const Action& action) {
        QAV_UnixProcessAPI processes;
        action(processes);
        EXPECT_LT(0U, recordsIn(processes).size());
    }
    // Whether an action runs out of memory that is there for a number of allocations only.
    static bool runsOut(const Action& action, int allocations) {
        bool result = false;
        {
            QAV_UnixProcessAPI processes;
            memory::failFrom(allocations);
            try {
                action(processes);
            } catch (const std::bad_alloc&) {
            }
            result = memory::suffice();
        }
        return result;
    }
    static int lowestDescriptor() {
        const int descriptor = ::dup(0);
        ::close(descriptor);
        return descriptor;
    }
};

TEST_F(OutOfMemory, AFillLosesNothing) {
    expectToLoseNothing([](QAV_UnixProcessAPI& processes) { processes.init(information); });
}

TEST_F(OutOfMemory, AFillOfStatisticsLosesNothing) {
    expectToLoseNothing([](QAV_UnixProcessAPI& processes) { processes.init(statistics); });
}

TEST_F(OutOfMemory, AProcessThatIsAddedLosesNothing) {
    const OpenWBEM::String handle("7");
    expectToLoseNothing([&](QAV_UnixProcessAPI& processes) { processes.init(information, handle); });
}

TEST_F(OutOfMemory, AProcessThatIsReadWithoutInitLosesNothing) {
    const OpenWBEM::String handle("7");
    expectToLoseNothing([&](QAV_UnixProcessAPI& processes) { processes.internalInit(information, handle); });
}

TEST_F(OutOfMemory, AFillBehindProcessesThatWereReadWithoutInitLosesNothing) {
    const OpenWBEM::String handle("7");
    expectToLoseNothing([&](QAV_UnixProcessAPI& processes) {
        processes.internalInit(information, handle);
        processes.init(information);
    });
    expectToLoseNothing([&](QAV_UnixProcessAPI& processes) {
        processes.internalInit(information, handle);
        processes.init(information, handle);
    });
}

TEST_F(OutOfMemory, TheNextFillMakesUpForOneThatRanOutOfIt) {
    QAV_UnixProcessAPI processes;
    for (int allocations = 0; allocations < 60; ++allocations) {
        memory::failFrom(allocations);
        try {
            processes.init(information);
        } catch (const std::bad_alloc&) {
        }
        memory::suffice();
        processes.init(information);
        const std::vector<Record> records = recordsIn(processes);
        ASSERT_EQ(3U, records.size()) << allocations;
        for (const Record& record : records)
            EXPECT_EQ(3, record.runType) << allocations;
    }
}

// What the last fill reads is released when it ends, not with the table.
TEST_F(OutOfMemory, TheLinesOfTheToolAreReleasedWhenAFillThrows) {
    const OpenWBEM::String handle("7");
    QAV_UnixProcessAPI processes;
    processes.init(information, handle);
    const long before = memory::outstanding();
    for (int allocations = 0;; ++allocations) {
        memory::failFrom(allocations);
        bool hasThrown = false;
        try {
            processes.init(information, handle);
        } catch (const std::bad_alloc&) {
            hasThrown = true;
        }
        const bool ranOut = memory::suffice();
        if (!ranOut)
            break;
        if (hasThrown) {
            ASSERT_EQ(before, memory::outstanding()) << allocations;
        }
    }
}

} // namespace
