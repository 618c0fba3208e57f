#include "io/Window.hpp"

namespace OpenWBEM {
namespace io {
namespace {

const std::size_t pieceSize = 64 * 1024; // bytes asked of the source at a time

} // namespace

bool Window::fetch(std::size_t wanted) {
    if (!m_source)
        return false;
    m_buffer.consume(m_buffer.size() - size());
    std::size_t got = 1;
    while (m_buffer.size() < wanted && got > 0) {
        got = m_source->read(static_cast<char*>(m_buffer.prepare(pieceSize).data()), pieceSize);
        m_buffer.commit(got);
    }
    m_next = static_cast<const char*>(m_buffer.cdata().data());
    m_end = m_next + m_buffer.size();
    return m_buffer.size() >= wanted;
}

} // namespace io
} // namespace OpenWBEM
