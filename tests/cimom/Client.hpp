#ifndef TESTS_CIMOM_CLIENT_HPP
#define TESTS_CIMOM_CLIENT_HPP
#include "OW_CIMInstance.hpp"

#include <cstdint>
#include <string>
#include <string_view>
#include <sys/socket.h>
#include <vector>

/** A reply as it arrived, and what HTTP makes of it. */
struct Reply {
    /** All its bytes. */
    std::string bytes;
    unsigned status = 0;
    std::string reason;
    /** Without the chunks. */
    std::string body;

    bool hasLine(const std::string& line) const {
        return bytes.find("\r\n" + line + "\r\n") != std::string::npos;
    }
};

/** One end of a connection to an object manager. Every wait for it ends after some seconds, with an
 * exception. */
class Client {
public:
    /** Connects to a Unix-domain socket. */
    explicit Client(const std::string& socketPath);
    /** Connects to a port of the loopback address, of IPv4 or of IPv6. */
    explicit Client(std::uint16_t port, int family = AF_INET);
    /** Takes a connected socket over. */
    explicit Client(int descriptor);
    ~Client();
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;

    void send(std::string_view bytes) const;
    /** Reads one whole reply; throws std::runtime_error when the connection ends before. */
    Reply receive();
    Reply exchange(std::string_view request) {
        send(request);
        return receive();
    }
    /** Waits for the end of the connection; false when more bytes come instead. */
    bool isClosedByPeer();
    /** The socket, for a test to wait for. */
    int descriptor() const { return m_descriptor; }

private:
    bool receiveMore();

    int m_descriptor;
    std::string m_unread;
};

/** The body of a request to enumerate all properties of the instances of a class. */
std::string enumerateBody(const std::string& className, const std::string& nameSpace = "root/cimv2");
/** The same for the listed properties. */
std::string enumerateBody(const std::string& className, const std::vector<std::string>& properties);
/** The body of a request in the given version for an operation without arguments but the namespace. */
std::string operationBody(unsigned operation, unsigned version = 3000008);

/** A request whose client takes trailers. Further lines of the head may be given, each with its end. */
std::string httpRequest(const std::string& body, const std::string& lines = "TE: trailers\r\n",
                        const std::string& method = "M-POST");

/** A request in CIM-XML for an operation with arguments, as one IPARAMVALUE after the other. */
std::string xmlRequest(const std::string& operation, const std::string& arguments,
                       const std::string& lines = "");

/** The instances in the body of a good reply to an enumeration; throws IOException when it is anything else.
 */
std::vector<OpenWBEM::CIMInstance> instancesIn(const std::string& body);

#endif
