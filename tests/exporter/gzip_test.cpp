#include "exporter/Gzip.hpp"

#include <gtest/gtest.h>

using namespace exporter;

namespace {

std::string decompressed(const std::string& bytes, std::size_t size) {
    z_stream stream{};
    EXPECT_EQ(Z_OK, ::inflateInit2(&stream, 16 + MAX_WBITS));
    std::string text(size + 1, '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = reinterpret_cast<Bytef*>(text.data());
    stream.avail_out = static_cast<uInt>(text.size());
    EXPECT_EQ(Z_STREAM_END, ::inflate(&stream, Z_FINISH));
    EXPECT_EQ(0U, stream.avail_in);
    text.resize(stream.total_out);
    ::inflateEnd(&stream);
    return text;
}

/** Compresses a text in pieces. */
std::string compressed(const std::string& text, std::size_t pieceSize) {
    Gzip gzip;
    std::string bytes;
    for (std::size_t at = 0; at < text.size(); at += pieceSize)
        gzip.add(std::string_view(text).substr(at, pieceSize), bytes);
    gzip.finish(bytes);
    return bytes;
}

} // namespace

TEST(Gzip, ATextInPiecesIsRestored) {
    std::string text;
    for (int i = 0; i < 5000; ++i)
        text +=
            "owb_a_total{device=\"eth" + std::to_string(i * 7919 % 1000) + "\"} " + std::to_string(i) + "\n";
    for (const std::size_t pieceSize : {std::size_t{1}, std::size_t{4096}, text.size()})
        EXPECT_EQ(text, decompressed(compressed(text, pieceSize), text.size()));
    EXPECT_LT(compressed(text, 4096).size(), text.size() / 3);
}

TEST(Gzip, AnEmptyTextIsRestored) {
    EXPECT_EQ("", decompressed(compressed("", 1), 0));
}
