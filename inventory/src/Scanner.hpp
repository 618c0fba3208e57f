#ifndef INVENTORY_SCANNER_HPP
#define INVENTORY_SCANNER_HPP
#include <cstddef>
#include <cstring>

namespace inventory {

/*
 * Takes a line apart from the front. Each function skips what it looks for, and says whether it was there;
 * the line ends at a NUL at the latest. White space is that of the "C" locale.
 */
class Scanner {
public:
    Scanner(const char* line, std::size_t size)
        : m_next(line)
        , m_end(line + strnlen(line, size)) {}

    void skipSpace();
    bool skip(char expected);
    /* White space, and a word behind it. The word is not copied. */
    bool word(const char*& text, std::size_t& size);
    bool skipWord();
    /* White space, and a decimal number behind it, with or without a sign, that a word may follow. */
    bool skipNumber();
    /* The same number: one that is too large counts as the largest, a negative one from 2^64 down. */
    bool number(unsigned long long& value);
    bool character(char& value);
    /* At least one character, up to another one that is left. The text is not copied. */
    bool textUpTo(char end, const char*& text, std::size_t& size);

private:
    const char* m_next;
    const char* m_end;
};

} // namespace inventory

#endif
