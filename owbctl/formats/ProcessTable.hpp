#ifndef OWBCTL_FORMATS_PROCESSTABLE_HPP
#define OWBCTL_FORMATS_PROCESSTABLE_HPP

#include "agent/Processes.hpp"
#include "formats/Table.hpp"

#include <string>
#include <vector>

namespace owbctl {

/** One property of a process: item texts; empty if the process was not in the group of the property. */
struct ProcessField {
    std::string name;
    std::vector<std::string> values;
};

/** All properties of a process except its handle, under their names in groups 16 and 22. Always the same
 * names in the same order. */
std::vector<ProcessField> fieldsOf(const agent::Process& process);

/** A table of processes for people: names of codes, times as in ps(1), sizes in kB. Names of more than 16
 * columns are cut. A wide table has whole names, the kind of each process, and each size. */
Table processTable(const std::vector<agent::Process>& processes, bool isWide = false);

} // namespace owbctl
#endif
