#include "client/Authentication.hpp"

#include "OW_HTTPException.hpp"
#include "client/Endpoint.hpp"
#include "util/Ascii.hpp"
#include "util/Base64.hpp"
#include "util/Descriptor.hpp"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace OpenWBEM {
namespace {

bool isScheme(std::string_view challenge, std::string_view scheme) {
    return ascii::equalsIgnoreCase(challenge.substr(0, challenge.find(' ')), scheme);
}

// The value of a parameter `name="value"` of a challenge; "" if there is none.
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

// The object manager proves a local user by a cookie: it writes a secret to a file that only this user can
// read, and sends the path of the file. Since any peer can send any path, the client accepts only a file of
// exactly this form: an absolute path; a regular file, not a symbolic link, owned by this user alone; one
// line of decimal digits. No other file is opened for reading, and reading never blocks.

// Digits. A cookie is four or five 32-bit numbers in decimal, without separators.
const std::size_t maximumCookie = 64;

[[noreturn]] void throwUnreadable(int error) {
    const std::string reason = std::to_string(error) + "(" + std::strerror(error) + ")";
    OW_THROW(HTTPException, ("Unable to open local authentication file: " + reason).c_str());
}

[[noreturn]] void throwRejected(const std::string& path, const char* reason) {
    OW_THROW(HTTPException, ("Rejected local authentication file " + path + ": " + reason).c_str());
}

void checkFile(const util::Descriptor& file, const std::string& path) {
    struct stat status {};
    if (::fstat(file.number(), &status) != 0)
        throwUnreadable(errno);
    if (!S_ISREG(status.st_mode))
        throwRejected(path, "not a regular file");
    if (status.st_uid != ::geteuid())
        throwRejected(path, "owned by another user");
    if ((status.st_mode & (S_IRWXG | S_IRWXO)) != 0)
        throwRejected(path, "accessible to other users");
    // Files of the kernel report size 0, and reading some of them has effects (proc(5)).
    if (status.st_size < 1 || status.st_size > static_cast<off_t>(maximumCookie) + 1)
        throwRejected(path, "not a single number");
}

// Up to size bytes from the start of a file.
std::string readStart(const util::Descriptor& file, std::size_t size) {
    std::string content(size, '\0');
    std::size_t length = 0;
    while (length < size) {
        const ssize_t n = ::read(file.number(), &content[length], size - length);
        if (n < 0 && errno != EINTR)
            throwUnreadable(errno);
        if (n == 0)
            break;
        length += n > 0 ? static_cast<std::size_t>(n) : 0;
    }
    content.resize(length);
    return content;
}

std::string readCookie(const std::string& path) {
    if (path.empty() || path.front() != '/')
        throwRejected(path, "not an absolute path");
    // O_PATH first: opening a device for reading may have effects.
    const util::Descriptor found(::open(path.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC));
    if (!found.isOpen())
        throwUnreadable(errno);
    checkFile(found, path);
    const std::string same = "/proc/self/fd/" + std::to_string(found.number());
    const util::Descriptor file(::open(same.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (!file.isOpen())
        throwUnreadable(errno);

    std::string cookie = readStart(file, maximumCookie + 2); // the line end, and one byte too many
    if (!cookie.empty() && cookie.back() == '\n')
        cookie.pop_back();
    const bool isCookie = !cookie.empty() && cookie.size() <= maximumCookie &&
                          std::all_of(cookie.begin(), cookie.end(), ascii::isDigit);
    if (!isCookie)
        throwRejected(path, "not a single number");
    return cookie;
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
    return "Basic " + util::base64Encoded(std::string(name.c_str()) + ":" + password.c_str());
}

} // namespace OpenWBEM
