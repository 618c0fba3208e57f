#ifndef CIMOM_SYSTEM_DESCRIPTOR_HPP_INCLUDED
#define CIMOM_SYSTEM_DESCRIPTOR_HPP_INCLUDED
#include <string>
#include <utility>

namespace cimom {

/** A file descriptor that is closed at the end of its scope. */
class Descriptor {
public:
    /** @param number what a call like open(2) gave; negative for none */
    explicit Descriptor(int number)
        : m_number(number) {}
    ~Descriptor();
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int number() const { return m_number; }
    /** Hands it out: it is the caller's to close. */
    int release() { return std::exchange(m_number, -1); }

private:
    int m_number;
};

/** Appends all that can be read from a file up to its end. False, with errno set, when reading fails. */
bool readAll(const Descriptor& file, std::string& content);

} // namespace cimom
#endif
