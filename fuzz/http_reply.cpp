// An HTTP reply, read in pieces: head, framing, compression, trailers.
#include "OW_Exception.hpp"
#include "client/HTTPReply.hpp"
#include "support/Pieces.hpp"

#include <cstdint>
#include <memory>

using namespace OpenWBEM;

namespace {

void read(HTTPReply& reply) {
    if (!reply.message().readHead())
        return;
    reply.message().fields("WWW-Authenticate");
    reply.expectBody();
    char bytes[1000];
    try {
        while (reply.read(bytes, sizeof bytes) > 0)
            ;
    } catch (const Exception&) {
        reply.throwReportedError();
    }
    reply.finish();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::unique_ptr<Stream> kept;
    try {
        HTTPReply reply(std::make_unique<fuzz::PieceStream>(fuzz::Pieces(data, size)), kept);
        read(reply);
    } catch (const Exception&) {
    }
    return 0;
}
