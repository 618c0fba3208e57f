#ifndef FUZZ_SUPPORT_CHUNKED_BODY_HPP
#define FUZZ_SUPPORT_CHUNKED_BODY_HPP
#include "cimom/Chunked.hpp"
#include "cimom/LampProvider.hpp"
#include "cimom/SessionRun.hpp"
#include "support/Pieces.hpp"

#include <cstdlib>
#include <string>

namespace fuzz {

/** The reply of a new object manager, without the date. */
inline std::string replyTo(const std::vector<std::string_view>& pieces) {
    cimom::ObjectManager manager = lampManager({"red", "green"});
    std::string reply = SessionRun(manager).answerTo(pieces);
    const std::size_t date = reply.find("Date: ");
    return date == std::string::npos ? reply : reply.erase(date, reply.find("\r\n", date) - date);
}

/** Aborts unless the reply to a body in chunks, received in pieces, equals the reply to the whole body. */
inline void expectSameInChunks(const char* contentType, const Pieces& body) {
    const std::string head = std::string("POST / HTTP/1.1\r\nContent-Type: ") + contentType + "\r\n";
    const std::string whole = head + "Content-Length: " + std::to_string(body.content().size()) + "\r\n\r\n" +
                              std::string(body.content());
    std::string chunks = head + "Transfer-Encoding: chunked\r\n\r\n";
    for (const std::string_view piece : body.of(body.content()))
        chunks += chunk(piece);
    chunks += chunk("");
    if (replyTo({whole}) != replyTo(body.of(chunks)))
        std::abort();
}

} // namespace fuzz
#endif
