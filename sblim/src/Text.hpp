#ifndef SBLIM_TEXT_HPP
#define SBLIM_TEXT_HPP
#include <cstddef>
#include <sys/types.h>

namespace sblim {

/** What a command has printed so far: bytes in one block of memory, with a zero behind them. */
class Text {
public:
    Text() = default;
    ~Text();
    Text(const Text&) = delete;
    Text& operator=(const Text&) = delete;

    /** Appends what one read(2) of a descriptor brings, and returns as it does; ENOMEM when memory runs out.
     */
    ssize_t readFrom(int descriptor);
    /** Null when empty. */
    const char* bytes() const { return m_bytes; }

    /**
     * Splits the text where it stands into an array of lines for freeLines(), and is empty then. Null when
     * there is no memory for it.
     */
    char** toLines();

private:
    bool makeRoom();
    std::size_t countLines() const;

    char* m_bytes = nullptr;
    std::size_t m_size = 0;
    std::size_t m_capacity = 0;
};

/** Releases an array of Text::toLines(). Null: does nothing. */
void freeLines(char** lines);

} // namespace sblim
#endif
