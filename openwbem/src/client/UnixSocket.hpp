#ifndef OPENWBEM_CLIENT_UNIX_SOCKET_HPP_INCLUDED
#define OPENWBEM_CLIENT_UNIX_SOCKET_HPP_INCLUDED
#include <chrono>
#include <string>

namespace OpenWBEM {

/** A connected Unix-domain stream socket, closed on exec. */
class UnixSocket {
public:
    /**
     * Connects to the socket at a path, which must not be longer than a socket's path may be. The timeout
     * bounds the whole wait, whatever signals arrive. Throws SocketException.
     */
    UnixSocket(const std::string& path, std::chrono::milliseconds timeout);
    ~UnixSocket();
    UnixSocket(const UnixSocket&) = delete;
    UnixSocket& operator=(const UnixSocket&) = delete;

    int number() const { return m_number; }
    /** Leaves the descriptor to somebody else, who closes it. */
    void release() { m_number = -1; }

private:
    int m_number;
};

} // namespace OpenWBEM
#endif
