#ifndef FUZZ_SUPPORT_BYTES_HPP
#define FUZZ_SUPPORT_BYTES_HPP
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>

namespace fuzz {

/** Splits an input from the front. Values beyond its end are 0 or empty. */
class Bytes {
public:
    Bytes(const std::uint8_t* data, std::size_t size)
        : m_next(data)
        , m_left(size) {}

    bool isEmpty() const { return m_left == 0; }

    std::uint8_t next() {
        std::uint8_t byte = 0;
        take(&byte, 1);
        return byte;
    }
    std::uint64_t number() {
        std::uint64_t value = 0;
        take(&value, sizeof value);
        return value;
    }
    double real() {
        double value = 0;
        take(&value, sizeof value);
        return value;
    }
    /** A text whose length is in the next two bytes. */
    std::string text() {
        const std::size_t low = next();
        std::string result(std::min(m_left, low + 256u * next()), '\0');
        take(result.data(), result.size());
        return result;
    }

private:
    void take(void* to, std::size_t size) {
        const std::size_t n = std::min(size, m_left);
        if (n == 0)
            return;
        std::memcpy(to, m_next, n);
        m_next += n;
        m_left -= n;
    }

    const std::uint8_t* m_next;
    std::size_t m_left;
};

} // namespace fuzz
#endif
