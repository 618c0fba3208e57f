// The running software of a fake host.
#include "owb.h"
#include "support/Descriptors.hpp"

#include "FakeHost.hpp"
#include "TestQueue.hpp"

#include <cerrno>
#include <dirent.h>
#include <gtest/gtest.h>
#include <malloc.h>
#include <set>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace std::string_literals;

namespace {

class RunningSoftware : public testing::Test {
protected:
    void run(const std::function<void()>& body, const std::string& expectedOutput = "",
             FakeHost::Programs programs = FakeHost::Programs::real) const {
        m_host.run(body, expectedOutput, programs);
    }

    const FakeHost m_host;
};

FakeProcess example() {
    FakeProcess process;
    process.name = "daemon";
    process.state = "R";
    process.userTime = "250";
    process.systemTime = "50";
    process.cmdline = "daemon\0-a\0x\0"s;
    process.exe = "/usr/sbin/daemon";
    return process;
}

Items read() {
    TestQueue q;
    EXPECT_EQ(1, OWB_getSWRun(q.head()));
    EXPECT_TRUE(q.isConsistent());
    return q.items();
}

// The handles of the fake /proc in the order of its entries.
Items entries() {
    Items names;
    DIR* const directory = ::opendir("/proc");
    while (const dirent* const entry = ::readdir(directory))
        if (entry->d_name[0] != '.')
            names.push_back(entry->d_name);
    ::closedir(directory);
    return names;
}

TEST_F(RunningSoftware, OfOneProcessAreTwoRows) {
    m_host.processes().add("7", example());
    m_host.setTool("echo daemon a b Driver\n");
    run([] {
        EXPECT_EQ((Items{"16/1/0/0=daemon", "16/2/0/0=7", "16/3/0/0=/usr/sbin/daemon", "16/4/0/0=-a",
                         "16/4/0/1=x", "16/5/0/0=3", "16/6/0/0=3", "22/12/1/0=7", "22/11/1/0=132",
                         "22/10/1/0=300", "22/9/1/0=1600", "22/7/1/0=00000000000003.000000:000"}),
                  read());
    });
}

TEST_F(RunningSoftware, OfAKernelThreadHasNoPathAndNoParameters) {
    m_host.processes().add("2", kernelThread("kthreadd"));
    m_host.setTool("echo kthreadd a b Operating\n");
    run([] {
        EXPECT_EQ(
            (Items{"16/1/0/0=kthreadd", "16/2/0/0=2", "16/3/0/0=", "16/5/0/0=2", "16/6/0/0=2", "22/12/1/0=2",
                   "22/11/1/0=0", "22/10/1/0=0", "22/9/1/0=0", "22/7/1/0=00000000000000.000000:000"}),
            read());
    });
}

TEST_F(RunningSoftware, StatisticsContinueTheRowNumbersOfTheProcesses) {
    for (const char* const id : {"7", "123", "45"})
        m_host.processes().add(id);
    run([] {
        const Items ids = entries();
        TestQueue q;
        OWB_getSWRun(q.head());
        for (long row = 0; row < 3; ++row) {
            const std::string& id = ids.at(static_cast<std::size_t>(row));
            EXPECT_EQ(1, OWB_itemExists(q.head(), 16, 2, row, 0));
            EXPECT_EQ(id, q->cursor->val);
            EXPECT_EQ(1, OWB_itemExists(q.head(), 22, 12, row + 3, 0));
            EXPECT_EQ(id, q->cursor->val);
        }
        EXPECT_EQ(3 * 10, q->size);
        EXPECT_EQ(22, q.at(15)->group) << "all processes, then all statistics";
        EXPECT_EQ(16, q.at(14)->group);
    });
}

TEST_F(RunningSoftware, WithStatisticsOnlyHasNoRowsOfInformation) {
    m_host.processes().add("7");
    m_host.processes().remove("7", "cmdline");
    run([] {
        EXPECT_EQ((Items{"22/12/0/0=7", "22/11/0/0=132", "22/10/0/0=300", "22/9/0/0=1600",
                         "22/7/0/0=00000000000000.000000:000"}),
                  read());
    });
}

TEST_F(RunningSoftware, LeavesOutDirectoriesThatAreNoProcesses) {
    m_host.processes().add("self");
    m_host.processes().add("0");
    FakeProcess process;
    process.name = "(sd-pam)";
    m_host.processes().add("7", process);
    run([] { EXPECT_EQ(Items{}, read()); });
}

TEST_F(RunningSoftware, NumbersAreUnsigned) {
    FakeProcess process = example();
    process.state = "W";
    process.status = "VmStk: 18446744073709551615 kB\nVmData: 4294967296 kB\nVmExe: 9223372036854775808 kB\n";
    m_host.processes().add("4194304", process);
    run([] {
        const Items items = read();
        ASSERT_EQ(12U, items.size());
        EXPECT_EQ("16/5/0/0=4", items[5]);
        EXPECT_EQ("16/6/0/0=0", items[6]);
        EXPECT_EQ("22/11/1/0=18446744073709551615", items[8]);
        EXPECT_EQ("22/10/1/0=4294967296", items[9]);
        EXPECT_EQ("22/9/1/0=9223372036854775808", items[10]);
    });
}

TEST_F(RunningSoftware, HasAsManyParametersAsFitInto511Bytes) {
    FakeProcess process = example();
    process.cmdline = "p\0"s;
    for (int i = 0; i < 255; ++i)
        process.cmdline += "a\0"s;
    m_host.processes().add("7", process);
    run([] {
        const Items items = read();
        ASSERT_EQ(10U + 255U, items.size());
        EXPECT_EQ("16/4/0/0=a", items[3]);
        EXPECT_EQ("16/4/0/254=a", items[257]);
    });
}

TEST_F(RunningSoftware, OfAHostWithoutProcIsNone) {
    run([] { EXPECT_EQ(Items{}, read()); });
}

TEST_F(RunningSoftware, WithoutAQueueAppendsNothing) {
    m_host.processes().add("7");
    run([] { EXPECT_EQ(1, OWB_getSWRun(nullptr)); });
}

TEST_F(RunningSoftware, FollowsTheItemsOfTheQueue) {
    m_host.processes().add("2", kernelThread("kthreadd"));
    run([] {
        TestQueue q;
        OWB_itemAdd(q.head(), 4, 1, 0, 0, "before");
        EXPECT_EQ(1, OWB_getSWRun(q.head()));
        EXPECT_EQ(1 + 10, q->size);
        EXPECT_EQ("4/1/0/0=before", q.items().front());
        EXPECT_EQ("16/1/0/0=kthreadd", q.items().at(1));
    });
}

TEST_F(RunningSoftware, ReportsDuplicatesAndStillAppendsThem) {
    m_host.processes().add("2", kernelThread("kthreadd"));
    run(
        [] {
            TestQueue q;
            OWB_itemAdd(q.head(), 16, 1, 0, 0, "before");
            EXPECT_EQ(1, OWB_getSWRun(q.head()));
            EXPECT_EQ(11, q->size);
            EXPECT_EQ("16/1/0/0=before", q.items().front());
            EXPECT_EQ("16/1/0/0=kthreadd", q.items().at(1));
            EXPECT_EQ("16/2/0/0=2", q.items().at(2));
        },
        "ZUL: duplicate item 'Name' group: 16 nom: 1 row: 0 array: 0\n"
        "\n*** EXT_DIE() called: OWB_itemAdd:171 ***\n\n");
}

TEST_F(RunningSoftware, IsReadAgainByEveryCall) {
    m_host.processes().add("2", kernelThread("kthreadd"));
    run([] {
        EXPECT_EQ(10U, read().size());
        const ProcessTree here("/proc");
        here.add("3", kernelThread("rcu"));
        EXPECT_EQ(20U, read().size());
        here.remove("2");
        EXPECT_EQ("16/1/0/0=rcu", read().front());
    });
}

TEST_F(RunningSoftware, RunsTheSoftwareInventoryOnce) {
    for (const char* const id : {"7", "8", "9"})
        m_host.processes().add(id);
    m_host.setTool("echo run >> /log\n");
    run([] {
        read();
        EXPECT_EQ("run\n", support::readFile("/log"));
        read();
        EXPECT_EQ("run\nrun\n", support::readFile("/log"));
    });
}

TEST_F(RunningSoftware, LeavesNoDescriptorAndNoChild) {
    m_host.processes().add("7");
    m_host.setTool("echo prog a b Driver\n");
    run([] {
        const std::set<int> before = support::openDescriptors();
        for (int i = 0; i < 20; ++i)
            EXPECT_EQ("16/5/0/0=3", read().at(3));
        EXPECT_EQ(before, support::openDescriptors());
        EXPECT_EQ(-1, ::waitpid(-1, nullptr, WNOHANG));
        EXPECT_EQ(ECHILD, errno);
    });
}

// The sanitizer's allocator keeps freed memory, and the sanitizer finds leaks itself.
#ifndef __SANITIZE_ADDRESS__
// Peak in kB; the kernel counts in steps of up to a few hundred.
long residentSize() {
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

TEST_F(RunningSoftware, TenThousandCallsNeedNoMoreMemoryThanOneThousand) {
    m_host.processes().add("7", example());
    m_host.processes().add("2", kernelThread("kthreadd"));
    run(
        [] {
            const std::set<int> before = support::openDescriptors();
            TestQueue q;
            long size = 0;
            std::size_t allocated = 0;
            for (int i = 0; i < 10000; ++i) {
                q.clear();
                ASSERT_EQ(1, OWB_getSWRun(q.head()));
                if (i == 1000) {
                    size = residentSize();
                    allocated = ::mallinfo2().uordblks;
                }
            }
            EXPECT_EQ(22, q->size);
            EXPECT_EQ(allocated, ::mallinfo2().uordblks);
            EXPECT_GE(size + 1024, residentSize());
            EXPECT_EQ(before, support::openDescriptors());
        },
        "", FakeHost::Programs::none);
}
#endif

} // namespace
