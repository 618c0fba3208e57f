#ifndef TESTS_SNMP_SESSION_THREAD_HPP
#define TESTS_SNMP_SESSION_THREAD_HPP
#include <atomic>
#include <cstddef>
#include <functional>
#include <string>
#include <thread>

/**
 * A session that runs in a thread of its own, whose memory or system calls may fail, and its master in the
 * calling thread.
 */
class SessionThread {
public:
    /**
     * Runs a session to its end. Its master registers, reads and sets, again after each lost connection, and
     * at last asks the session to end.
     *
     * @param before called in the thread before the session connects
     * @param after called in the thread after its end
     * @return the message of the exception that ended the session; empty if the master did
     */
    static std::string run(const std::function<void()>& before, const std::function<void()>& after);
};

#endif
