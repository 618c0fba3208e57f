#ifndef TESTS_OWB_KERNEL_VIEW_HPP
#define TESTS_OWB_KERNEL_VIEW_HPP
#include "inventory/Records.hpp"

#include <set>
#include <string>
#include <sys/types.h>

/** A process of this host as the kernel shows it in /proc, read in another way than the library's. */
class KernelView {
public:
    explicit KernelView(pid_t pid);

    /** State letter. */
    char state() const { return m_state; }
    /** What the process table is to tell of it: all fields but the run type, in both modes. */
    const Record& record() const { return m_record; }

private:
    void readStat(const std::string& folder);
    void readStatus(const std::string& folder);

    char m_state = '?';
    Record m_record{};
};

/** IDs of the processes that there are, without those whose names hold a ")". */
std::set<std::string> kernelProcesses();

#endif
