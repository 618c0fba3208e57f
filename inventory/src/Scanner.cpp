#include "Scanner.hpp"

#include <climits>

namespace inventory {
namespace {

inline bool isSpace(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

inline bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

} // namespace

void Scanner::skipSpace() {
    while (m_next != m_end && isSpace(*m_next))
        ++m_next;
}

bool Scanner::skip(char expected) {
    if (m_next == m_end || *m_next != expected)
        return false;
    ++m_next;
    return true;
}

bool Scanner::word(const char*& text, std::size_t& size) {
    skipSpace();
    text = m_next;
    while (m_next != m_end && !isSpace(*m_next))
        ++m_next;
    size = static_cast<std::size_t>(m_next - text);
    return size > 0;
}

bool Scanner::skipWord() {
    const char* text;
    std::size_t size;
    return word(text, size);
}

bool Scanner::skipNumber() {
    unsigned long long ignored;
    return number(ignored);
}

bool Scanner::number(unsigned long long& value) {
    skipSpace();
    const bool isNegative = skip('-');
    if (!isNegative)
        skip('+');
    if (m_next == m_end || !isDigit(*m_next))
        return false;
    unsigned long long result = 0;
    bool isTooLarge = false;
    for (; m_next != m_end && isDigit(*m_next); ++m_next) {
        const unsigned digit = static_cast<unsigned>(*m_next - '0');
        isTooLarge = isTooLarge || result > (ULLONG_MAX - digit) / 10;
        result = result * 10 + digit;
    }
    value = isTooLarge ? ULLONG_MAX : isNegative ? 0 - result : result;
    return true;
}

bool Scanner::character(char& value) {
    if (m_next == m_end)
        return false;
    value = *m_next++;
    return true;
}

bool Scanner::textUpTo(char end, const char*& text, std::size_t& size) {
    const void* const found = std::memchr(m_next, end, static_cast<std::size_t>(m_end - m_next));
    const char* const textEnd = found ? static_cast<const char*>(found) : m_end;
    text = m_next;
    size = static_cast<std::size_t>(textEnd - m_next);
    m_next = textEnd;
    return size > 0;
}

} // namespace inventory
