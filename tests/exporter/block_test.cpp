#include "exporter/Block.hpp"

#include <gtest/gtest.h>
#include <vector>

using namespace exporter;
using namespace std::chrono_literals;

namespace {

const Block first{{4, 0, 1500us, 2}, "", {"text\n1 2 3\n", "open"}};
const Block second{{22, 5, 2h, 0}, "no\nanswer", {"", ""}};

/** Decodes bytes in pieces. Nothing if they are invalid. */
std::optional<std::vector<Block>> decoded(const std::string& bytes, std::size_t pieceSize) {
    BlockDecoder decoder;
    std::vector<Block> blocks;
    for (std::size_t at = 0; at < bytes.size(); at += pieceSize) {
        if (!decoder.add(std::string_view(bytes).substr(at, pieceSize),
                         [&blocks](Block block) { blocks.push_back(std::move(block)); }))
            return std::nullopt;
    }
    return blocks;
}

} // namespace

TEST(Block, BlocksInPiecesOfAnySizeAreDecoded) {
    const std::string bytes = bytesOf(first) + bytesOf(second) + bytesOf(first);
    for (std::size_t pieceSize = 1; pieceSize <= bytes.size(); ++pieceSize) {
        const auto blocks = decoded(bytes, pieceSize);
        ASSERT_TRUE(blocks);
        ASSERT_EQ(3U, blocks->size());
        EXPECT_EQ(bytes, bytesOf((*blocks)[0]) + bytesOf((*blocks)[1]) + bytesOf((*blocks)[2]));
    }
    EXPECT_EQ("open", decoded(bytes, 1)->at(0).textIn(metrics::Format::openMetrics));
}

TEST(Block, AnIncompleteBlockIsNotDelivered) {
    const std::string bytes = bytesOf(first) + bytesOf(second);
    for (std::size_t size = 0; size < bytes.size(); ++size)
        EXPECT_EQ(size < bytesOf(first).size() ? 0U : 1U, decoded(bytes.substr(0, size), 7)->size());
}

TEST(Block, BytesThatAreNoBlockAreRejected) {
    for (const char* const bytes : {"\n", "1 2 3\n", "1 2 3 4 5 6 7\n", "1 2 3 4 5 x\n", "1 2 3 4 5 -6\n",
                                    "a", "1 2 3 4 99999999999 0\n", "1  2 3 4 5\n"}) {
        const auto blocks = decoded(std::string(bytes) + std::string(200, 'a'), 1000);
        EXPECT_FALSE(blocks) << bytes;
    }
}

TEST(Block, BlocksHaveAMaximumSize) {
    BlockDecoder decoder;
    const std::string half(BlockDecoder::maximumSize / 2, 'x');
    int blocks = 0;
    const auto count = [&blocks](const Block&) { ++blocks; };
    EXPECT_TRUE(decoder.add(bytesOf({{4, 0, 0us, 0}, "", {half, ""}}), count));
    EXPECT_EQ(1, blocks);
    EXPECT_FALSE(decoder.add(bytesOf({{5, 0, 0us, 0}, "", {half, ""}}), count));
    EXPECT_EQ(1, blocks);
}
