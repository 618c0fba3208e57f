#ifndef HTTP_SETTINGS_HPP_INCLUDED
#define HTTP_SETTINGS_HPP_INCLUDED
#include "http/Peer.hpp"
#include "http/Responder.hpp"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace http {

/** What clients may use, together and one by one. */
struct Limits {
    /**
     * Connections at a time. A quarter of them, at least one, is reserved for local clients. Fewer if the
     * process may not open enough descriptors.
     */
    std::size_t connections = 256;
    /** Bytes of the head of a request. */
    std::uint32_t head = 16 * 1024;
    /** Bytes of the body of a request. */
    std::uint64_t body = 1024ULL * 1024;
    /** Time between two requests of a connection. The client then gets status 408. */
    std::chrono::milliseconds idle = std::chrono::seconds(300);
    /** Time for a TLS handshake. Time in which a request must arrive, again to authorize it, and again to
     * send each piece of the reply.
     */
    std::chrono::milliseconds request = std::chrono::seconds(60);
};

/** How a server serves its clients. */
struct Settings {
    Limits limits{};
    /** Value of the field Server. */
    std::string name{};
    /** Methods of requests, as in the field Allow: "GET, POST". A request of another method gets status 405.
     */
    std::string methods{};
    /** Makes the responder of a connection. */
    std::function<std::unique_ptr<Responder>(const Peer&)> makeResponder{};
    /** Writes a message to the log. It may hold what a client sent. */
    std::function<void(const std::string&)> log = [](const std::string&) {};
    /** Successful requests are logged, too. */
    bool isVerbose = false;
};

} // namespace http
#endif
