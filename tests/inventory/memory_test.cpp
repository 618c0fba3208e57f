// Memory that runs out: malloc() and free() of this program stand in front of the C library's.
#include "inventory/Inventory.hpp"

#include <functional>
#include <new>
#include <unistd.h>

namespace {

int allocationsUntilFailure = -1; // -1: none fails
int outstandingAllocations = 0;

} // namespace

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void __libc_free(void* memory);
}

namespace {

// Whether there is memory for one allocation more.
bool isGranted() {
    if (allocationsUntilFailure == 0)
        return false;
    if (allocationsUntilFailure > 0)
        --allocationsUntilFailure;
    return true;
}

void* counted(void* memory) {
    ++outstandingAllocations;
    return memory;
}

} // namespace

extern "C" {
__attribute__((visibility("default"))) void* malloc(std::size_t size) noexcept {
    return isGranted() ? counted(__libc_malloc(size)) : nullptr;
}

__attribute__((visibility("default"))) void* calloc(std::size_t count, std::size_t size) noexcept {
    return isGranted() ? counted(__libc_calloc(count, size)) : nullptr;
}

__attribute__((visibility("default"))) void* realloc(void* memory, std::size_t size) noexcept {
    if (!memory)
        return malloc(size);
    return isGranted() ? __libc_realloc(memory, size) : nullptr;
}

__attribute__((visibility("default"))) void free(void* memory) noexcept {
    if (memory)
        --outstandingAllocations;
    __libc_free(memory);
}
}

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
        const int before = outstandingAllocations;
        const int descriptor = lowestDescriptor();
        int count = 0;
        while (runsOut(action, count)) {
            ASSERT_EQ(before, outstandingAllocations) << count;
            ASSERT_EQ(descriptor, lowestDescriptor()) << count;
            ++count;
        }
        EXPECT_LT(10, count);
        EXPECT_EQ(before, outstandingAllocations);
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
            allocationsUntilFailure = allocations;
            try {
                action(processes);
            } catch (const std::bad_alloc&) {
            }
            result = allocationsUntilFailure == 0;
            allocationsUntilFailure = -1;
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
        allocationsUntilFailure = allocations;
        try {
            processes.init(information);
        } catch (const std::bad_alloc&) {
        }
        allocationsUntilFailure = -1;
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
    const int before = outstandingAllocations;
    for (int allocations = 0;; ++allocations) {
        allocationsUntilFailure = allocations;
        bool hasThrown = false;
        try {
            processes.init(information, handle);
        } catch (const std::bad_alloc&) {
            hasThrown = true;
        }
        const bool ranOut = allocationsUntilFailure == 0;
        allocationsUntilFailure = -1;
        if (!ranOut)
            break;
        if (hasThrown) {
            ASSERT_EQ(before, outstandingAllocations) << allocations;
        }
    }
}

} // namespace
