#ifndef UTIL_DESCRIPTOR_HPP_INCLUDED
#define UTIL_DESCRIPTOR_HPP_INCLUDED
#include <unistd.h>
#include <utility>

namespace util {

/** Owns a file descriptor and closes it at the end of its scope. errno survives the destructor only if close(2) succeeds. */
class Descriptor {
public:
    /** @param number result of a call like open(2); negative: owns nothing */
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
    /** Gives up ownership: the caller closes the descriptor. */
    int release() { return std::exchange(m_number, -1); }

private:
    int m_number;
};

} // namespace util
#endif
