#include "commands/Report.hpp"

#include "output/Text.hpp"

#include <iostream>

namespace owbctl {

int exitStatus(long status) {
    return status == OWB_DONE ? 0 : static_cast<int>(10 + status);
}

void reportFailure(const agent::Group& group) {
    std::cerr << "owbctl: group " << group.number << ": " << printable(group.failure.text) << '\n';
}

void hintAtDoctor() {
    std::cerr << "try 'owbctl doctor' with the same URL\n";
}

void hintAtTrace() {
    std::cerr << "        The same command with --trace - shows the object manager's reason\n";
}

} // namespace owbctl
