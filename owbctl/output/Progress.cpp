#include "output/Progress.hpp"

#include <iostream>
#include <unistd.h>

namespace owbctl {
Progress::Progress()
    : m_isOn(isatty(STDERR_FILENO) != 0) {}

void Progress::show(const std::string& text) {
    if (!m_isOn)
        return;
    std::cerr << clearLine << text << std::flush;
    m_isShown = true;
}

void Progress::clear() {
    if (m_isShown)
        std::cerr << clearLine << std::flush;
    m_isShown = false;
}

} // namespace owbctl
