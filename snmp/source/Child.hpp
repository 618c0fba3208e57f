#ifndef SNMP_SOURCE_CHILD_HPP
#define SNMP_SOURCE_CHILD_HPP

#include "util/Descriptor.hpp"

#include <functional>
#include <string>
#include <sys/types.h>
#include <utility>

namespace snmp {

/** A child process that serves the other end of a socket. The destructor kills it and waits for its end. */
class Child {
public:
    /**
     * Forks. The child keeps its end of the socket and standard error, reads nothing from standard input and
     * discards standard output. It ends when `serve` returns or throws, and with this process. Throws
     * std::system_error.
     */
    explicit Child(const std::function<void(int socket)>& serve);
    ~Child();
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    pid_t pid() const { return m_pid; }
    /** Gives this process's end of the socket to the caller, who closes it. */
    int releaseSocket() { return m_socket.release(); }

private:
    util::Descriptor m_socket{-1};
    pid_t m_pid = 0;
};

/** Serves the messages of the parent with the library, until the parent closes the socket. For the child
 * process: it alone calls the library's connection. */
void serveParent(int socket, const std::string& url);

} // namespace snmp
#endif
