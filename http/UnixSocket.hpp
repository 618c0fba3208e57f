#ifndef HTTP_UNIX_SOCKET_HPP_INCLUDED
#define HTTP_UNIX_SOCKET_HPP_INCLUDED
#include "util/Descriptor.hpp"
#include "util/LockFile.hpp"

#include <string>
#include <sys/stat.h>

namespace http {

/**
 * A Unix-domain stream socket that listens at a path, non-blocking, closed on exec.
 *
 * It replaces a socket file on which no process listens, and no other file. The lock file `<path>.lock`
 * excludes other processes meanwhile. The destructor removes the socket file, unless another file has
 * replaced it.
 */
class UnixSocket {
public:
    /**
     * Throws std::runtime_error `<path>: <why>`.
     *
     * @param mode of the file, despite the umask; who may write to the file may connect
     */
    UnixSocket(const std::string& path, mode_t mode);
    ~UnixSocket();
    UnixSocket(const UnixSocket&) = delete;
    UnixSocket& operator=(const UnixSocket&) = delete;

    /** A descriptor of the socket. The caller owns and closes it. */
    int duplicate() const;

private:
    std::string m_path;
    util::LockFile m_lock;
    util::Descriptor m_socket;
    struct stat m_file; // of the socket as created
};

} // namespace http
#endif
