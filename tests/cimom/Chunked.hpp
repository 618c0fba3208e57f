#ifndef TESTS_CIMOM_CHUNKED_HPP
#define TESTS_CIMOM_CHUNKED_HPP
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/** What may be added to the lines of chunks (RFC 9112, 7.1). */
struct ChunkLines {
    const char* zeros = "";
    const char* extensions = "";
    /** Lines behind the last chunk, each with its end. */
    const char* trailers = "";
};

/** One chunk; without data the last one, and the trailers. */
std::string chunk(std::string_view data, const ChunkLines& lines = {});

/** A request whose head tells the length of its body, with the body in chunks of a size. */
std::string chunkedRequest(std::string_view request, std::size_t size, const ChunkLines& lines = {});

/** The pieces that a text falls into, all of the same size but the last. */
std::vector<std::string_view> piecesOf(std::string_view text, std::size_t size);

#endif
