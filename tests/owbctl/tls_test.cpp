// owbctl and the object manager, with TLS between them.
#include "Owbctl.hpp"
#include "support/Certificates.hpp"
#include "support/Program.hpp"
#include "support/TempDir.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <sys/stat.h>

namespace owbctl_test {
namespace {

using support::certificate;
using support::ProgramResult;

/** Status of a read that failed in the library. */
constexpr int readFailed = 15;

class TlsManager : public testing::Test {
protected:
    using Options = std::vector<std::string>;

    /** The client trusts the test's authority, and nothing else is set. */
    TlsManager() {
        forgetEnvironment();
        set("OWB_TLS_CA", certificate("ca.crt"));
    }
    ~TlsManager() override { forgetEnvironment(); }

    static void set(const char* variable, const std::string& value) { ::setenv(variable, value.c_str(), 1); }
    /** Lets owbctl show a certificate of a client. */
    static void showCertificate(const std::string& name) {
        set("OWB_TLS_CERT", certificate(name + ".crt"));
        set("OWB_TLS_KEY", certificate(name + ".key"));
    }

    /** Starts an object manager with a certificate, and waits until it is ready. The password of its user
     * "agent" is "secret". */
    void start(const std::string& name = "localhost", const Options& further = {}) {
        Options command{OWBCIMOMD,
                        "--socket",
                        m_directory.file("socket"),
                        "--state",
                        m_directory.file("state"),
                        "--users",
                        secret("users", "agent:$6$salt$egUxKNxDs8kPfh8iPMNcosMhb2eWah6d3R44JDm5"
                                        "Rj/j/XWR5E33QPd0YmHXoDHOIDR6kL5D3JcQcz0O8FHE00\n"),
                        "--tls-listen",
                        "127.0.0.1:0",
                        "--tls-cert",
                        certificate(name + ".crt"),
                        "--tls-key",
                        secret("key", support::readFile(certificate(name + ".key")))};
        command.insert(command.end(), further.begin(), further.end());
        m_daemon = std::make_unique<support::Daemon>(command);
        const std::string ready = m_daemon->nextErrorLine();
        const std::size_t end = ready.rfind(" (TLS)");
        ASSERT_NE(end, std::string::npos) << ready;
        m_port = ready.substr(ready.rfind(':') + 1, end - ready.rfind(':') - 1);
    }

    std::string url(const std::string& host = "localhost", const std::string& scheme = "https") const {
        return scheme + "://" + host + ":" + m_port;
    }
    ProgramResult run(const std::string& at, const Options& arguments) const {
        Options all{"--url", at};
        all.insert(all.end(), arguments.begin(), arguments.end());
        return owbctl(all);
    }
    /** Expects that a read fails for a reason that owbctl prints. */
    static void expectFailure(const std::string& at, const std::string& reason) {
        const ProgramResult result = owbctl({"--url", at, "get", "4"});
        EXPECT_EQ(readFailed, result.exitCode) << at;
        EXPECT_EQ("owbctl: group 4: " + reason + "\n", result.err) << at;
        EXPECT_EQ("", result.out) << at;
    }
    static void expectReading(const std::string& at) {
        const ProgramResult result = owbctl({"--url", at, "get", "4"});
        EXPECT_EQ(0, result.exitCode) << at;
        EXPECT_EQ("", result.err) << at;
        EXPECT_NE(std::string::npos, result.out.find("QAV_OperatingSystem")) << result.out;
    }

private:
    static void forgetEnvironment() {
        for (const char* const variable : {"OWB_TLS_CA", "OWB_TLS_CERT", "OWB_TLS_KEY", "OWB_TLS_VERIFY"})
            ::unsetenv(variable);
    }
    /** A file that only its owner may read. */
    std::string secret(const std::string& name, const std::string& content) const {
        std::string path = m_directory.write(name, content);
        ::chmod(path.c_str(), 0600);
        return path;
    }

    const support::TempDir m_directory;
    std::unique_ptr<support::Daemon> m_daemon;
    std::string m_port;
};

TEST_F(TlsManager, IsReadAndWrittenWithALoginInBothProtocols) {
    start("localhost", {"--require-login"});
    for (const std::string scheme : {"https", "owbinary.wbems"}) {
        const std::string user = url("agent:secret@localhost", scheme);
        expectReading(user);
        const ProgramResult written = run(user, {"set", "2", "0", "PrimaryOwnerContact=" + scheme});
        EXPECT_EQ(0, written.exitCode) << written.err;
        const ProgramResult read = run(user, {"get", "2"});
        EXPECT_NE(std::string::npos, read.out.find(scheme)) << read.out;
    }
}

TEST_F(TlsManager, RejectsAWriteWithoutALogin) {
    start();
    expectReading(url());
    const ProgramResult written = run(url(), {"set", "2", "0", "PrimaryOwnerContact=any"});
    EXPECT_EQ(1, written.exitCode);
    EXPECT_NE(std::string::npos,
              written.err.find("the write failed: login required, and the URL has no user"))
        << written.err;
}

TEST_F(TlsManager, FailsWithTheReasonIfItsIssuerIsNotTrusted) {
    start();
    const std::string reason = "TLS handshake with localhost failed: unable to get local issuer certificate";
    set("OWB_TLS_CA", certificate("unknown_ca.crt"));
    expectFailure(url(), reason);
    expectFailure(url("localhost", "owbinary.wbems"), reason);
    set("OWB_TLS_CA", ""); // those of the system
    expectFailure(url(), reason);
}

TEST_F(TlsManager, FailsIfTheTrustedCertificatesCannotBeLoaded) {
    start();
    set("OWB_TLS_CA", "/nowhere/ca.crt");
    expectFailure(url(), "cannot load CA certificates from /nowhere/ca.crt: No such file or directory");
}

TEST_F(TlsManager, FailsWithTheNamesOfACertificateForAnotherHost) {
    start("other_name");
    expectFailure(url(), "TLS handshake with localhost failed: host name mismatch, certificate is for "
                         "a.example, *.b.example");
}

TEST_F(TlsManager, FailsWithTheAddressesOfACertificateForAnotherAddress) {
    start("other_address");
    expectFailure(url("127.0.0.1"), "TLS handshake with 127.0.0.1 failed: address mismatch, certificate is "
                                    "for 192.0.2.1, 2001:db8::1");
}

TEST_F(TlsManager, FailsIfItsCertificateHasExpired) {
    start("expired");
    expectFailure(url(), "TLS handshake with localhost failed: certificate has expired");
}

TEST_F(TlsManager, DoesNotAnswerAClientWithoutTheCertificateThatItRequires) {
    start("localhost", {"--tls-client-ca", certificate("ca.crt")});
    expectFailure(url(), "TLS connection to localhost failed: tlsv13 alert certificate required");
    showCertificate("agent");
    expectReading(url());
    expectReading(url("localhost", "owbinary.wbems"));
    showCertificate("unknown_issuer");
    expectFailure(url(), "TLS connection to localhost failed: tlsv1 alert unknown ca");
}

TEST_F(TlsManager, LogsInTheUserThatACertificateNames) {
    start("localhost", {"--tls-client-ca", certificate("ca.crt"), "--tls-user-from", "cn"});
    showCertificate("agent");
    const ProgramResult written = run(url(), {"set", "2", "0", "PrimaryOwnerContact=certified"});
    EXPECT_EQ(0, written.exitCode) << written.err;
    EXPECT_NE(std::string::npos, run(url(), {"get", "2"}).out.find("certified"));
}

TEST_F(TlsManager, IsReadUnverifiedIfVerificationIsOffAndTheTraceSaysSo) {
    start("expired");
    set("OWB_TLS_CA", certificate("unknown_ca.crt"));
    set("OWB_TLS_VERIFY", "0");
    expectReading(url());
    const ProgramResult traced = run(url(), {"--trace", "-", "get", "4"});
    EXPECT_NE(std::string::npos,
              traced.err.find("WARNING: certificate of localhost is not verified, OWB_TLS_VERIFY is 0"))
        << traced.err;
}

TEST_F(TlsManager, FailsForAUrlWithoutTls) {
    start();
    const ProgramResult result = run(url("localhost", "http"), {"get", "4"});
    EXPECT_EQ(readFailed, result.exitCode);
    EXPECT_EQ(0U,
              result.err.find("owbctl: group 4: connection closed without a valid answer: localhost port "))
        << result.err;
}

} // namespace
} // namespace owbctl_test
