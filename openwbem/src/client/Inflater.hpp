#ifndef OPENWBEM_CLIENT_INFLATER_HPP_INCLUDED
#define OPENWBEM_CLIENT_INFLATER_HPP_INCLUDED
#include "io/Source.hpp"

#include <cstdint>
#include <vector>
#include <zlib.h>

namespace OpenWBEM {

/** Undoes the compression of a body: a zlib stream (RFC 1950), and nothing behind it. */
class Inflater : public io::Source {
public:
    /** The compressed bytes come from a source that must outlive this one. */
    explicit Inflater(io::Source& deflated);
    ~Inflater() override;
    Inflater(const Inflater&) = delete;
    Inflater& operator=(const Inflater&) = delete;

    /**
     * Throws IOException "Failed reading data" when the stream is corrupt, incomplete or followed by more,
     * and when it yields far more or far less than honest data would.
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
