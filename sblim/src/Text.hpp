#ifndef SBLIM_TEXT_HPP
#define SBLIM_TEXT_HPP
#include <cstddef>
#include <sys/types.h>

namespace sblim {

/** The output of a command so far: bytes in one block of memory, NUL-terminated. */
class Text {
public:
    Text() = default;
    ~Text();
    Text(const Text&) = delete;
    Text& operator=(const Text&) = delete;

    /** Appends the bytes of one read(2). Returns like read(2); fails with ENOMEM when out of memory. */
    ssize_t readFrom(int descriptor);
    /** Null if empty. */
    const char* bytes() const { return m_bytes; }

    /**
     * Splits the text in place into an array of lines, which freeLines() releases. The text is empty
     * afterwards. Null when out of memory.
     */
    char** toLines();

private:
    bool grow();
    std::size_t countLines() const;

    char* m_bytes = nullptr;
    std::size_t m_size = 0;
    std::size_t m_capacity = 0;
};

/** Releases an array of Text::toLines(). Null: does nothing. */
void freeLines(char** lines);

} // namespace sblim
#endif
