#include "protocol/HttpService.hpp"

#include "OW_CIMException.hpp"
#include "http/Credentials.hpp"
#include "http/RequestRules.hpp"
#include "protocol/HttpReply.hpp"
#include "protocol/RequestHead.hpp"
#include "system/AnswerPending.hpp"

#include <optional>
#include <string>
#include <utility>

namespace cimom {
namespace {

http::ErrorResponse loginRequired(const char* why) {
    return {401, "Unauthorized", why, "WWW-Authenticate", "Basic realm=\"owbcimomd\""};
}

/** The last two digits of a number: extension fields have prefixes of two digits. */
std::string twoDigits(unsigned long number) {
    const std::string digits = std::to_string(number % 100);
    return digits.size() < 2 ? "0" + digits : digits;
}

/** The error response to a request that does not log its client in; nothing if the client is logged in. */
std::optional<http::ErrorResponse> loginError(Verdict verdict) {
    switch (verdict) {
    case Verdict::wrong:
        return loginRequired("wrong name or password");
    case Verdict::tooOften:
        return http::ErrorResponse{429, "Too many requests", "too many logins have failed", "Retry-After",
                                   std::to_string(Logins::period.count())};
    case Verdict::unchecked:
        return http::ErrorResponse{503, "Service unavailable", "the password could not be checked"};
    case Verdict::mayWrite:
    case Verdict::mayRead:
        break;
    }
    return std::nullopt;
}

} // namespace

/** Answers the requests of one connection. */
class HttpService::Responder : public http::Responder {
public:
    Responder(HttpService& service, const http::Peer& peer)
        : m_service(service)
        , m_peer(peer) {}

    std::optional<http::ErrorResponse> check(const http::Request& request) override {
        const std::optional<Protocol> protocol = protocolOf(request);
        if (!protocol)
            return http::ErrorResponse{415, "Unsupported media type",
                                       "Content-Type \"" + http::valueOf(request, "Content-Type") +
                                           "\" is not supported."};
        m_protocol = *protocol;
        return std::nullopt;
    }

    void authorize(const http::Request& request, Authorized done) override {
        m_isLoggedIn = false;
        m_access = m_peer.user ? accessOf(*m_peer.user) : Access::read;
        if (request.body().empty())
            done(http::ErrorResponse{400, "Bad request", "The request has no body"});
        else if (m_peer.isOnNetwork() && m_service.m_logins)
            logIn(http::valueOf(request, "Authorization"), std::move(done));
        else
            done(std::nullopt);
    }

    void answer(const http::Request& request, Answered done) override {
        std::optional<http::Answer> answer;
        try {
            answer = carryOut(request);
        } catch (const AnswerPending& pending) {
            pending.wait([this, &request, done = std::move(done)] { this->answer(request, done); });
            return;
        }
        done(std::move(*answer));
    }

private:
    /** A login that succeeded on this connection. */
    struct Login {
        std::string authorization; // the field of its request
        unsigned long epoch;
        Access access;
    };

    void logIn(const std::string& authorization, Authorized done) {
        const std::optional<http::Credentials> given = http::basicCredentials(authorization);
        if (!given && isCertified()) {
            m_isLoggedIn = true;
            m_access = m_service.m_certified->access(m_peer.subject);
            done(std::nullopt);
            return;
        }
        if (!given) {
            done(m_service.m_requiresLogin ? std::optional(loginRequired("log in to read")) : std::nullopt);
            return;
        }
        const unsigned long epoch = m_service.m_loginEpoch;
        if (m_login && m_login->authorization == authorization && m_login->epoch == epoch) {
            accept(*m_login);
            done(std::nullopt);
            return;
        }
        m_service.m_logins->logIn(
            m_peer.address, given->user, given->password,
            [this, authorization, epoch, done = std::move(done)](Verdict verdict) {
                const std::optional<http::ErrorResponse> error = loginError(verdict);
                if (!error)
                    accept(
                        {authorization, epoch, verdict == Verdict::mayWrite ? Access::write : Access::read});
                done(error);
            });
    }

    /** Whether the certificate of the client names a user. */
    bool isCertified() const { return m_service.m_certified && m_service.m_certified->has(m_peer.subject); }

    void accept(Login login) {
        m_isLoggedIn = true;
        m_access = login.access;
        m_login = std::move(login);
    }

    http::Answer carryOut(const http::Request& request) {
        const RequestHead head = requestHead(request, m_protocol);
        const Handler& handler = m_protocol == Protocol::binary
                                     ? static_cast<const Handler&>(m_service.m_binary)
                                     : m_service.m_xml;
        try {
            OperationReply reply = handler.handle(request.body(), m_access, head.announced);
            const bool isDenied = reply.error && reply.error->code == OpenWBEM::CIMException::ACCESS_DENIED;
            if (isDenied && m_peer.isOnNetwork() && m_service.m_logins && !m_isLoggedIn)
                return loginRequired("log in to write");
            return std::make_unique<HttpReply>(std::move(reply), head, handler.contentType(),
                                               twoDigits(++m_service.m_replies));
        } catch (const UnreadableRequest& e) {
            return http::ErrorResponse{e.status(), e.reason(), std::string("CIMError: ") + e.what(),
                                       "CIMError", e.what()};
        }
    }

    HttpService& m_service;
    const http::Peer m_peer;
    Protocol m_protocol = Protocol::binary; // of the current request
    Access m_access = Access::read;         // of the client, for the current request
    bool m_isLoggedIn = false;              // for the current request
    std::optional<Login> m_login;           // saves the check of the same password with each request
};

http::Settings HttpService::settings(const http::Limits& limits) {
    http::Settings settings;
    settings.limits = limits;
    settings.name = "owbcimomd/" OWBCIMOMD_VERSION " (CIMOM)";
    settings.methods = "POST, M-POST";
    settings.makeResponder = [this](const http::Peer& peer) {
        return std::make_unique<Responder>(*this, peer);
    };
    return settings;
}

} // namespace cimom
