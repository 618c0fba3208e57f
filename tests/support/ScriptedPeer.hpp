#ifndef TESTS_SUPPORT_SCRIPTED_PEER_HPP
#define TESTS_SUPPORT_SCRIPTED_PEER_HPP
#include "support/TempDir.hpp"

#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace support {

/** What a scripted peer does when a whole request has arrived. */
struct Step {
    enum class Pace {
        atOnce,
        /** A byte at a time, the next when the client has taken the one before. */
        byteByByte,
        /** A byte every few milliseconds. */
        drop
    };
    enum class Then {
        keepOpen,
        close,
        /** Ends the connection so that the client sees it reset (TCP). */
        reset
    };

    /** Sent as it stands; may be empty. */
    std::string reply;
    Then then = Then::keepOpen;
    Pace pace = Pace::atOnce;
    /** Sent again and again after the reply until the client goes. The pace is then that of this alone. */
    std::string endless = {};

    static Step answer(std::string reply) { return {std::move(reply)}; }
    static Step answerAndClose(std::string reply) { return {std::move(reply), Then::close}; }
    static Step answerByteByByte(std::string reply) {
        return {std::move(reply), Then::keepOpen, Pace::byteByByte};
    }
    static Step answerWithoutEnd(std::string reply, std::string endless) {
        return {std::move(reply), Then::close, Pace::atOnce, std::move(endless)};
    }
    static Step dripWithoutEnd(std::string reply, std::string endless) {
        return {std::move(reply), Then::close, Pace::drop, std::move(endless)};
    }
    static Step close() { return {"", Then::close}; }
    static Step reset() { return {"", Then::reset}; }
    /** Says nothing and keeps the connection. */
    static Step staySilent() { return {""}; }
};

/** What a scripted peer listens on. */
enum class Listening { unixDomain, ipv4, ipv6 };

/**
 * Listens on a socket of its own, a Unix-domain socket or a loopback port, and plays an object manager: the
 * n-th request is answered with the n-th step, whichever connection it comes on; the last step serves all
 * further requests. One connection at a time.
 */
class ScriptedPeer {
public:
    explicit ScriptedPeer(std::vector<Step> steps, Listening listening = Listening::unixDomain);
    ~ScriptedPeer();
    ScriptedPeer(const ScriptedPeer&) = delete;
    ScriptedPeer& operator=(const ScriptedPeer&) = delete;

    /** URL that reaches the peer by the binary protocol. */
    std::string url() const;
    /** URL with another scheme, as in "http", and another host or user and host. */
    std::string url(const std::string& scheme, const std::string& host) const;
    std::string socketPath() const { return m_directory.file("peer"); }
    /** Port of TCP; 0 for a Unix-domain socket. */
    unsigned short port() const;
    /** The requests so far, head and body. */
    std::vector<std::string> requests() const;
    /** Number of connections so far. */
    unsigned connections() const;
    /** Waits until as many connections have ended. */
    void awaitEnds(unsigned count);

private:
    void run();
    void serve(int connection);
    bool carryOut(const Step& step, int connection) const;
    bool send(int connection, const std::string& bytes, Step::Pace pace) const;
    bool waitReadable(int descriptor) const;
    bool isStopped(int milliseconds) const;

    TempDir m_directory;
    std::vector<Step> m_steps;
    Listening m_listening;
    int m_listener;
    int m_stop[2];
    mutable std::mutex m_mutex;
    std::vector<std::string> m_requests;
    unsigned m_connections = 0;
    unsigned m_ended = 0;
    std::condition_variable m_hasEnded;
    std::thread m_thread;
};

/** URL of the object manager that listens on a Unix-domain socket. */
std::string urlOf(const std::string& socketPath);

} // namespace support
#endif
