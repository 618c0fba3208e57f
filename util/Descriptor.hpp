#ifndef UTIL_DESCRIPTOR_HPP_INCLUDED
#define UTIL_DESCRIPTOR_HPP_INCLUDED
#include <cerrno>
#include <string>
#include <unistd.h>
#include <utility>

namespace util {

/** Owns a file descriptor and closes it at the end of its scope. errno survives the destructor only if
 * close(2) succeeds. */
class Descriptor {
public:
    /** @param number result of a call like open(2); negative: owns nothing */
    explicit Descriptor(int number)
        : m_number(number) {}
    ~Descriptor() { reset(); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    bool isOpen() const { return m_number >= 0; }
    int number() const { return m_number; }
    /** Closes the descriptor, and takes ownership of another. */
    void reset(int number = -1) {
        if (isOpen())
            ::close(m_number);
        m_number = number;
    }
    /** Gives up ownership: the caller closes the descriptor. */
    int release() { return std::exchange(m_number, -1); }

private:
    int m_number;
};

/** Appends the rest of a file to a text. False, with errno set, if reading fails. */
inline bool readAll(const Descriptor& file, std::string& content) {
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

} // namespace util
#endif
