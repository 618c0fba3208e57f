#ifndef OWBCTL_FORMATS_PROCESSTABLE_HPP
#define OWBCTL_FORMATS_PROCESSTABLE_HPP

#include "agent/Processes.hpp"
#include "formats/Table.hpp"

#include <vector>

namespace owbctl {

/** A table of processes for people: codes as words, times as in ps(1), sizes in kB. */
Table processTable(const std::vector<Process>& processes);

} // namespace owbctl
#endif
