// What a client sends to a server with TLS, in pieces: its first flight, and whatever follows.
#include "cimom/LampProvider.hpp"
#include "cimom/SessionRun.hpp"
#include "http/Tls.hpp"
#include "support/Certificates.hpp"
#include "support/Pieces.hpp"

#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace {

http::TlsContext& server() {
    static const std::shared_ptr<http::TlsContext> context =
        http::readTlsFiles({support::certificate("localhost.crt"), support::certificate("localhost.key"),
                            support::certificate("ca.crt")});
    return *context;
}

/** Whether bytes begin like a record of a handshake or an alert, of any version. */
bool isRecord(std::string_view bytes) {
    return bytes.size() > 5 && (bytes[0] == 0x15 || bytes[0] == 0x16) && bytes[1] == 3;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Pieces pieces(data, size);
    cimom::ObjectManager manager = lampManager({"red"});
    const std::string received = SessionRun(manager, &server()).answerTo(pieces.of(pieces.content()));
    if (!received.empty() && !isRecord(received))
        std::abort();
    return 0;
}
