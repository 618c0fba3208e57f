#ifndef TESTS_INVENTORY_PROCESS_TREE_HPP
#define TESTS_INVENTORY_PROCESS_TREE_HPP
#include <string>

/** The files of a fake process, proc(5). */
struct FakeProcess {
    std::string name = "prog";
    std::string state = "S";
    std::string parent = "1";
    std::string userTime = "0";
    std::string systemTime = "0";
    std::string cmdline = std::string("prog\0", 5);
    std::string exe = "/usr/bin/prog"; // empty: no link
    std::string status = "Name:\tprog\nUid:\t0\t1000\t1000\t1000\nGid:\t0\t100\t100\t100\n"
                         "VmData:\t 300 kB\nVmStk:\t 132 kB\nVmExe:\t 100 kB\nVmLib:\t 1500 kB\n";

    /** The line of the stat file, including the fields after the times. */
    std::string stat(const std::string& id) const;
};

/** A kernel thread: no command line, no program, no sizes. */
FakeProcess kernelThread(const std::string& name);

/** A fake /proc. */
class ProcessTree {
public:
    /** @param path of the directory, which the first process creates */
    explicit ProcessTree(std::string path)
        : m_path(std::move(path)) {}

    const std::string& path() const { return m_path; }
    std::string file(const std::string& id, const std::string& name) const;
    /** Writes all files of a process. */
    void add(const std::string& id, const FakeProcess& process = {}) const;
    /** Writes one file of a process. */
    void write(const std::string& id, const std::string& name, const std::string& content) const;
    /** Sets the target of the link exe of a process. */
    void link(const std::string& id, const std::string& target) const;
    /** Removes a file of a process. */
    void remove(const std::string& id, const std::string& name) const;
    /** Removes a process. */
    void remove(const std::string& id) const;

private:
    std::string m_path;
};

#endif
