#include "client/Authentication.hpp"

#include "OW_HTTPException.hpp"
#include "client/CookieFile.hpp"
#include "client/Endpoint.hpp"

#include <boost/beast/core/string.hpp>
#include <unistd.h>

namespace OpenWBEM {
namespace {

// RFC 4648
std::string base64(const std::string& bytes) {
    static const char digits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        unsigned long group = 0;
        for (std::size_t k = i; k < i + 3; ++k)
            group = group << 8 | (k < bytes.size() ? static_cast<unsigned char>(bytes[k]) : 0U);
        for (const int shift : {18, 12, 6, 0})
            text += digits[group >> shift & 0x3F];
    }
    const std::size_t missing = (3 - bytes.size() % 3) % 3;
    return text.replace(text.size() - missing, missing, missing, '=');
}

bool isScheme(const std::string& challenge, const std::string& scheme) {
    const std::string word = challenge.substr(0, challenge.find(' '));
    return boost::beast::iequals(word, scheme);
}

// The value of a parameter `name="value"` of a challenge; "" when there is none.
std::string parameter(const std::string& challenge, const std::string& name) {
    std::size_t at = challenge.find(' ');
    while (at < challenge.size()) {
        const std::size_t first = challenge.find_first_not_of(" \t,", at);
        const std::size_t equals = challenge.find('=', at);
        if (equals == std::string::npos || challenge.compare(equals + 1, 1, "\"") != 0)
            break;
        const std::size_t end = challenge.find('"', equals + 2);
        if (end == std::string::npos)
            break;
        if (challenge.compare(first, equals - first, name) == 0)
            return challenge.substr(equals + 2, end - equals - 2);
        at = end + 1;
    }
    return std::string();
}

std::string userId() {
    return "OWLocal uid=\"" + std::to_string(::geteuid()) + "\"";
}

std::string cookieOf(const std::string& challenge) {
    const std::string cookie = readCookie(parameter(challenge, "cookiefile"));
    return "OWLocal nonce=\"" + parameter(challenge, "nonce") + "\", cookie=\"" + cookie + "\"";
}

} // namespace

Authentication::Authentication(const URL& url, const ClientAuthCBIFCRef& callback)
    : m_url(url)
    , m_callback(callback)
    , m_isLocal(isLocalHost(url)) {}

std::string Authentication::introduction() const {
    const bool hasCredentials = !m_url.principal.empty() || !m_url.credential.empty();
    return m_isLocal && !hasCredentials ? userId() : std::string();
}

std::string Authentication::answer(const std::vector<std::string>& challenges) const {
    for (const std::string& challenge : challenges) {
        if (isScheme(challenge, "Basic"))
            return basic(challenge);
        if (isScheme(challenge, "OWLocal") && m_isLocal)
            return cookieOf(challenge);
    }
    std::string user = introduction();
    if (user.empty())
        OW_THROW(HTTPException, "No known authentication schemes");
    return user;
}

std::string Authentication::basic(const std::string& challenge) const {
    String name = m_url.principal;
    String password = m_url.credential;
    if (name.empty() && m_callback) {
        const std::string realm = parameter(challenge, "realm");
        const String asker = realm.empty() ? m_url.text : String(realm.c_str());
        if (!m_callback->getCredentials(asker, name, password, String()))
            name = String();
    }
    if (name.empty())
        OW_THROW(HTTPException, "No login/password to send");
    return "Basic " + base64(std::string(name.c_str()) + ":" + password.c_str());
}

} // namespace OpenWBEM
