#include "commands/Report.hpp"

#include "agent/Endpoint.hpp"
#include "output/Text.hpp"

#include <iostream>

namespace owbctl {

int exitStatus(long status) {
    return status == OWB_DONE ? 0 : static_cast<int>(10 + status);
}

void reportFailure(const agent::Group& group, const std::string& url) {
    std::cerr << "owbctl: group " << group.number << " (" << group.className
              << "): " << printable(agent::failureText(group.status, url)) << " (status " << group.status
              << ")\n";
}

void hintAtDoctor() {
    std::cerr
        << "        'owbctl doctor' with the same URL finds the reason; --trace - shows what the library "
           "did\n";
}

void hintAtTrace() {
    std::cerr << "        The same command with --trace - shows the object manager's reason\n";
}

} // namespace owbctl
