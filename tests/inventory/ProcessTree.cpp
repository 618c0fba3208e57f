#include "inventory/ProcessTree.hpp"

#include <filesystem>
#include <fstream>
#include <stdexcept>

std::string FakeProcess::stat(const std::string& id) const {
    return id + " (" + name + ") " + state + " " + parent + " 10 11 0 -1 4194560 12 13 14 15 " + userTime +
           " " + systemTime + " 16 17 20 0 1 0 18 19 20 21\n";
}

FakeProcess kernelThread(const std::string& name) {
    FakeProcess process;
    process.name = name;
    process.parent = "2";
    process.cmdline = "";
    process.exe = "";
    process.status = "Name:\t" + name + "\nUid:\t0\t0\t0\t0\nGid:\t0\t0\t0\t0\nThreads:\t1\n";
    return process;
}

std::string ProcessTree::file(const std::string& id, const std::string& name) const {
    return m_path + "/" + id + "/" + name;
}

void ProcessTree::add(const std::string& id, const FakeProcess& process) const {
    write(id, "stat", process.stat(id));
    write(id, "cmdline", process.cmdline);
    write(id, "status", process.status);
    if (!process.exe.empty())
        link(id, process.exe);
}

void ProcessTree::write(const std::string& id, const std::string& name, const std::string& content) const {
    std::filesystem::create_directories(m_path + "/" + id);
    std::ofstream out(file(id, name), std::ios::binary);
    out << content;
    if (!out.flush())
        throw std::runtime_error("cannot write " + file(id, name));
}

void ProcessTree::link(const std::string& id, const std::string& target) const {
    std::filesystem::remove(file(id, "exe"));
    std::filesystem::create_symlink(target, file(id, "exe"));
}

void ProcessTree::remove(const std::string& id, const std::string& name) const {
    std::filesystem::remove_all(file(id, name));
}

void ProcessTree::remove(const std::string& id) const {
    std::filesystem::remove_all(m_path + "/" + id);
}
