#include "HostTree.hpp"
#include "inventory/ProcessTree.hpp"
#include "providers/Providers.hpp"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

using namespace cimom;
using namespace OpenWBEM;
using namespace std::string_literals;

namespace {

class ProcessClasses : public testing::Test {
protected:
    CIMInstance process() const { return onlyInstance(providerOf("QAV_UnixProcess", m_tree.host())); }
    CIMInstance statistics() const {
        return onlyInstance(providerOf("QAV_UnixProcessStatisticalInformation", m_tree.host()));
    }

    const HostTree m_tree;
    const ProcessTree m_processes{m_tree.realPath("/proc")};
};

CIMDataType typeOf(const CIMInstance& instance, const char* property) {
    return instance.getProperty(property).getValue().getCIMDataType();
}

FakeProcess example() {
    FakeProcess process;
    process.name = "daemon";
    process.state = "R";
    process.userTime = "250";
    process.systemTime = "50";
    process.cmdline = "daemon\0-a\0x\0"s;
    return process;
}

/** Installs a shell script as the software inventory of a host. */
void writeProgram(const Host& host, const std::string& script) {
    const std::filesystem::path path = host.realPath("/kq/bin/softinv");
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path) << "#!/bin/sh\n" << script;
    std::filesystem::permissions(path, std::filesystem::perms::owner_all);
}

} // namespace

TEST_F(ProcessClasses, KeysAreTheHandleAndTheClass) {
    m_processes.add("7");
    EXPECT_EQ("QAV_UnixProcess", process().getClassName());
    EXPECT_EQ("CreationClassName Handle", names(process().getKeyValuePairs()));
    EXPECT_EQ("CreationClassName Name Handle ModulePath Parameters RunType ExecutionState",
              names(process().getProperties()));
    EXPECT_EQ("QAV_UnixProcessStatisticalInformation", statistics().getClassName());
    EXPECT_EQ("CreationClassName Handle", names(statistics().getKeyValuePairs()));
    EXPECT_EQ("CreationClassName Handle RealStack RealData RealText TotalCPUTime",
              names(statistics().getProperties()));
}

TEST_F(ProcessClasses, DescribeAProcess) {
    m_processes.add("4711", example());
    const CIMInstance instance = process();
    EXPECT_EQ("QAV_UnixProcess", text(instance, "CreationClassName"));
    EXPECT_EQ("daemon", text(instance, "Name"));
    EXPECT_EQ("4711", text(instance, "Handle"));
    EXPECT_EQ("/usr/bin/prog", text(instance, "ModulePath"));
    EXPECT_EQ("4", text(instance, "RunType"));
    EXPECT_EQ("3", text(instance, "ExecutionState"));
    StringArray parameters;
    instance.getProperty("Parameters").getValue().get(parameters);
    ASSERT_EQ(2U, parameters.size());
    EXPECT_EQ("-a", parameters[0]);
    EXPECT_EQ("x", parameters[1]);
}

TEST_F(ProcessClasses, RunTheSoftwareInventoryOfTheSameHost) {
    m_processes.add("4711", example());
    writeProgram(m_tree.host(), "echo daemon 1.0 x Operating System\n");
    EXPECT_EQ("2", text(process(), "RunType"));
}

TEST_F(ProcessClasses, UseTheOutputOfASoftwareInventoryThatFails) {
    m_processes.add("4711", example());
    writeProgram(m_tree.host(), "echo daemon 1.0 x Driver\nexit 1\n");
    EXPECT_EQ("3", text(process(), "RunType"));
    writeProgram(m_tree.host(), "echo daemon 1.0 x Driver\nkill -KILL $$\n");
    EXPECT_EQ("3", text(process(), "RunType"));
}

TEST_F(ProcessClasses, AreApplicationsIfTheSoftwareInventoryIsNotExecutable) {
    m_processes.add("4711", example());
    m_tree.write("/kq/bin/softinv", "#!/bin/sh\necho daemon 1.0 x Driver\n");
    EXPECT_EQ("4", text(process(), "RunType"));
}

TEST_F(ProcessClasses, RunTheSoftwareInventoryWithoutInputAndReadOnlyItsOutput) {
    m_processes.add("4711", example());
    writeProgram(m_tree.host(), "read line && echo daemon a b Driver\necho daemon a b Driver >&2\n");
    EXPECT_EQ("4", text(process(), "RunType"));
}

TEST_F(ProcessClasses, RunTheSoftwareInventoryInADirectoryOfAnyName) {
    const support::TempDir directory;
    const std::string log = directory.file("log");
    for (const std::string name : {"a b",     " ",
                                   "it's",    "''",
                                   "\"",      "a;b",
                                   "$(exit)", "`exit`",
                                   "$HOME",   "a\nb",
                                   "\n",      "a\\",
                                   "*",       "#",
                                   "~",       "&",
                                   "|",       "-c",
                                   "<>",      "!",
                                   "\xff",    "a' b\"; touch $(echo '"}) {
        const Host host(directory.file(name));
        ProcessTree(host.realPath("/proc")).add("4711", example());
        writeProgram(host, "echo run >>'" + log + "'\necho daemon 1.0 x Driver\n");
        std::filesystem::remove(log);
        EXPECT_EQ("3", text(onlyInstance(providerOf("QAV_UnixProcess", host)), "RunType")) << name;
        EXPECT_EQ("run\n", support::readFile(log)) << name;
    }
}

TEST_F(ProcessClasses, DoNotRunADirectoryNameAsACommand) {
    const support::TempDir directory;
    const std::string file = directory.file("made");
    for (const std::string name : {";touch made;", "$(touch made)", "`touch made`", "\ntouch made\n",
                                   "';touch made;'", "|touch made;", "&touch made&"}) {
        // There is no program at that path. "made" is a name in the directory of the test.
        const Host host(directory.file("x") + name);
        ProcessTree(host.realPath("/proc")).add("4711", example());
        const std::string before = std::filesystem::current_path();
        std::filesystem::current_path(directory.path());
        EXPECT_EQ("4", text(onlyInstance(providerOf("QAV_UnixProcess", host)), "RunType")) << name;
        std::filesystem::current_path(before);
        EXPECT_FALSE(std::filesystem::exists(file)) << name;
    }
}

TEST_F(ProcessClasses, DoNotRunTheSoftwareInventoryForStatistics) {
    m_processes.add("4711", example());
    const std::string log = m_tree.realPath("/log");
    writeProgram(m_tree.host(), "echo run >>'" + log + "'\n");
    statistics();
    EXPECT_FALSE(std::filesystem::exists(log));
    process();
    EXPECT_EQ("run\n", support::readFile(log));
}

TEST_F(ProcessClasses, CacheTheOutputOfTheSoftwareInventory) {
    m_processes.add("4711", example());
    m_tree.write("/kq/bin/softinv", "#!/bin/sh\necho >>\"${0%softinv}/runs\"\necho daemon 1.0 x Driver\n");
    ASSERT_EQ(0, ::chmod(m_tree.realPath("/kq/bin/softinv").c_str(), 0755));
    const Provider provider = providerOf("QAV_UnixProcess", m_tree.host());
    EXPECT_EQ("3", text(onlyInstance(provider), "RunType"));
    EXPECT_EQ("3", text(onlyInstance(provider), "RunType"));
    EXPECT_EQ("\n", m_tree.host().readFile("/kq/bin/runs"));
}

TEST_F(ProcessClasses, AreApplicationsIfTheSoftwareInventoryCannotBeRun) {
    m_processes.add("4711", example());
    m_tree.write("/kq/bin/softinv", "no program");
    EXPECT_EQ("4", text(process(), "RunType"));
}

TEST_F(ProcessClasses, ReportTheResourcesOfAProcess) {
    m_processes.add("4711", example());
    const CIMInstance instance = statistics();
    EXPECT_EQ("QAV_UnixProcessStatisticalInformation", text(instance, "CreationClassName"));
    EXPECT_EQ("4711", text(instance, "Handle"));
    EXPECT_EQ("132", text(instance, "RealStack"));
    EXPECT_EQ("300", text(instance, "RealData"));
    EXPECT_EQ("1600", text(instance, "RealText"));
    EXPECT_EQ("00000000000003.000000:000", text(instance, "TotalCPUTime"));
}

TEST_F(ProcessClasses, ValuesHaveTheTypesThatTheClassesDeclare) {
    m_processes.add("7", example());
    const CIMInstance described = process();
    EXPECT_EQ(CIMDataType::STRING, typeOf(described, "Handle").getType());
    EXPECT_EQ(CIMDataType::STRING, typeOf(described, "Parameters").getType());
    EXPECT_EQ(CIMDataType::UINT16, typeOf(described, "RunType").getType());
    EXPECT_EQ(CIMDataType::UINT16, typeOf(described, "ExecutionState").getType());
    const CIMInstance measured = statistics();
    for (const char* const size : {"RealStack", "RealData", "RealText"})
        EXPECT_EQ(CIMDataType::UINT64, typeOf(measured, size).getType()) << size;
    EXPECT_EQ(CIMDataType::DATETIME, typeOf(measured, "TotalCPUTime").getType());
}

TEST_F(ProcessClasses, AThreadOfTheKernelHasNeitherPathNorParametersNorSizes) {
    m_processes.add("2", kernelThread("kthreadd"));
    EXPECT_EQ("", text(process(), "ModulePath"));
    StringArray parameters(1, "before");
    process().getProperty("Parameters").getValue().get(parameters);
    EXPECT_EQ(0U, parameters.size());
    EXPECT_EQ("0", text(statistics(), "RealText"));
}

TEST_F(ProcessClasses, HaveAnInstanceForEveryProcess) {
    for (const char* const id : {"7", "8", "9"})
        m_processes.add(id);
    m_processes.add("self");
    EXPECT_EQ(3U, allInstances(providerOf("QAV_UnixProcess", m_tree.host())).size());
    EXPECT_EQ(3U, allInstances(providerOf("QAV_UnixProcessStatisticalInformation", m_tree.host())).size());
}

TEST_F(ProcessClasses, OfTwoHostsAreDistinguished) {
    const HostTree other;
    ProcessTree(other.realPath("/proc")).add("8");
    m_processes.add("7");
    const Provider provider = providerOf("QAV_UnixProcess", m_tree.host());
    const Provider otherProvider = providerOf("QAV_UnixProcess", other.host());
    EXPECT_EQ("7", text(onlyInstance(provider), "Handle"));
    EXPECT_EQ("8", text(onlyInstance(otherProvider), "Handle"));
    EXPECT_EQ("7", text(onlyInstance(provider), "Handle"));
}

TEST_F(ProcessClasses, HaveNoInstancesWithoutProc) {
    EXPECT_TRUE(allInstances(providerOf("QAV_UnixProcess", m_tree.host())).empty());
    EXPECT_TRUE(allInstances(providerOf("QAV_UnixProcessStatisticalInformation", m_tree.host())).empty());
}
