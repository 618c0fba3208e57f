#ifndef AGENT_REASON_HPP
#define AGENT_REASON_HPP

#include <string>

/** Why a request failed, in plain words. */
namespace agent {

/** An exception of the client library, as a catch or the library's trace shows it. */
struct Thrown {
    /** Name of its class, such as "SocketException". */
    std::string type;
    std::string message;
};

/** Why a request failed. */
struct Failure {
    /** One short sentence for people, without a full stop: "connection refused: 127.0.0.1 port 5988". Empty
     * if nothing failed. May hold text of the object manager, so it need not be printable. */
    std::string text;
    /** Whether the connection failed, so that a check of the URL and of the socket can say more. */
    bool isOfConnection = false;
};

/** The failure that an exception means. `url` is the URL of the request; its password does not appear. */
Failure failureOf(const Thrown& thrown, const std::string& url);

/** The failure that a status of the library other than OWB_DONE means, where no exception is known. */
Failure failureOf(long status);

} // namespace agent
#endif
