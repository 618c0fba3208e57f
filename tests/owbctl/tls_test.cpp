// Reads and writes over TLS.
#include "TlsManager.hpp"

namespace owbctl_test {
namespace {

using support::certificate;
using support::ProgramResult;

/** Status of a read that failed in the library. */
constexpr int readFailed = 15;

/** Expects that a read fails for a reason that owbctl prints. */
void expectFailure(const std::string& at, const std::string& reason) {
    const ProgramResult result = owbctl({"--url", at, "get", "4"});
    EXPECT_EQ(readFailed, result.exitCode) << at;
    EXPECT_EQ("owbctl: group 4: " + reason + "\n", result.err) << at;
    EXPECT_EQ("", result.out) << at;
}
void expectReading(const std::string& at) {
    const ProgramResult result = owbctl({"--url", at, "get", "4"});
    EXPECT_EQ(0, result.exitCode) << at;
    EXPECT_EQ("", result.err) << at;
    EXPECT_NE(std::string::npos, result.out.find("QAV_OperatingSystem")) << result.out;
}

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
