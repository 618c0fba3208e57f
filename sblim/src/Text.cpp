#include "Text.hpp"

#include <cstdlib>
#include <cstring>
#include <unistd.h>

namespace sblim {

Text::~Text() {
    std::free(m_bytes);
}

// Grows by a quarter: realloc() remaps large blocks without copying, and untouched pages use no memory.
bool Text::grow() {
    const std::size_t capacity = m_capacity + m_capacity / 4 + 4096;
    void* const bytes = std::realloc(m_bytes, capacity);
    if (!bytes)
        return false;
    m_bytes = static_cast<char*>(bytes);
    m_capacity = capacity;
    return true;
}

ssize_t Text::readFrom(int descriptor) {
    if (m_size + 1 >= m_capacity && !grow())
        return -1; // errno of realloc
    const ssize_t count = ::read(descriptor, m_bytes + m_size, m_capacity - m_size - 1);
    if (count > 0)
        m_size += static_cast<std::size_t>(count);
    m_bytes[m_size] = '\0';
    return count;
}

std::size_t Text::countLines() const {
    std::size_t count = m_size > 0 && m_bytes[m_size - 1] != '\n' ? 1 : 0;
    for (std::size_t i = 0; i < m_size; ++i)
        count += m_bytes[i] == '\n' ? 1 : 0;
    return count;
}

// The entry before the first line points to the block of all lines, which freeLines() releases.
char** Text::toLines() {
    char** const block = static_cast<char**>(std::calloc(countLines() + 2, sizeof(char*)));
    if (!block)
        return nullptr;
    char** entry = block;
    *entry++ = m_bytes;
    char* const end = m_bytes + m_size;
    for (char* line = m_bytes; line < end;) {
        *entry++ = line;
        void* const newline = std::memchr(line, '\n', static_cast<std::size_t>(end - line));
        if (!newline)
            break;
        line = static_cast<char*>(newline);
        *line++ = '\0';
    }
    m_bytes = nullptr;
    m_size = m_capacity = 0;
    return block + 1;
}

void freeLines(char** lines) {
    if (!lines)
        return;
    std::free(lines[-1]);
    std::free(lines - 1);
}

} // namespace sblim
