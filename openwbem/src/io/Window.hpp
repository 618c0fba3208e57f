#ifndef OPENWBEM_IO_WINDOW_HPP_INCLUDED
#define OPENWBEM_IO_WINDOW_HPP_INCLUDED
#include "io/Source.hpp"

#include <boost/beast/core/flat_buffer.hpp>
#include <string_view>
#include <utility>

namespace OpenWBEM {
namespace io {

/**
 * The bytes that a decoder looks at: those that have come and are not consumed yet. It grows with what
 * arrives, never with what is announced.
 */
class Window {
public:
    /** All bytes that there are, in memory that must outlive the window. */
    Window(const char* data, std::size_t size)
        : m_next(data)
        , m_end(data + size) {}
    /** Bytes that come from a source, which must outlive the window. */
    explicit Window(Source& source)
        : m_source(&source) {}

    const char* begin() const { return m_next; }
    const char* end() const { return m_end; }
    std::size_t size() const { return static_cast<std::size_t>(m_end - m_next); }

    /** Makes size bytes visible; false when there are not that many before the end. Moves what is visible. */
    bool need(std::size_t size) { return size <= this->size() || fetch(size); }
    /** Removes bytes from the front, not more than are visible. */
    void consume(std::size_t size) { m_next += size; }

    /** Begins to count anew what comes from the source: more than maximumObject throws IOException. */
    void beginObject() { m_fetched = 0; }

    /** Keeps what is consumed from here on, for held(). */
    void hold() { m_held = m_next; }
    /** What was consumed since hold(); ends the holding. Valid until more is asked for. */
    std::string_view held() {
        const char* const from = std::exchange(m_held, nullptr);
        return std::string_view(from, static_cast<std::size_t>(m_next - from));
    }

private:
    bool fetch(std::size_t size);

    Source* m_source = nullptr;
    boost::beast::flat_buffer m_buffer; // of the source's bytes: the visible ones and some consumed ones
    const char* m_next = nullptr;
    const char* m_end = nullptr;
    const char* m_held = nullptr; // the first byte to be kept, if any
    std::size_t m_fetched = 0;    // bytes of the source since beginObject()
};

} // namespace io
} // namespace OpenWBEM
#endif
