// `owbctl doctor` over TLS.
#include "TlsManager.hpp"

#include <nlohmann/json.hpp>

#include <csignal>
#include <map>

namespace owbctl_test {
namespace {

using nlohmann::json;
using support::certificate;

class TlsDoctor : public TlsManager {
protected:
    using Checks = std::map<std::string, json>;

    /** The checks of the doctor by their names. */
    static Checks doctor(const std::string& at) {
        const json document = json::parse(owbctl({"--url", at, "doctor", "-o", "json"}).out);
        Checks checks;
        for (const json& check : document.at("checks"))
            checks[check.at("name")] = check;
        return checks;
    }
    /** Expects that the handshake fails with a reason, which the check of the object manager has, too. */
    static void expectFailure(Checks& checks, const std::string& reason, const std::string& advice) {
        EXPECT_EQ("fail", checks["TLS"]["result"]);
        EXPECT_EQ(reason + " (TLSv1.3, TLS_AES_256_GCM_SHA384)", checks["TLS"]["finding"]);
        EXPECT_EQ(advice, checks["TLS"]["advice"]);
        EXPECT_EQ("cannot read group 4 (QAV_OperatingSystem): " + reason, checks["manager"]["finding"]);
    }
    /** The finding of the certificate without the number of its days, which must be in a range. */
    static std::string findingOfCertificate(Checks& checks, long leastDays, long mostDays) {
        std::string finding = checks["TLS cert"]["finding"];
        const std::size_t end = finding.find(" days left");
        const std::size_t begin = finding.rfind(' ', end - 1) + 1;
        EXPECT_NE(std::string::npos, end) << finding;
        const long days = std::stol(finding.substr(begin));
        EXPECT_TRUE(days >= leastDays && days <= mostDays) << finding;
        return finding.erase(begin, end - begin);
    }
};

TEST_F(TlsDoctor, ShowsProtocolCipherAndCertificateOfAVerifiedServer) {
    start();
    for (const char* const scheme : {"https", "owbinary.wbems"}) {
        Checks checks = doctor(url("localhost", scheme));
        EXPECT_EQ("ok", checks["TLS"]["result"]);
        EXPECT_EQ("TLSv1.3, TLS_AES_256_GCM_SHA384, server verified", checks["TLS"]["finding"]);
        EXPECT_EQ("ok", checks["TLS cert"]["result"]);
        EXPECT_EQ("CN=localhost, issued by CN=Test CA,  days left, until 2049-12-31",
                  findingOfCertificate(checks, 1000, 10000));
        EXPECT_EQ("ok", checks["manager"]["result"]);
    }
}

TEST_F(TlsDoctor, ShowsTheChecksAsText) {
    start("expired");
    const support::ProgramResult result = run(url(), {"doctor"});
    EXPECT_EQ(1, result.exitCode);
    EXPECT_NE(
        std::string::npos,
        result.out.find("\nfail  TLS        TLS handshake with localhost failed: certificate has expired "
                        "(TLSv1.3, TLS_AES_256_GCM_SHA384)\n"
                        "                 Renew the certificate of the object manager\n"
                        "fail  TLS cert   CN=localhost, issued by CN=Test CA, expired on 2020-02-01\n"
                        "                 Renew the certificate of the object manager\n"))
        << result.out;
}

TEST_F(TlsDoctor, WarnsOfACertificateThatEndsSoon) {
    start("ends_soon");
    Checks checks = doctor(url());
    EXPECT_EQ("ok", checks["TLS"]["result"]);
    EXPECT_EQ("warn", checks["TLS cert"]["result"]);
    EXPECT_EQ("Renew the certificate of the object manager", checks["TLS cert"]["advice"]);
    findingOfCertificate(checks, 3, 4);
}

TEST_F(TlsDoctor, FailsForACertificateThatIsNotYetValid) {
    start("not_yet_valid");
    Checks checks = doctor(url());
    EXPECT_EQ("fail", checks["TLS cert"]["result"]);
    EXPECT_EQ("CN=localhost, issued by CN=Test CA, not valid before 2049-01-01",
              checks["TLS cert"]["finding"]);
}

TEST_F(TlsDoctor, ShowsTheCertificateOfAServerThatIsNotTrusted) {
    start();
    set("OWB_TLS_CA", certificate("unknown_ca.crt"));
    Checks checks = doctor(url());
    expectFailure(checks, "TLS handshake with localhost failed: unable to get local issuer certificate",
                  "Set OWB_TLS_CA to a file with the certificate of the issuer");
    EXPECT_EQ("ok", checks["TLS cert"]["result"]);
    findingOfCertificate(checks, 1000, 10000);
}

TEST_F(TlsDoctor, ShowsTheNamesOfACertificateForAnotherHost) {
    start("other_address");
    Checks checks = doctor(url("127.0.0.1"));
    expectFailure(checks,
                  "TLS handshake with 127.0.0.1 failed: address mismatch, certificate is for 192.0.2.1, "
                  "2001:db8::1",
                  "Use a host of the certificate in the URL, or issue one for this host");
    EXPECT_EQ("CN=192.0.2.1, issued by CN=Test CA,  days left, until 2049-12-31",
              findingOfCertificate(checks, 1000, 10000));
}

TEST_F(TlsDoctor, ShowsANameThatIsNotPrintableWithEscapes) {
    start("unprintable");
    Checks checks = doctor(url());
    EXPECT_EQ("CN=evil\\0Aname, issued by CN=Test CA,  days left, until 2049-12-31",
              findingOfCertificate(checks, 1000, 10000));
}

TEST_F(TlsDoctor, WarnsIfTheServerIsNotVerified) {
    start("other_name");
    set("OWB_TLS_VERIFY", "0");
    Checks checks = doctor(url());
    EXPECT_EQ("warn", checks["TLS"]["result"]);
    EXPECT_EQ("TLSv1.3, TLS_AES_256_GCM_SHA384, server not verified: OWB_TLS_VERIFY is 0",
              checks["TLS"]["finding"]);
    EXPECT_EQ("ok", checks["manager"]["result"]);
}

TEST_F(TlsDoctor, ReportsAFileThatCannotBeLoaded) {
    start();
    set("OWB_TLS_CERT", "/nowhere/agent.crt");
    Checks checks = doctor(url());
    EXPECT_EQ("cannot load certificate from /nowhere/agent.crt: No such file or directory",
              checks["TLS"]["finding"]);
    EXPECT_EQ(0U, checks.count("TLS cert"));
}

TEST_F(TlsDoctor, SaysWhatIsMissingIfOpenSslCannotBeLoaded) {
    start();
    const support::TempDir directory;
    const std::string broken = directory.write("libssl.so.3", "no library");
    set("LD_LIBRARY_PATH", directory.path());
    Checks checks = doctor(url());
    EXPECT_EQ("fail", checks["URL"]["result"]);
    EXPECT_EQ(url() + ": cannot load TLS: " + broken + ": file too short", checks["URL"]["finding"]);
    EXPECT_EQ("Install OpenSSL for 32 bits, such as libssl3:i386", checks["URL"]["advice"]);
    EXPECT_EQ(0U, checks.count("TLS"));
}

TEST_F(TlsDoctor, TriesTheLoginInBothProtocols) {
    start();
    for (const char* const scheme : {"https", "owbinary.wbems"}) {
        EXPECT_EQ("user agent is not rejected",
                  doctor(url("agent:secret@localhost", scheme))["login"]["finding"]);
        EXPECT_EQ("user agent is rejected: 401 Unauthorized: wrong name or password",
                  doctor(url("agent:wrong@localhost", scheme))["login"]["finding"]);
    }
}

TEST_F(TlsDoctor, DoesNotSendThePasswordToAServerThatIsRejected) {
    start("other_name");
    EXPECT_EQ("cannot check user agent: TLS handshake with localhost failed: host name mismatch, certificate "
              "is for a.example, *.b.example",
              doctor(url("agent:secret@localhost"))["login"]["finding"]);
}

TEST_F(TlsDoctor, ReportsThatTheServerRequiresACertificate) {
    start("localhost", {"--tls-client-ca", certificate("ca.crt")});
    EXPECT_EQ(
        "cannot check user agent: TLS connection to localhost failed: tlsv13 alert certificate required",
        doctor(url("agent:secret@localhost"))["login"]["finding"]);
    showCertificate("agent");
    EXPECT_EQ("user agent is not rejected", doctor(url("agent:secret@localhost"))["login"]["finding"]);
}

TEST_F(TlsDoctor, ReportsAPortWithoutTls) {
    start("localhost", {"--listen", "127.0.0.1:0"});
    Checks checks = doctor("https://localhost:" + firstPort());
    EXPECT_EQ("fail", checks["TLS"]["result"]);
    EXPECT_EQ("TLS handshake with localhost failed: wrong version number", checks["TLS"]["finding"]);
    EXPECT_EQ("This port has no TLS: use a scheme without s, or another port", checks["TLS"]["advice"]);
    EXPECT_EQ(0U, checks.count("TLS cert"));
}

TEST_F(TlsDoctor, ReportsAHandshakeThatIsNotAnswered) {
    const support::ScriptedPeer peer({support::Step::staySilent()}, support::Listening::ipv4);
    const support::ProgramResult result =
        owbctl({"--url", peer.url("https", "localhost"), "doctor", "--timeout", "1"});
    EXPECT_EQ(124, result.exitCode);
    EXPECT_NE(std::string::npos, result.out.find("\nfail  TLS        timed out after 1 s\n")) << result.out;
}

TEST_F(TlsDoctor, SkipsTheChecksIfNoProcessListens) {
    Checks checks = doctor("https://localhost:1");
    EXPECT_EQ(0U, checks.count("TLS"));
    EXPECT_EQ("fail", checks["manager"]["result"]);
}

} // namespace
} // namespace owbctl_test
