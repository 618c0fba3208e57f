// The running software that the real object manager serves, compared with what the library reads itself.
#include "owb.h"

#include "ServedGroups.hpp"
#include "StartedProcess.hpp"
#include "inventory/ProcessTree.hpp"

#include <filesystem>
#include <gtest/gtest.h>
#include <map>

using namespace std::string_literals;

namespace {

const long processGroup = 16;
const long statisticsGroup = 22;

// By nominator and array index.
using Values = std::map<std::pair<long, long>, std::string>;

// The row of a group with a handle; empty if there is none.
Values rowOf(TestQueue& q, long group, const std::string& handle) {
    const long handleNom = group == processGroup ? 2 : 12;
    std::map<long, Values> rows;
    for (const _qItem* item = q->first; item != q.end(); item = item->next)
        if (item->group == group)
            rows[item->row][{item->nom, item->array}] = item->val;
    for (const auto& [number, row] : rows)
        if (row.count({handleNom, 0}) != 0 && row.at({handleNom, 0}) == handle)
            return row;
    return Values();
}

class ServedSoftware : public ServedGroups {
protected:
    // Expects the object manager and OWB_getSWRun() to report the same rows of an idle process.
    static void expectSame(const std::string& handle) {
        run([&] {
            TestQueue direct;
            OWB_getSWRun(direct.head());
            TestQueue served;
            EXPECT_EQ(OWB_DONE, OWB_getGroup(processGroup, served.head()));
            EXPECT_EQ(OWB_DONE, OWB_getGroup(statisticsGroup, served.head()));
            for (const long group : {processGroup, statisticsGroup}) {
                EXPECT_LE(5U, rowOf(direct, group, handle).size());
                EXPECT_EQ(rowOf(direct, group, handle), rowOf(served, group, handle)) << group;
            }
        });
    }
    static Items itemsOf(long group) {
        TestQueue q;
        EXPECT_EQ(OWB_DONE, OWB_getGroup(group, q.head()));
        return q.items();
    }
};

TEST_F(ServedSoftware, ASleepingProcessIsTheSame) {
    const StartedProcess process(StartedProcess::sleeper("odd name"));
    process.when("odd name", 'S');
    expectSame(process.id());
}

TEST_F(ServedSoftware, AStoppedProcessIsTheSame) {
    const StartedProcess process(StartedProcess::sleeper("stopped"));
    process.when("stopped", 'S');
    ::kill(process.pid(), SIGSTOP);
    process.when("stopped", 'T');
    expectSame(process.id());
}

TEST_F(ServedSoftware, AProcessWithParametersIsTheSame) {
    const StartedProcess process(StartedProcess::program({"program", "9998", "9999"}));
    process.when("sleep", 'S');
    expectSame(process.id());
}

TEST_F(ServedSoftware, AZombieIsTheSame) {
    const StartedProcess process([] { ::prctl(PR_SET_NAME, "zombie"); });
    process.when("zombie", 'Z');
    expectSame(process.id());
}

TEST_F(ServedSoftware, OfAFakeHostMatchesItsFiles) {
    const support::TempDir root;
    FakeProcess process;
    process.name = "daemon";
    process.userTime = "250";
    process.systemTime = "50";
    process.cmdline = "daemon\0-a\0x\0"s;
    ProcessTree(root.file("proc")).add("4711", process);
    run(
        [] {
            EXPECT_EQ((Items{"16/1/0/0=daemon", "16/2/0/0=4711", "16/3/0/0=/usr/bin/prog", "16/4/0/0=-a",
                             "16/4/0/1=x", "16/5/0/0=4", "16/6/0/0=2"}),
                      itemsOf(processGroup));
            EXPECT_EQ((Items{"22/12/0/0=4711", "22/11/0/0=132", "22/10/0/0=300", "22/9/0/0=1600",
                             "22/7/0/0=00000000000003.000000:000"}),
                      itemsOf(statisticsGroup));
        },
        {"--root", root.path()});
}

TEST_F(ServedSoftware, OfAFakeHostIsClassifiedWithAnyDirectoryName) {
    const support::TempDir directory;
    const std::string name = "it's a \"directory\"; exit $(exit)\n";
    ProcessTree(directory.file(name + "/proc")).add("2", kernelThread("kthreadd"));
    const std::string program =
        directory.write(name + "/kq/bin/softinv", "#!/bin/sh\necho kthreadd a b Driver\n");
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    run([] { EXPECT_EQ("16/5/0/0=3", itemsOf(processGroup).at(3)); }, {"--root", directory.file(name)});
}

TEST_F(ServedSoftware, OfAFakeHostWithoutProcIsNone) {
    const support::TempDir root;
    run(
        [] {
            EXPECT_EQ(Items{}, itemsOf(processGroup));
            EXPECT_EQ(Items{}, itemsOf(statisticsGroup));
        },
        {"--root", root.path()});
}

TEST_F(ServedSoftware, OfAFakeHostFollowsItsFiles) {
    const support::TempDir root;
    const ProcessTree tree(root.file("proc"));
    tree.add("2", kernelThread("kthreadd"));
    run(
        [&] {
            EXPECT_EQ((Items{"16/1/0/0=kthreadd", "16/2/0/0=2", "16/3/0/0=", "16/5/0/0=4", "16/6/0/0=2"}),
                      itemsOf(processGroup));
            tree.remove("2");
            EXPECT_EQ(Items{}, itemsOf(processGroup));
        },
        {"--root", root.path()});
}

} // namespace
