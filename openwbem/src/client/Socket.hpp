#ifndef OPENWBEM_CLIENT_SOCKET_HPP_INCLUDED
#define OPENWBEM_CLIENT_SOCKET_HPP_INCLUDED
#include "client/Descriptor.hpp"
#include "client/Endpoint.hpp"
#include "client/Stream.hpp"

namespace OpenWBEM {

/** A connected stream socket. It closes on exec, and writing to it raises no SIGPIPE. */
class Socket : public Stream {
public:
    /** Connects. Throws SocketException, also when the deadline passes. */
    Socket(const Endpoint& endpoint, const Deadline& deadline);
    /** Takes over the descriptor of a socket that is connected. */
    explicit Socket(int connected)
        : m_descriptor(connected) {}

    bool send(std::string_view bytes) override;
    std::size_t receive(char* to, std::size_t size, const Deadline& deadline) override;
    bool isQuiet() override;

private:
    void wait(short event, const Deadline& deadline) const;

    const Descriptor m_descriptor;
};

} // namespace OpenWBEM
#endif
