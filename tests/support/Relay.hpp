#ifndef TESTS_SUPPORT_RELAY_HPP
#define TESTS_SUPPORT_RELAY_HPP
#include <functional>
#include <string>
#include <thread>

namespace support {

/** Passes connections to a loopback port on to another one, one after the other. */
class Relay {
public:
    /** Passes the bytes of a connection between two sockets, until one of them ends. Runs in a thread. */
    using Pump = std::function<void(int client, int server)>;

    Relay(unsigned short serverPort, Pump pump);
    ~Relay();
    Relay(const Relay&) = delete;
    Relay& operator=(const Relay&) = delete;

    /** URL of the relay with a scheme and a host. */
    std::string url(const std::string& scheme, const std::string& host) const;
    unsigned short port() const;

private:
    void run();

    const int m_listener;
    const unsigned short m_serverPort;
    const Pump m_pump;
    std::thread m_thread;
};

/** Waits until one of two sockets is readable. Returns whether the first one is, and whether the second one.
 */
struct Readable {
    bool first;
    bool second;
};
Readable awaitEither(int first, int second);

/** Waits until the peer of a socket closes the connection, and reads nothing. */
void awaitEnd(int socket);

/** Lets the peer of a socket see a reset instead of an end when the socket is closed. */
void resetWhenClosed(int socket);

} // namespace support
#endif
