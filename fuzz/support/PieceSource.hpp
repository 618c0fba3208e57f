#ifndef FUZZ_SUPPORT_PIECE_SOURCE_HPP
#define FUZZ_SUPPORT_PIECE_SOURCE_HPP
#include "io/Source.hpp"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace fuzz {

/** Hands out bytes in pieces of sizes that change, as a connection does. */
class PieceSource : public OpenWBEM::io::Source {
public:
    PieceSource(const std::uint8_t* data, std::size_t size)
        : m_next(data)
        , m_left(size) {}

    std::size_t read(char* to, std::size_t size) override {
        m_piece = m_piece % 61 + 7;
        const std::size_t n = std::min({size, m_left, m_piece});
        std::memcpy(to, m_next, n);
        m_next += n;
        m_left -= n;
        return n;
    }

private:
    const std::uint8_t* m_next;
    std::size_t m_left;
    std::size_t m_piece = 0;
};

} // namespace fuzz
#endif
