#include "commands/Report.hpp"

#include "agent/Status.hpp"
#include "output/Text.hpp"

#include <iostream>

namespace owbctl {

void reportFailure(const Group& group, const std::string& url) {
    std::cerr << "owbctl: group " << group.number << " (" << group.className
              << "): " << printable(failureText(group.status, url)) << " (status " << group.status << ")\n";
}

void hintAtDoctor() {
    std::cerr << "        'owbctl doctor' with the same URL says why; --trace - shows what the library did\n";
}

void hintAtTrace() {
    std::cerr << "        The same command with --trace - shows the object manager's reason\n";
}

} // namespace owbctl
