#include "io/Window.hpp"

#include "OW_IOException.hpp"
#include "io/Limits.hpp"

namespace OpenWBEM {
namespace io {
namespace {

const std::size_t pieceSize = 64 * 1024; // maximum bytes of one read from the source

} // namespace

bool Window::fetch(std::size_t wanted) {
    if (!m_source)
        return false;
    const auto kept = static_cast<std::size_t>(m_slice ? m_next - m_slice : 0);
    m_buffer.consume(m_buffer.size() - kept - size());
    std::size_t got = 1;
    while (m_buffer.size() < kept + wanted && got > 0) {
        got = m_source->read(static_cast<char*>(m_buffer.prepare(pieceSize).data()), pieceSize);
        m_buffer.commit(got);
        m_fetched += got;
        if (m_fetched > maximumObject)
            OW_THROW(IOException, "Failed reading data: an object is too long");
    }
    const char* const first = static_cast<const char*>(m_buffer.cdata().data());
    m_next = first + kept;
    m_end = first + m_buffer.size();
    if (m_slice)
        m_slice = first;
    return size() >= wanted;
}

} // namespace io
} // namespace OpenWBEM
