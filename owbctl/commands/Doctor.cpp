#include "commands/Doctor.hpp"

#include "agent/Client.hpp"
#include "agent/Endpoint.hpp"
#include "commands/Report.hpp"
#include "doctor/BoundedCheck.hpp"
#include "doctor/HostChecks.hpp"
#include "doctor/ManagerChecks.hpp"
#include "doctor/MasterCheck.hpp"
#include "doctor/SocketCheck.hpp"
#include "doctor/TlsCheck.hpp"
#include "output/Deadline.hpp"

#include <iostream>

namespace owbctl {

using namespace agent;

namespace {

std::string meaningOf(const Endpoint& endpoint) {
    const std::string protocol = endpoint.protocol;
    if (!endpoint.socketPath.empty())
        return protocol + " over the socket " + endpoint.socketPath;
    if (endpoint.port == Endpoint::ownSocket)
        return protocol + " over the client library's own socket";
    return protocol + " to " + endpoint.host + ", port " + endpoint.port;
}

const char* const form =
    "The form is scheme://[user[:password]@]host[:port]; the port of a socket is its path, with each / "
    "written as %2f";

bool isInvalid(const Failure& failure) {
    return failure.text.rfind("invalid URL", 0) == 0;
}

const char* adviceFor(const Failure& failure) {
    if (isInvalid(failure))
        return form;
    return failure.text.rfind("cannot load TLS", 0) == 0 ? "Install OpenSSL for 32 bits, such as libssl3:i386"
                                                         : "";
}

Check checkUrl(const std::string& url) {
    const std::string shown = withoutPassword(url);
    const std::string port = portError(url);
    if (!port.empty())
        return {Check::Result::fail, "URL", shown + ": " + port, form};
    if (const std::optional<Failure> failure = reconnect()) {
        const std::string finding = isInvalid(*failure) ? failure->text : shown + ": " + failure->text;
        return {Check::Result::fail, "URL", finding, adviceFor(*failure)};
    }
    const std::size_t host = url.find("://") == std::string::npos ? 0 : url.find("://") + 3;
    const std::string finding = shown + ": " + meaningOf(endpointOf(url));
    if (url.find(":/", host) != std::string::npos)
        return {Check::Result::warn, "URL", finding + ", since its port is empty", form};
    return {Check::Result::ok, "URL", finding, {}};
}

/** Writes the checks and remembers their results. */
class Checkup {
public:
    Checkup(double seconds, Format& format)
        : m_seconds(seconds)
        , m_format(format) {
        if (seconds > 0)
            m_deadline =
                std::chrono::steady_clock::now() +
                std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::duration<double>(seconds));
    }

    void report(const Check& check) {
        m_format.writeCheck(check);
        m_hasFailed = m_hasFailed || check.result == Check::Result::fail;
    }

    /** Makes checks that may wait, and reports them. Those after the end of the time are left out. */
    void reportBounded(const char* name, const char* adviceOnTimeout,
                       const std::function<std::vector<Check>()>& checks) {
        if (m_hasTimedOut)
            return;
        const auto made = checksBefore(m_deadline, checks);
        for (const Check& check : made.value_or(std::vector<Check>()))
            report(check);
        m_hasTimedOut = !made;
        if (m_hasTimedOut)
            report({Check::Result::fail, name, timeoutText(m_seconds), adviceOnTimeout});
    }

    bool hasFailed() const { return m_hasFailed; }
    bool hasTimedOut() const { return m_hasTimedOut; }

private:
    const double m_seconds;
    CheckDeadline m_deadline;
    Format& m_format;
    bool m_hasFailed = false;
    bool m_hasTimedOut = false;
};

void reportHost(Checkup& checkup) {
    checkup.report(checkTrace());
    checkup.report(checkProcessTable());
    checkup.report(checkSoftwareInventory());
    if (const std::optional<Check> master = checkMaster())
        checkup.report(*master);
}

void reportManager(Checkup& checkup, const std::string& url) {
    const Waiting waiting(groupOfCheck);
    checkup.reportBounded(
        "TLS",
        "The connection is accepted and the handshake is not answered: read the log of the object "
        "manager, or restart it",
        [&url] { return checkTls(url); });
    checkup.reportBounded("manager",
                          "The connection is accepted and not answered: read the log of the object manager, "
                          "or restart it",
                          [] { return std::vector<Check>{checkManager()}; });
    checkup.reportBounded("login", "", [&url] {
        const std::optional<Check> login = checkLogin(url);
        return login ? std::vector<Check>{*login} : std::vector<Check>();
    });
}

} // namespace

int runChecks(const std::string& url, double seconds, Format& format) {
    Checkup checkup(seconds, format);
    checkup.reportBounded("URL", "The name service does not answer: give an address instead of a name",
                          [&url] { return std::vector<Check>{checkUrl(url)}; });
    const bool isUsable = !checkup.hasFailed();
    const std::string socket = isUsable ? endpointOf(url).socketPath : std::string();
    if (!socket.empty())
        checkup.report(checkSocket(socket));
    reportHost(checkup);
    if (isUsable)
        reportManager(checkup, url);
    format.endChecks();
    if (checkup.hasTimedOut()) {
        std::cerr << "owbctl: " << timeoutText(seconds) << '\n';
        return exitTimeout;
    }
    return checkup.hasFailed() ? exitFailed : 0;
}

} // namespace owbctl
