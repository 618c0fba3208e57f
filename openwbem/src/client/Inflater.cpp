#include "client/Inflater.hpp"

#include "OW_IOException.hpp"

#include <algorithm>
#include <limits>

namespace OpenWBEM {
namespace {

const std::size_t pieceSize = 16 * 1024; // maximum compressed bytes of one read

// Limit of the ratio between the compressed and the uncompressed size, in both directions, plus an allowance.
// A thousand similar instances compress to 1/30; data that is meant to exhaust memory compresses to 1/1000;
// data that is meant to waste time, like empty blocks, expands to almost nothing.
const std::uint64_t ratioLimit = 100;
const std::uint64_t allowance = 1024ULL * 1024;

[[noreturn]] void throwFailed() {
    OW_THROW(IOException, "Failed reading data");
}

} // namespace

Inflater::Inflater(io::Source& deflated)
    : m_deflated(deflated)
    , m_input(pieceSize) {
    if (::inflateInit(&m_zlib) != Z_OK)
        throwFailed();
}

Inflater::~Inflater() {
    ::inflateEnd(&m_zlib);
}

std::size_t Inflater::read(char* to, std::size_t size) {
    std::size_t produced = 0;
    while (produced == 0 && !m_isComplete) {
        if (m_zlib.avail_in == 0)
            fill();
        produced = inflate(to, size);
    }
    if (produced == 0 && (m_zlib.avail_in > 0 || m_deflated.read(m_input.data(), 1) > 0))
        throwFailed();
    return produced;
}

void Inflater::fill() {
    const std::size_t received = m_deflated.read(m_input.data(), m_input.size());
    if (received == 0)
        throwFailed();
    m_received += received;
    m_zlib.next_in = reinterpret_cast<Bytef*>(m_input.data());
    m_zlib.avail_in = static_cast<uInt>(received);
}

std::size_t Inflater::inflate(char* to, std::size_t size) {
    const uInt room = static_cast<uInt>(std::min<std::size_t>(size, std::numeric_limits<uInt>::max()));
    m_zlib.next_out = reinterpret_cast<Bytef*>(to);
    m_zlib.avail_out = room;
    const int result = ::inflate(&m_zlib, Z_NO_FLUSH);
    if (result != Z_OK && result != Z_STREAM_END)
        throwFailed();
    m_isComplete = result == Z_STREAM_END;
    const std::size_t produced = room - m_zlib.avail_out;
    m_produced += produced;
    if (m_produced > m_received * ratioLimit + allowance || m_received > m_produced * ratioLimit + allowance)
        throwFailed();
    return produced;
}

} // namespace OpenWBEM
