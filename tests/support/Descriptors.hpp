#ifndef TESTS_SUPPORT_DESCRIPTORS_HPP
#define TESTS_SUPPORT_DESCRIPTORS_HPP
#include <fcntl.h>
#include <set>

namespace support {

/** The open descriptors of this process below 1024. */
inline std::set<int> openDescriptors() {
    std::set<int> open;
    for (int descriptor = 0; descriptor < 1024; ++descriptor)
        if (::fcntl(descriptor, F_GETFD) >= 0)
            open.insert(descriptor);
    return open;
}

} // namespace support

#endif
