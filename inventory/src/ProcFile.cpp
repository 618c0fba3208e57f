#include "ProcFile.hpp"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace inventory {

ProcFile::ProcFile(const char* path)
    : m_descriptor(open(path, O_RDONLY | O_CLOEXEC)) {}

ProcFile::~ProcFile() {
    if (isOpen())
        close(m_descriptor);
}

std::size_t ProcFile::read(char* buffer, std::size_t size) {
    ssize_t count;
    do
        count = ::read(m_descriptor, buffer, size);
    while (count < 0 && errno == EINTR);
    return count < 0 ? 0 : static_cast<std::size_t>(count);
}

ProcLines::ProcLines(ProcFile& file)
    : m_file(file)
    , m_begin(0)
    , m_end(0)
    , m_isAll(false) {}

bool ProcLines::next(const char*& line, std::size_t& size) {
    const void* lineEnd = std::memchr(m_buffer + m_begin, '\n', m_end - m_begin);
    if (!lineEnd && m_end - m_begin < longestLine && !m_isAll) {
        readMore();
        lineEnd = std::memchr(m_buffer, '\n', m_end);
    }
    line = m_buffer + m_begin;
    size = lineEnd ? static_cast<std::size_t>(static_cast<const char*>(lineEnd) + 1 - line) : m_end - m_begin;
    size = std::min(size, longestLine);
    m_begin += size;
    return size > 0;
}

void ProcLines::readMore() {
    std::memmove(m_buffer, m_buffer + m_begin, m_end - m_begin);
    m_end -= m_begin;
    m_begin = 0;
    const std::size_t room = sizeof m_buffer - m_end;
    const std::size_t count = m_file.read(m_buffer + m_end, room);
    m_end += count;
    m_isAll = count < room;
}

} // namespace inventory
