// What a server sends to the client during a TLS handshake, in pieces.
#include "OW_Exception.hpp"
#include "client/Endpoint.hpp"
#include "client/TlsModule.hpp"
#include "client/TlsSocket.hpp"
#include "support/Pieces.hpp"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <sys/socket.h>
#include <unistd.h>

using namespace OpenWBEM;

// The engine is a part of this program, so that the fuzzer sees which code runs.
decltype(&owtls_engine) OpenWBEM::tlsModule() {
    return owtls_engine;
}

namespace {

const std::size_t mostPieces = 100; // the kernel queues about 250
const std::size_t largestPiece = 16 * 1024;

/** A connection from which the client receives each piece by a call of its own, and then the end. */
std::unique_ptr<Socket> connectionWith(const fuzz::Pieces& input) {
    int ends[2];
    if (::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ends) != 0)
        std::abort();
    std::string_view left = input.content();
    std::size_t count = 0;
    for (const std::string_view piece : input.of(left)) {
        const std::size_t size = count++ < mostPieces ? piece.size() : left.size();
        const std::string_view sent = left.substr(0, std::min(size, largestPiece));
        if (sent.empty() || ::send(ends[0], sent.data(), sent.size(), MSG_NOSIGNAL) < 0)
            break;
        left.remove_prefix(sent.size());
    }
    ::shutdown(ends[0], SHUT_WR);
    ::close(ends[0]);
    return std::make_unique<Socket>(ends[1]);
}

bool isPrintable(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // The authority of most certificates in the corpus.
    ::setenv("OWB_TLS_CA", FUZZ_AUTHORITY, 1);
    const fuzz::Pieces pieces(data, size);
    Endpoint endpoint;
    endpoint.usesTls = true;
    endpoint.host = pieces.areSeveral() ? "127.0.0.1" : "localhost";
    endpoint.hostIsAddress = pieces.areSeveral();
    try {
        startTls(connectionWith(pieces), endpoint, Deadline("receive", std::chrono::seconds(5)));
        std::abort(); // no input knows the secrets of this handshake
    } catch (const Exception& e) {
        if (!isPrintable(e.getMessage()))
            std::abort();
    }
    return 0;
}
