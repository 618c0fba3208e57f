#ifndef TESTS_OWBCTL_TLSMANAGER_HPP
#define TESTS_OWBCTL_TLSMANAGER_HPP

#include "Owbctl.hpp"
#include "support/Certificates.hpp"
#include "support/Program.hpp"
#include "support/TempDir.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

namespace owbctl_test {

/** A test with an object manager that serves TLS. */
class TlsManager : public testing::Test {
protected:
    using Options = std::vector<std::string>;

    /** The client trusts the test's authority, and nothing else is set. */
    TlsManager() {
        forgetEnvironment();
        set("OWB_TLS_CA", support::certificate("ca.crt"));
    }
    ~TlsManager() override { forgetEnvironment(); }

    static void set(const char* variable, const std::string& value) { ::setenv(variable, value.c_str(), 1); }
    /** Lets owbctl show a certificate of a client. */
    static void showCertificate(const std::string& name) {
        set("OWB_TLS_CERT", support::certificate(name + ".crt"));
        set("OWB_TLS_KEY", support::certificate(name + ".key"));
    }

    /** Starts an object manager with a certificate, and waits until it is ready. The password of its user
     * "agent" is "secret". */
    void start(const std::string& name = "localhost", const Options& further = {}) {
        Options command{
            OWBCIMOMD,
            "--socket",
            m_directory.file("socket"),
            "--state",
            m_directory.file("state"),
            "--users",
            m_directory.writeSecret("users", "agent:$6$salt$egUxKNxDs8kPfh8iPMNcosMhb2eWah6d3R44JDm5"
                                             "Rj/j/XWR5E33QPd0YmHXoDHOIDR6kL5D3JcQcz0O8FHE00\n"),
            "--tls-listen",
            "127.0.0.1:0",
            "--tls-cert",
            support::certificate(name + ".crt"),
            "--tls-key",
            m_directory.writeSecret("key", support::readFile(support::certificate(name + ".key")))};
        command.insert(command.end(), further.begin(), further.end());
        m_daemon = std::make_unique<support::Daemon>(command);
        const std::string ready = m_daemon->nextErrorLine();
        const std::string address = "127.0.0.1:";
        const std::size_t first = ready.find(address) + address.size();
        m_firstPort = ready.substr(first, ready.find(' ', first) - first);
        const std::size_t end = ready.rfind(" (TLS)");
        ASSERT_NE(end, std::string::npos) << ready;
        m_port = ready.substr(ready.rfind(':') + 1, end - ready.rfind(':') - 1);
    }

    std::string url(const std::string& host = "localhost", const std::string& scheme = "https") const {
        return scheme + "://" + host + ":" + m_port;
    }
    /** The first TCP port on which it listens: that of --listen, if that is one of the options. */
    const std::string& firstPort() const { return m_firstPort; }
    support::ProgramResult run(const std::string& at, const Options& arguments) const {
        Options all{"--url", at};
        all.insert(all.end(), arguments.begin(), arguments.end());
        return owbctl(all);
    }

private:
    static void forgetEnvironment() {
        for (const char* const variable : {"OWB_TLS_CA", "OWB_TLS_CERT", "OWB_TLS_KEY", "OWB_TLS_VERIFY"})
            ::unsetenv(variable);
    }
    /** A file that only its owner may read. */
    const support::TempDir m_directory;
    std::unique_ptr<support::Daemon> m_daemon;
    std::string m_port;
    std::string m_firstPort;
};

} // namespace owbctl_test
#endif
