#ifndef OPENWBEM_CLIENT_SOCKET_HPP_INCLUDED
#define OPENWBEM_CLIENT_SOCKET_HPP_INCLUDED
#include "client/Endpoint.hpp"
#include "client/Stream.hpp"
#include "util/Descriptor.hpp"

namespace OpenWBEM {

/** A connected stream socket: close-on-exec, without SIGPIPE. */
class Socket : public Stream {
public:
    /** Connects. Throws SocketException, also on timeout. */
    Socket(const Endpoint& endpoint, const Deadline& deadline);
    /** Takes ownership of a connected descriptor. */
    explicit Socket(int connected)
        : m_descriptor(connected) {}

    bool send(std::string_view bytes) override;
    /** The same, but the deadline limits the whole call. */
    bool send(std::string_view bytes, const Deadline& deadline);
    std::size_t receive(char* to, std::size_t size, const Deadline& deadline) override;
    bool isQuiet() override;

private:
    bool sendBefore(std::string_view bytes, const Deadline* deadline);
    void wait(short event, const Deadline& deadline) const;

    const util::Descriptor m_descriptor;
};

} // namespace OpenWBEM
#endif
