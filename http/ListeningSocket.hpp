#ifndef HTTP_LISTENING_SOCKET_HPP_INCLUDED
#define HTTP_LISTENING_SOCKET_HPP_INCLUDED
#include "system/LockFile.hpp"

#include <string>
#include <sys/stat.h>

namespace cimom {

/**
 * A Unix-domain stream socket that listens at a path, non-blocking, closed on exec.
 *
 * It takes the place of a socket that a process left behind, but never that of one on which another process
 * still listens, nor that of any other file. The lock file `<path>.lock` keeps two processes from doing so at
 * the same time. The socket file is removed at the end, unless it has been replaced meanwhile.
 */
class ListeningSocket {
public:
    /**
     * Throws std::runtime_error that says `<path>: <why>`.
     *
     * @param mode of the file, whatever the umask; who may write to it may connect
     */
    ListeningSocket(const std::string& path, mode_t mode);
    ~ListeningSocket();
    ListeningSocket(const ListeningSocket&) = delete;
    ListeningSocket& operator=(const ListeningSocket&) = delete;

    /** A descriptor of the socket, which the caller owns and closes. */
    int duplicate() const;

private:
    std::string m_path;
    LockFile m_lock;
    int m_descriptor;
    struct stat m_file; // of the socket as it was made
};

} // namespace cimom
#endif
