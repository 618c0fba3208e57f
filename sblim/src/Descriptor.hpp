#ifndef SBLIM_DESCRIPTOR_HPP
#define SBLIM_DESCRIPTOR_HPP
#include <fcntl.h>
#include <unistd.h>

namespace sblim {

/** A descriptor of our own, closed at the end, that stays out of the way of those which a command gets. */
class Descriptor {
public:
    /** The first number that no command's descriptor has. */
    static const int lowest = 5;

    Descriptor() = default;
    ~Descriptor() { close(); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    /**
     * Takes a descriptor over. One below the lowest (the caller may have closed its standard ones) gets
     * another number, close-on-exec. Returns whether there is one; -1 is none.
     */
    bool take(int descriptor) {
        m_number = descriptor;
        if (descriptor >= 0 && descriptor < lowest) {
            m_number = ::fcntl(descriptor, F_DUPFD_CLOEXEC, lowest);
            ::close(descriptor);
        }
        return isOpen();
    }
    void close() {
        if (isOpen())
            ::close(m_number);
        m_number = -1;
    }
    bool isOpen() const { return m_number >= 0; }
    /** -1 when it is not open. */
    int number() const { return m_number; }

private:
    int m_number = -1;
};

} // namespace sblim
#endif
