#ifndef OPENWBEM_CLIENT_DESCRIPTOR_HPP_INCLUDED
#define OPENWBEM_CLIENT_DESCRIPTOR_HPP_INCLUDED
#include <unistd.h>

namespace OpenWBEM {

/** Owns a file descriptor, if it is one (not negative), and closes it. */
class Descriptor {
public:
    explicit Descriptor(int number)
        : m_number(number) {}
    ~Descriptor() {
        if (isOpen())
            ::close(m_number);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    bool isOpen() const { return m_number >= 0; }
    int number() const { return m_number; }

private:
    const int m_number;
};

} // namespace OpenWBEM
#endif
