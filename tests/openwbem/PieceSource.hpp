#ifndef TESTS_OPENWBEM_PIECE_SOURCE_HPP
#define TESTS_OPENWBEM_PIECE_SOURCE_HPP
#include "io/Source.hpp"

#include <algorithm>
#include <string>
#include <utility>

/** Returns bytes in pieces of one size, and counts them. */
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

/** Returns some bytes, then repeats others endlessly. */
class EndlessSource : public OpenWBEM::io::Source {
public:
    EndlessSource(std::string start, std::string again)
        : m_bytes(std::move(start))
        , m_again(std::move(again)) {}

    std::size_t read(char* to, std::size_t size) override {
        if (m_at == m_bytes.size()) {
            m_bytes = m_again;
            m_at = 0;
        }
        const std::size_t n = m_bytes.copy(to, size, m_at);
        m_at += n;
        m_handedOut += n;
        return n;
    }
    std::size_t handedOut() const { return m_handedOut; }

private:
    std::string m_bytes;
    const std::string m_again;
    std::size_t m_at = 0;
    std::size_t m_handedOut = 0;
};

#endif
