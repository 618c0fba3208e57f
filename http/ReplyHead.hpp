#ifndef HTTP_REPLY_HEAD_HPP_INCLUDED
#define HTTP_REPLY_HEAD_HPP_INCLUDED
#include "http/RequestRules.hpp"

#include <cstddef>
#include <string>

namespace cimom {

/** How the client finds the end of a body. */
enum class Framing {
    /** By the length that the head tells. */
    length,
    chunks,
    /** By the last chunk, behind which errors may stand. */
    chunksAndTrailers,
    /** By the end of the connection. */
    connection
};

/**
 * The head of the answer to a request. It never has `Connection: close`: clients then throw the body away.
 *
 * @param length of the body, if it is told
 * @param number of the answer, of two digits: the namespace of its extension headers, RFC 2774
 */
std::string answerHead(const RequestHead& request, const char* contentType, Framing framing,
                       std::size_t length, const std::string& number);

/**
 * An error of HTTP, after which the connection is closed. Its detail stands in the reason phrase, see
 * onOneAsciiLine().
 *
 * @param isUnderstood the client has sent the head of a request that could be read, of either version of
 *                     HTTP, and is answered by HTTP/1.1; else by HTTP/1.0, which every client reads
 */
std::string refusalHead(const Refusal& refusal, bool isUnderstood);

} // namespace cimom
#endif
