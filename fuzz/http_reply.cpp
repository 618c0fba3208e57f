// A reply as it comes over a socket: head, framing, compression, trailers.
#include "OW_Exception.hpp"
#include "client/HTTPReply.hpp"
#include "client/Socket.hpp"

#include <cstdint>
#include <cstdlib>
#include <sys/socket.h>

using namespace OpenWBEM;

namespace {

// The near end of a connection on which these bytes have come, and then the end.
std::unique_ptr<Stream> received(const std::uint8_t* data, std::size_t size) {
    int ends[2];
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
        std::abort();
    auto near = std::make_unique<Socket>(ends[0]);
    const Descriptor far(ends[1]);
    ::send(far.number(), data, size, MSG_DONTWAIT | MSG_NOSIGNAL);
    return near;
}

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
        HTTPReply reply(received(data, size), kept);
        read(reply);
    } catch (const Exception&) {
    }
    return 0;
}
