#ifndef FUZZ_SUPPORT_PIECES_HPP
#define FUZZ_SUPPORT_PIECES_HPP
#include "client/Stream.hpp"
#include "io/Source.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace fuzz {

/**
 * An input with the sizes of its reads: one byte with the number of sizes (0 to 7), one byte per size (the
 * size minus 1), the content. Reads use the sizes in turn; without sizes, one read returns the whole content.
 */
class Pieces {
public:
    Pieces(const std::uint8_t* data, std::size_t size)
        : m_content(reinterpret_cast<const char*>(data), size) {
        if (size == 0)
            return;
        const std::size_t count = std::min<std::size_t>(data[0] % 8u, size - 1);
        m_sizes.assign(data + 1, data + 1 + count);
        m_content.remove_prefix(1 + count);
    }

    std::string_view content() const { return m_content; }
    bool areSeveral() const { return !m_sizes.empty(); }

    /** The pieces of a text. */
    std::vector<std::string_view> of(std::string_view text) const {
        std::vector<std::string_view> pieces;
        while (!text.empty()) {
            pieces.push_back(text.substr(0, size(pieces.size(), text.size())));
            text.remove_prefix(pieces.back().size());
        }
        return pieces;
    }

private:
    std::size_t size(std::size_t piece, std::size_t all) const {
        return m_sizes.empty() ? all : m_sizes[piece % m_sizes.size()] + std::size_t{1};
    }

    std::string_view m_content;
    std::vector<std::uint8_t> m_sizes;
};

/** Returns the content of an input piece by piece, then 0 bytes. */
class Arrival {
public:
    explicit Arrival(const Pieces& pieces)
        : m_pieces(pieces.of(pieces.content())) {}

    std::size_t take(char* to, std::size_t size) {
        if (m_next == m_pieces.size())
            return 0;
        std::string_view& piece = m_pieces[m_next];
        const std::size_t taken = piece.copy(to, size);
        piece.remove_prefix(taken);
        m_next += piece.empty() ? 1 : 0;
        return taken;
    }

private:
    std::vector<std::string_view> m_pieces;
    std::size_t m_next = 0;
};

/** A body that arrives in pieces. */
class PieceSource : public OpenWBEM::io::Source {
public:
    explicit PieceSource(const Pieces& pieces)
        : m_arrival(pieces) {}

    std::size_t read(char* to, std::size_t size) override { return m_arrival.take(to, size); }

private:
    Arrival m_arrival;
};

/** A connection on which bytes arrive in pieces. */
class PieceStream : public OpenWBEM::Stream {
public:
    explicit PieceStream(const Pieces& pieces)
        : m_arrival(pieces) {}

    bool send(std::string_view) override { return true; }
    std::size_t receive(char* to, std::size_t size, const OpenWBEM::Deadline&) override {
        return m_arrival.take(to, size);
    }
    bool isQuiet() override { return false; }

private:
    Arrival m_arrival;
};

} // namespace fuzz
#endif
