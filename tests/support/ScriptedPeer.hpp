#ifndef TESTS_SUPPORT_SCRIPTED_PEER_HPP
#define TESTS_SUPPORT_SCRIPTED_PEER_HPP
#include "support/TempDir.hpp"

#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace support {

/** What a scripted peer does when a whole request has arrived. */
struct Step {
    enum class Then { keepOpen, close };

    /** Sent as it stands; may be empty. */
    std::string reply;
    Then then = Then::keepOpen;

    static Step answer(std::string reply) { return {std::move(reply), Then::keepOpen}; }
    static Step answerAndClose(std::string reply) { return {std::move(reply), Then::close}; }
    static Step close() { return {"", Then::close}; }
    /** Says nothing and keeps the connection. */
    static Step staySilent() { return {"", Then::keepOpen}; }
};

/**
 * Listens on a Unix-domain socket of its own and plays an object manager: the n-th request is answered with
 * the n-th step, whichever connection it comes on; the last step serves all further requests. One connection
 * at a time.
 */
class ScriptedPeer {
public:
    explicit ScriptedPeer(std::vector<Step> steps);
    ~ScriptedPeer();
    ScriptedPeer(const ScriptedPeer&) = delete;
    ScriptedPeer& operator=(const ScriptedPeer&) = delete;

    /** URL that reaches the peer by the binary protocol. */
    std::string url() const;
    std::string socketPath() const { return m_folder.file("peer"); }
    /** The requests so far, head and body. */
    std::vector<std::string> requests() const;
    /** Number of connections so far. */
    unsigned connections() const;

private:
    void run();
    void serve(int connection);
    bool waitReadable(int descriptor) const;

    TempDir m_folder;
    std::vector<Step> m_steps;
    int m_listener;
    int m_stop[2];
    mutable std::mutex m_mutex;
    std::vector<std::string> m_requests;
    unsigned m_connections = 0;
    std::thread m_thread;
};

/** URL of the object manager that listens on a Unix-domain socket. */
std::string urlOf(const std::string& socketPath);

} // namespace support
#endif
