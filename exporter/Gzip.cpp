#include "exporter/Gzip.hpp"

#include <new>

namespace exporter {

Gzip::Gzip() {
    const int gzipForm = 16;   // added to the size of the window
    const int windowBits = 12; // 4 KiB: lines repeat after a few hundred bytes
    const int memoryLevel = 5; // with this window 32 KiB a reply, not 256
    if (::deflateInit2(&m_stream, Z_BEST_SPEED, Z_DEFLATED, windowBits + gzipForm, memoryLevel,
                       Z_DEFAULT_STRATEGY) != Z_OK)
        throw std::bad_alloc();
}

Gzip::~Gzip() {
    ::deflateEnd(&m_stream);
}

void Gzip::deflate(std::string_view piece, int flush, std::string& compressed) {
    m_stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(piece.data()));
    m_stream.avail_in = static_cast<uInt>(piece.size());
    char buffer[4096];
    do {
        m_stream.next_out = reinterpret_cast<Bytef*>(buffer);
        m_stream.avail_out = sizeof buffer;
        ::deflate(&m_stream, flush);
        compressed.append(buffer, sizeof buffer - m_stream.avail_out);
    } while (m_stream.avail_out == 0);
}

} // namespace exporter
