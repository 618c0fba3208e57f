#include "Hint.hpp"

#include <iostream>

namespace owbctl {

void hintAtConnection() {
    std::cerr << "owbctl: is owbcimomd running, and does --url name its socket?\n";
    hintAtTrace();
}

void hintAtTrace() {
    std::cerr << "        For the cause: echo /tmp/owb.log >vdxDebug, run this again, read /tmp/owb.log\n";
}

} // namespace owbctl
