// Which servers the client accepts. The servers are of OpenSSL's command line, so that nothing of ours makes
// the handshakes.
#include "TlsFixture.hpp"
#include "support/Program.hpp"

namespace {

using support::certificate;

// A server that sends each line of a request back in reverse.
class OpenSslServer {
public:
    OpenSslServer(const std::string& pemFile, const std::string& options = "",
                  const std::string& address = "127.0.0.1")
        : m_daemon({"/bin/sh", "-c",
                    "exec " OPENSSL " s_server -accept " + address + ":0 -rev -cert " + certificate(pemFile) +
                        " -key " + certificate(pemFile) + " " + options + " >&2"}) {
        const std::string word = "ACCEPT ";
        std::string line = m_daemon.nextErrorLine();
        while (!line.empty() && line.find(word) != 0)
            line = m_daemon.nextErrorLine();
        m_port = line.substr(line.rfind(':') + 1);
    }

    std::string url(const std::string& host = "localhost") const {
        return "owbinary.wbems://" + host + ":" + m_port;
    }

private:
    support::Daemon m_daemon;
    std::string m_port;
};

// What a reversed line is for HTTP. It has passed TLS.
const std::string accepted = "HTTPException: Unable to process request: ";

class TlsVerification : public TlsFixture {
protected:
    // Reads from a server with a certificate. Expects that the handshake fails for a reason, and that it
    // succeeds without verification.
    static void expectRejected(const std::string& pemFile, const std::string& host, const std::string& reason,
                               const std::string& options = "") {
        const OpenSslServer server(pemFile, options);
        const std::string failure = "SSLException: TLS handshake with " + host + " failed: ";
        EXPECT_EQ(failure + reason, messageOfReadingFrom(server.url(host)));
        set("OWB_TLS_VERIFY", "0");
        EXPECT_EQ(accepted, messageOfReadingFrom(server.url(host)));
        set("OWB_TLS_VERIFY", "1");
        EXPECT_EQ(failure + reason, messageOfReadingFrom(server.url(host)));
    }

    // The same for a server that fails with and without verification.
    static std::string failureWith(const std::string& options) {
        const OpenSslServer server("localhost.pem", options);
        const std::string message = messageOfReadingFrom(server.url());
        set("OWB_TLS_VERIFY", "0");
        EXPECT_EQ(message, messageOfReadingFrom(server.url()));
        return message;
    }
};

TEST_F(TlsVerification, AcceptsACertificateOfATrustedAuthorityForTheNameAndTheAddress) {
    const OpenSslServer server("localhost.pem");
    EXPECT_EQ(accepted, messageOfReadingFrom(server.url("localhost")));
    EXPECT_EQ(accepted, messageOfReadingFrom(server.url("127.0.0.1")));
}

TEST_F(TlsVerification, AcceptsACertificateForAnIPv6Address) {
    const OpenSslServer server("localhost.pem", "", "[::1]");
    EXPECT_EQ(accepted, messageOfReadingFrom(server.url("[::1]")));
    const OpenSslServer other("other_address.pem", "", "[::1]");
    EXPECT_EQ("SSLException: TLS handshake with ::1 failed: address mismatch, certificate is for 192.0.2.1, "
              "2001:db8::1",
              messageOfReadingFrom(other.url("[::1]")));
}

TEST_F(TlsVerification, AcceptsASelfSignedCertificateThatIsTrusted) {
    const OpenSslServer server("self_signed.pem");
    set("OWB_TLS_CA", certificate("self_signed.crt"));
    EXPECT_EQ(accepted, messageOfReadingFrom(server.url()));
}

TEST_F(TlsVerification, ReadsADirectoryOfTrustedCertificates) {
    const OpenSslServer server("localhost.pem");
    set("OWB_TLS_CA", certificate("hashed"));
    EXPECT_EQ(accepted, messageOfReadingFrom(server.url()));
}

TEST_F(TlsVerification, TrustsTheSystemByDefault) {
    const OpenSslServer server("localhost.pem");
    set("OWB_TLS_CA", "");
    EXPECT_EQ("SSLException: TLS handshake with localhost failed: unable to get local issuer certificate",
              messageOfReadingFrom(server.url()));
    ::setenv("SSL_CERT_FILE", certificate("ca.crt").c_str(), 1); // OpenSSL's own variable
    EXPECT_EQ(accepted, messageOfReadingFrom(server.url()));
    ::unsetenv("SSL_CERT_FILE");
}

TEST_F(TlsVerification, RejectsAnExpiredCertificate) {
    expectRejected("expired.pem", "localhost", "certificate has expired");
}

TEST_F(TlsVerification, RejectsACertificateThatIsNotYetValid) {
    expectRejected("not_yet_valid.pem", "localhost", "certificate is not yet valid");
}

TEST_F(TlsVerification, RejectsACertificateForAnotherName) {
    expectRejected("other_name.pem", "localhost",
                   "host name mismatch, certificate is for a.example, *.b.example");
}

TEST_F(TlsVerification, RejectsACertificateForAnotherAddress) {
    expectRejected("other_address.pem", "127.0.0.1",
                   "address mismatch, certificate is for 192.0.2.1, 2001:db8::1");
}

TEST_F(TlsVerification, RejectsTheNameOfAHostInPlaceOfItsAddress) {
    expectRejected("other_name.pem", "127.0.0.1",
                   "address mismatch, certificate is for a.example, *.b.example");
}

TEST_F(TlsVerification, PrintsTheNameOfACertificateInASCII) {
    expectRejected("unprintable.pem", "localhost", "host name mismatch, certificate is for evil?name");
}

TEST_F(TlsVerification, RejectsACertificateForClients) {
    expectRejected("wrong_purpose.pem", "localhost", "unsuitable certificate purpose");
}

TEST_F(TlsVerification, RejectsAWeakKey) {
    expectRejected("weak_key.pem", "localhost", "EE certificate key too weak", "-cipher ALL:@SECLEVEL=0");
}

TEST_F(TlsVerification, RejectsACertificateOfAnUnknownAuthority) {
    expectRejected("unknown_issuer.pem", "localhost", "unable to get local issuer certificate");
}

TEST_F(TlsVerification, RejectsASelfSignedCertificate) {
    expectRejected("self_signed.pem", "localhost", "self-signed certificate");
}

TEST_F(TlsVerification, RejectsAServerWithoutAVersionFrom12On) {
    EXPECT_EQ("SSLException: TLS handshake with localhost failed: tlsv1 alert protocol version",
              failureWith("-tls1_1 -cipher ALL:@SECLEVEL=0"));
}

TEST_F(TlsVerification, ReportsThatTheServerRequiresACertificate) {
    const std::string options = "-Verify 1 -verify_return_error -CAfile " + certificate("ca.crt");
    EXPECT_EQ("SSLException: TLS handshake with localhost failed: sslv3 alert handshake failure",
              failureWith(options + " -tls1_2"));
    EXPECT_EQ("SSLException: TLS connection to localhost failed: tlsv13 alert certificate required",
              failureWith(options + " -tls1_3"));
}

TEST_F(TlsVerification, ReportsThatTheServerRejectsTheCertificateOfTheClient) {
    set("OWB_TLS_CERT", certificate("unknown_issuer.pem"));
    const std::string options = "-Verify 1 -verify_return_error -CAfile " + certificate("ca.crt");
    EXPECT_EQ("SSLException: TLS connection to localhost failed: tlsv1 alert unknown ca",
              failureWith(options + " -tls1_3"));
}

} // namespace
