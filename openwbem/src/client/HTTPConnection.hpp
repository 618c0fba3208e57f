#ifndef OPENWBEM_CLIENT_HTTP_CONNECTION_HPP_INCLUDED
#define OPENWBEM_CLIENT_HTTP_CONNECTION_HPP_INCLUDED
#include <memory>
#include <optional>
#include <string>

namespace OpenWBEM {

/** An answer. One that is not good (2xx) may lack its body. */
struct HTTPReply {
    unsigned status = 0;
    std::string reason;
    /** Value of the header CIMError, a fault that the object manager found before it looked at the request.
     */
    std::string cimError;
    /** Values of the trailers of the same meaning; a code is empty when there was no error. */
    std::string trailerCimError;
    std::string trailerStatusCode;
    std::string trailerStatusDescription;
    std::string body;
};

/**
 * One persistent HTTP connection over a Unix-domain socket. Opens on the first exchange, closes after any
 * failure and opens again when needed. Starts no thread, raises no SIGPIPE, and its descriptors close on
 * exec.
 */
class HTTPConnection {
public:
    explicit HTTPConnection(const std::string& socketPath);
    ~HTTPConnection();
    HTTPConnection(const HTTPConnection&) = delete;
    HTTPConnection& operator=(const HTTPConnection&) = delete;

    /**
     * Sends a request and reads the answer to its end, within the bounds of clientTimeouts(). A
     * request on a kept connection that the peer turns out to have dropped is sent once more on a new one, so
     * send only what may be carried out twice.
     *
     * Throws SocketException when nobody listens, HTTPException when no answer comes or it is not HTTP,
     * IOException when the answer breaks off.
     */
    HTTPReply exchange(const std::string& request);

private:
    class Stream;

    // Nothing when a kept connection turned out to be dropped and the request may be sent again.
    std::optional<HTTPReply> tryExchange(const std::string& request, std::unique_ptr<Stream> stream,
                                         bool isKept);

    const std::string m_path;
    std::unique_ptr<Stream> m_stream; // null when not connected
};

} // namespace OpenWBEM
#endif
