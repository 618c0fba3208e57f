#ifndef TESTS_SUPPORT_SCRIPTED_PEER_HPP
#define TESTS_SUPPORT_SCRIPTED_PEER_HPP
#include "support/TempDir.hpp"

#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace support {

/** The reaction of a scripted peer to a complete request. */
struct Step {
    enum class Pace {
        atOnce,
        /** A byte at a time; the next one when the client has read the previous one. */
        byteByByte,
        /** A byte every few milliseconds. */
        drop
    };
    enum class Then {
        keepOpen,
        close,
        /** Resets the connection (TCP). */
        reset
    };

    /** Sent unchanged; may be empty. */
    std::string reply;
    Then then = Then::keepOpen;
    Pace pace = Pace::atOnce;
    /** Repeated after the reply until the client disconnects, if not empty. Only this is then paced. */
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
    /** Sends nothing and keeps the connection open. */
    static Step staySilent() { return {""}; }
};

/** What a scripted peer listens on. */
enum class Listening { unixDomain, ipv4, ipv6 };

/**
 * A fake object manager on its own socket, a Unix-domain socket or a loopback port. It answers the n-th
 * request with the n-th step, counted over all connections, and all further requests with the last step. It
 * serves one connection at a time.
 */
class ScriptedPeer {
public:
    explicit ScriptedPeer(std::vector<Step> steps, Listening listening = Listening::unixDomain);
    ~ScriptedPeer();
    ScriptedPeer(const ScriptedPeer&) = delete;
    ScriptedPeer& operator=(const ScriptedPeer&) = delete;

    /** URL that reaches the peer by the binary protocol. */
    std::string url() const;
    /** URL with the given scheme, such as "http", and host. The host may include a user:
     * "user:password@host". */
    std::string url(const std::string& scheme, const std::string& host) const;
    std::string socketPath() const { return m_directory.file("peer"); }
    /** TCP port; 0 for a Unix-domain socket. */
    unsigned short port() const;
    /** The requests so far, each with head and body. */
    std::vector<std::string> requests() const;
    /** Number of connections so far. */
    unsigned connections() const;
    /** Waits until `count` connections have ended. */
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
