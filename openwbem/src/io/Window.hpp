#ifndef OPENWBEM_IO_WINDOW_HPP_INCLUDED
#define OPENWBEM_IO_WINDOW_HPP_INCLUDED
#include "io/Source.hpp"

#include <boost/beast/core/flat_buffer.hpp>
#include <string_view>
#include <utility>

namespace OpenWBEM {
namespace io {

/**
 * The input buffer of a decoder: bytes that have arrived and are not consumed. Memory grows with the bytes
 * that arrive, never with a length that a peer announces.
 */
class Window {
public:
    /** All input, in memory that must outlive the window. */
    Window(const char* data, std::size_t size)
        : m_next(data)
        , m_end(data + size) {}
    /** Input from a source, which must outlive the window. */
    explicit Window(Source& source)
        : m_source(&source) {}

    const char* begin() const { return m_next; }
    const char* end() const { return m_end; }
    std::size_t size() const { return static_cast<std::size_t>(m_end - m_next); }

    /** Reads until size bytes are visible; false if the input ends before. May move the visible bytes. */
    bool need(std::size_t size) { return size <= this->size() || fetch(size); }
    /** Removes visible bytes from the front. */
    void consume(std::size_t size) { m_next += size; }

    /** Resets the byte count of the source. A count above maximumObject throws IOException. */
    void beginObject() { m_fetched = 0; }

    /** Starts a slice: endSlice() returns the bytes consumed from here on. */
    void beginSlice() { m_slice = m_next; }
    /** The bytes consumed since beginSlice(). Valid until the next need(). */
    std::string_view endSlice() {
        const char* const from = std::exchange(m_slice, nullptr);
        return std::string_view(from, static_cast<std::size_t>(m_next - from));
    }

private:
    bool fetch(std::size_t size);

    Source* m_source = nullptr;
    boost::beast::flat_buffer m_buffer; // visible bytes, and consumed ones before them
    const char* m_next = nullptr;
    const char* m_end = nullptr;
    const char* m_slice = nullptr; // start of the current slice, if any
    std::size_t m_fetched = 0;     // bytes read from the source since beginObject()
};

} // namespace io
} // namespace OpenWBEM
#endif
