#ifndef TESTS_OWB_KERNEL_VIEW_HPP
#define TESTS_OWB_KERNEL_VIEW_HPP
#include "inventory/Records.hpp"

#include <set>
#include <string>
#include <sys/types.h>

/** A process of this host, read from /proc independently of the library. */
class KernelView {
public:
    explicit KernelView(pid_t pid);

    /** State letter. */
    char state() const { return m_state; }
    /** The expected fields of the process table in both modes, without the run type. */
    const Record& record() const { return m_record; }

private:
    void readStat(const std::string& directory);
    void readStatus(const std::string& directory);

    char m_state = '?';
    Record m_record{};
};

/** IDs of all processes whose names contain no ")". */
std::set<std::string> kernelProcesses();

#endif
