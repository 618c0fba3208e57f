#ifndef OPENWBEM_CLIENT_INFLATER_HPP_INCLUDED
#define OPENWBEM_CLIENT_INFLATER_HPP_INCLUDED
#include "io/Source.hpp"

#include <cstdint>
#include <vector>
#include <zlib.h>

namespace OpenWBEM {

/** Decompresses a body: one zlib stream (RFC 1950) without trailing bytes. */
class Inflater : public io::Source {
public:
    /** The source of the compressed bytes must outlive the inflater. */
    explicit Inflater(io::Source& deflated);
    ~Inflater() override;
    Inflater(const Inflater&) = delete;
    Inflater& operator=(const Inflater&) = delete;

    /**
     * Throws IOException "Failed reading data" if the stream is corrupt, truncated or followed by other
     * bytes, and if its compression ratio is implausible.
     */
    std::size_t read(char* to, std::size_t size) override;

private:
    void fill();
    std::size_t inflate(char* to, std::size_t size);

    io::Source& m_deflated;
    z_stream m_zlib{};
    std::vector<char> m_input;
    std::uint64_t m_received = 0; // compressed bytes so far
    std::uint64_t m_produced = 0;
    bool m_isComplete = false;
};

} // namespace OpenWBEM
#endif
