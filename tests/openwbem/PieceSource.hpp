#ifndef TESTS_OPENWBEM_PIECE_SOURCE_HPP
#define TESTS_OPENWBEM_PIECE_SOURCE_HPP
#include "io/Source.hpp"

#include <algorithm>
#include <string>
#include <utility>

/** Hands out bytes in pieces of one size, and counts them. */
class PieceSource : public OpenWBEM::io::Source {
public:
    explicit PieceSource(std::string bytes, std::size_t piece = 4096)
        : m_bytes(std::move(bytes))
        , m_piece(piece) {}

    std::size_t read(char* to, std::size_t size) override {
        const std::size_t n = m_bytes.copy(to, std::min(size, m_piece), m_at);
        m_at += n;
        return n;
    }
    std::size_t handedOut() const { return m_at; }

private:
    const std::string m_bytes;
    const std::size_t m_piece;
    std::size_t m_at = 0;
};

#endif
