#ifndef EXPORTER_BLOCK_HPP
#define EXPORTER_BLOCK_HPP

#include "metrics/Exposition.hpp"
#include "metrics/Scrape.hpp"

#include <array>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace exporter {

/** The metrics of one group as text, and how its reading went. */
struct Block {
    metrics::Reading reading;
    /** Why the group was not read; empty if it was. May hold text of the object manager. */
    std::string failure;
    /** In each format. */
    std::array<std::string, std::size(metrics::formats)> texts;

    const std::string& textIn(metrics::Format format) const {
        return texts[static_cast<std::size_t>(format)];
    }
};

/** Reads a group, as metrics::measure() does, and writes its metrics in each format. */
Block readBlock(long group);

/** The bytes of a block in the pipe from the child process that reads to its parent. */
std::string bytesOf(const Block& block);

/** Decodes blocks from the pipe. The child has read from a peer, so its bytes are not trusted. */
class BlockDecoder {
public:
    /** Maximum number of bytes of all blocks of a scrape. */
    static constexpr std::size_t maximumSize = 32 * 1024 * 1024;

    /** Calls `onBlock` for each block that is now complete. Returns false if the bytes are no block, or if
     * the blocks exceed maximumSize; do not call it again. */
    bool add(std::string_view bytes, const std::function<void(Block)>& onBlock);

private:
    std::string m_pending;
    std::size_t m_received = 0;
};

} // namespace exporter
#endif
