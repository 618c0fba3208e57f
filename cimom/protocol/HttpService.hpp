#ifndef CIMOM_PROTOCOL_HTTP_SERVICE_HPP_INCLUDED
#define CIMOM_PROTOCOL_HTTP_SERVICE_HPP_INCLUDED
#include "http/Responder.hpp"
#include "http/Settings.hpp"
#include "protocol/BinaryHandler.hpp"
#include "protocol/XmlHandler.hpp"
#include "users/Logins.hpp"

#include <memory>

namespace cimom {

/**
 * Answers the requests of an HTTP server by an object manager: passes each to the handler of its protocol,
 * with what its client may do.
 *
 * A local client may do what accessOf() says of its user. A client on the network may read. It may write once
 * it has logged in by the field Authorization of its request, scheme Basic, unless its user may only read. A
 * client with a certificate may be logged in by it. A client that has not logged in gets status 401 when it
 * tries to write or, if that requires a login, to read.
 */
class HttpService {
public:
    /**
     * @param manager must outlive the connections
     * @param logins must outlive the connections; null if there are no logins
     * @param requiresLogin clients on the network must log in to read, too
     * @param certified the subject of a client's certificate that is one of these users is logged in without
     * a password; must outlive the connections, may change meanwhile; null if certificates log no one in
     */
    explicit HttpService(ObjectManager& manager, Logins* logins = nullptr, bool requiresLogin = false,
                         const Users* certified = nullptr)
        : m_binary(manager)
        , m_xml(manager)
        , m_logins(logins)
        , m_requiresLogin(requiresLogin)
        , m_certified(certified) {}
    HttpService(const HttpService&) = delete;
    HttpService& operator=(const HttpService&) = delete;

    /** Settings of a server whose connections this object answers. It must outlive them. */
    http::Settings settings(const http::Limits& limits = http::Limits());
    /** Makes each client log in again with its next request. */
    void forgetLogins() { ++m_loginEpoch; }

private:
    class Responder;

    const BinaryHandler m_binary;
    const XmlHandler m_xml;
    Logins* const m_logins;
    const bool m_requiresLogin;
    const Users* const m_certified;
    unsigned long m_loginEpoch = 0; // logins of earlier epochs are void
    unsigned long m_replies = 0;
};

} // namespace cimom
#endif
