#ifndef TESTS_CIMOM_CHUNKED_HPP
#define TESTS_CIMOM_CHUNKED_HPP
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/** A way to send a body in chunks (RFC 9112, section 7.1). */
struct Chunking {
    /** Bytes of a chunk. */
    std::size_t size;
    /** What stands before the size of each chunk, behind it, and behind the last chunk. */
    const char* zeros = "";
    const char* extensions = "";
    const char* trailers = "";
};

/** A body in chunks. */
std::string chunked(std::string_view body, const Chunking& way);

/** A request whose head tells the length of its body, as one in chunks. */
std::string chunkedRequest(std::string_view request, const Chunking& way);

/** The pieces that a text falls into, all of the same size but the last. */
std::vector<std::string_view> piecesOf(std::string_view text, std::size_t size);

#endif
