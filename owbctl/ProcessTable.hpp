#ifndef OWBCTL_PROCESSTABLE_HPP
#define OWBCTL_PROCESSTABLE_HPP

#include "Processes.hpp"
#include "Table.hpp"

#include <vector>

namespace owbctl {

/** A table of processes for people: codes as words, times as in ps(1), sizes in kB. */
Table processTable(const std::vector<Process>& processes);

} // namespace owbctl
#endif
