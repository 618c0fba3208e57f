#ifndef TESTS_CIMOM_CHUNKED_HPP
#define TESTS_CIMOM_CHUNKED_HPP
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/** Optional parts of the chunk framing (RFC 9112, 7.1). */
struct ChunkLines {
    const char* zeros = "";
    const char* extensions = "";
    /** Lines after the last chunk, each with its line end. */
    const char* trailers = "";
};

/** One chunk. Empty data make the last chunk, with the trailers. */
std::string chunk(std::string_view data, const ChunkLines& lines = {});

/** The chunked form of a request with a Content-Length. `size` is the length of a chunk in bytes. */
std::string chunkedRequest(std::string_view request, std::size_t size, const ChunkLines& lines = {});

/** Splits a text into pieces of the given size; the last one may be shorter. */
std::vector<std::string_view> piecesOf(std::string_view text, std::size_t size);

#endif
