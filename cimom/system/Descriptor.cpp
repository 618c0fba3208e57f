#include "system/Descriptor.hpp"

#include <cerrno>
#include <unistd.h>

namespace cimom {

Descriptor::~Descriptor() {
    if (m_number >= 0)
        ::close(m_number);
}

bool readAll(const Descriptor& file, std::string& content) {
    char buffer[16384];
    for (;;) {
        const ssize_t size = ::read(file.number(), buffer, sizeof buffer);
        if (size == 0)
            return true;
        if (size > 0)
            content.append(buffer, static_cast<std::size_t>(size));
        else if (errno != EINTR)
            return false;
    }
}

} // namespace cimom
