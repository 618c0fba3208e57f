#ifndef FUZZ_SUPPORT_CHUNKED_BODY_HPP
#define FUZZ_SUPPORT_CHUNKED_BODY_HPP
#include "cimom/Chunked.hpp"
#include "cimom/LampProvider.hpp"
#include "cimom/SessionRun.hpp"
#include "support/Pieces.hpp"

#include <cstdlib>
#include <string>

namespace fuzz {

/** What a new object manager answers to a request, without the date. */
inline std::string answerTo(const std::vector<std::string_view>& pieces) {
    cimom::ObjectManager manager = lampManager({"red", "green"});
    std::string answer = SessionRun(manager).answerTo(pieces);
    const std::size_t date = answer.find("Date: ");
    return date == std::string::npos ? answer : answer.erase(date, answer.find("\r\n", date) - date);
}

/** Aborts unless a body that arrives in chunks, and these in pieces, is answered as one that arrives whole.
 */
inline void expectSameInChunks(const char* contentType, const Pieces& body) {
    const std::string head = std::string("POST / HTTP/1.1\r\nContent-Type: ") + contentType + "\r\n";
    const std::string whole = head + "Content-Length: " + std::to_string(body.content().size()) + "\r\n\r\n" +
                              std::string(body.content());
    std::string chunks = head + "Transfer-Encoding: chunked\r\n\r\n";
    for (const std::string_view piece : body.of(body.content()))
        chunks += chunk(piece);
    chunks += chunk("");
    if (answerTo({whole}) != answerTo(body.of(chunks)))
        std::abort();
}

} // namespace fuzz
#endif
