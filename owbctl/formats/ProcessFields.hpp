#ifndef OWBCTL_FORMATS_PROCESSFIELDS_HPP
#define OWBCTL_FORMATS_PROCESSFIELDS_HPP

#include "agent/Processes.hpp"

#include <string>
#include <vector>

namespace owbctl {

/** What is known of a process under one name: item texts; none for what was not read. */
struct ProcessField {
    std::string name;
    std::vector<std::string> values;
};

/** All of a process but its handle, under the names of the properties of the groups 16 and 22. Always the
 * same names in the same order. */
std::vector<ProcessField> fieldsOf(const Process& process);

} // namespace owbctl
#endif
