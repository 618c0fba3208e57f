// The object manager with TLS, and clients that have nothing in common with it.
#include "TlsDaemon.hpp"

#include <csignal>
#include <filesystem>

using support::certificate;
using support::contains;
using support::ProgramResult;
using support::runProgram;

namespace {

class TlsListener : public TlsDaemon {
protected:
    std::string usersFile() const {
        return directory().writeSecret("users", "agent:$6$salt$egUxKNxDs8kPfh8iPMNcosMhb2eWah6d3R44JDm5Rj/"
                                                "j/XWR5E33QPd0YmHXoDHOIDR6kL5D3JcQcz0O8FHE00\n"); // "secret"
    }

    /** Lists the classes by wbemcli. Returns the output and the error output. */
    std::string wbemcli(const Command& further, const std::string& login = "") const {
        Command command{WBEMCLI};
        command.insert(command.end(), further.begin(), further.end());
        command.insert(command.end(),
                       {"ecn", "https://" + login + "localhost:" + std::to_string(port()) + "/root/cimv2"});
        const ProgramResult result = runProgram(command);
        return result.out + result.err;
    }
    /** Connects by `openssl s_client`. Returns the output and the error output. */
    std::string sClient(const Command& further = {}) const {
        Command command{OPENSSL,   "s_client",           "-connect", "localhost:" + std::to_string(port()),
                        "-CAfile", certificate("ca.crt")};
        command.insert(command.end(), further.begin(), further.end());
        const ProgramResult result = runProgram(command);
        return result.out + result.err;
    }
    /** The message with which a start fails. */
    std::string failureOfStart(const Command& given) const {
        Command command{OWBCIMOMD, "--socket", socketPath(), "--no-state"};
        command.insert(command.end(), given.begin(), given.end());
        support::Daemon failing(command);
        const std::string line = failing.nextErrorLine();
        EXPECT_NE(0, contains(line, "ready") ? 0 : failing.wait());
        return line;
    }
    std::string path(const std::string& name) const { return directory().file(name); }
};

} // namespace

TEST_F(TlsListener, ServesAnIndependentClientThatVerifiesItsCertificate) {
    start(options());
    EXPECT_TRUE(contains(wbemcli({"-cacert", certificate("ca.crt")}), "/root/cimv2:QAV_System\n"));
    EXPECT_FALSE(contains(wbemcli({"-cacert", certificate("unknown_ca.crt")}), "QAV_System"));
}

TEST_F(TlsListener, LogsTheAlertOfAClientThatRejectsItsCertificate) {
    start(options());
    const std::string output = sClient({"-CAfile", certificate("unknown_ca.crt"), "-verify_return_error"});
    EXPECT_TRUE(contains(output, "certificate verify failed")) << output;
    EXPECT_EQ("TLS handshake failed: tlsv1 alert unknown ca", nextLogLine());
}

TEST_F(TlsListener, ServesCurl) {
    start(options());
    const ProgramResult result = runProgram({CURL, "-sv", "--cacert", certificate("ca.crt"),
                                             "https://localhost:" + std::to_string(port()) + "/"});
    EXPECT_TRUE(contains(result.err, "HTTP/1.1 405 Method not allowed")) << result.err;
    EXPECT_TRUE(contains(result.err, "SSL certificate verify ok")) << result.err;
}

TEST_F(TlsListener, OffersOnlyVersions12And13) {
    start(options());
    EXPECT_TRUE(contains(sClient({"-tls1_3"}), "New, TLSv1.3"));
    EXPECT_TRUE(contains(sClient({"-tls1_2"}), "New, TLSv1.2"));
    EXPECT_TRUE(contains(sClient({"-tls1_1", "-cipher", "ALL:@SECLEVEL=0"}), "alert protocol version"));
    EXPECT_EQ("TLS handshake failed: unsupported protocol", nextLogLine());
}

TEST_F(TlsListener, RejectsWeakCiphers) {
    start(options());
    EXPECT_TRUE(contains(sClient({"-tls1_2", "-cipher", "aNULL:@SECLEVEL=0"}), "alert handshake failure"));
    EXPECT_EQ("TLS handshake failed: no shared cipher", nextLogLine());
}

TEST_F(TlsListener, EndsWithCloseNotify) {
    start(options());
    const ProgramResult result = runProgram({CURL, "-sv", "--cacert", certificate("ca.crt"),
                                             "https://localhost:" + std::to_string(port()) + "/"});
    EXPECT_EQ(0, result.exitCode) << result.err;
    EXPECT_FALSE(contains(result.err, "unexpected eof")) << result.err;
}

TEST_F(TlsListener, ClosesAConnectionWithoutTlsAndLogsIt) {
    start(options());
    const ProgramResult result = runProgram({CURL, "-s", "http://localhost:" + std::to_string(port()) + "/"});
    EXPECT_NE(0, result.exitCode);
    EXPECT_EQ("TLS handshake failed: the client uses HTTP without TLS", nextLogLine());
}

TEST_F(TlsListener, ClosesAConnectionWithGarbageAndLogsIt) {
    start(options());
    Client client(port());
    client.send(std::string(300, '\xff'));
    EXPECT_EQ("TLS handshake failed: wrong version number", nextLogLine());
}

TEST_F(TlsListener, AHandshakeThatStallsEndsAfterTheTimeLimitAndHoldsUpNoOtherClient) {
    start(options({"--request-time", "1"}));
    Client stalled(port());
    stalled.send(std::string("\x16\x03\x01", 3));
    EXPECT_TRUE(contains(wbemcli({"-cacert", certificate("ca.crt")}), "QAV_System"));
    EXPECT_TRUE(stalled.isClosedByPeer());
    EXPECT_EQ("TLS handshake failed: timed out after 1 s", nextLogLine());
}

TEST_F(TlsListener, AnIdleConnectionIsClosedAfterTheTimeLimit) {
    start(options({"--idle-time", "1"}));
    EXPECT_TRUE(contains(sClient({"-quiet", "-ign_eof"}), "HTTP/1.0 408 Request timeout"));
}

TEST_F(TlsListener, RequiresACertificateIfItHasClientAuthorities) {
    start(options({"--tls-client-ca", certificate("ca.crt")}));
    const Command authority{"-cacert", certificate("ca.crt")};
    EXPECT_FALSE(contains(wbemcli(authority), "QAV_System"));
    EXPECT_EQ("TLS handshake failed: peer did not return a certificate", nextLogLine());
    const Command own{"-cacert",    certificate("ca.crt"),   "-clientcert", certificate("agent.crt"),
                      "-clientkey", certificate("agent.key")};
    EXPECT_TRUE(contains(wbemcli(own), "QAV_System")) << wbemcli(own);
}

TEST_F(TlsListener, RejectsAClientCertificateOfAnUnknownIssuer) {
    start(options({"--tls-client-ca", certificate("ca.crt")}));
    EXPECT_TRUE(contains(sClient({"-tls1_2", "-cert", certificate("unknown_issuer.crt"), "-key",
                                  certificate("unknown_issuer.key")}),
                         "alert unknown ca"));
    EXPECT_EQ(
        "TLS handshake failed: certificate of the client rejected: unable to get local issuer certificate",
        nextLogLine());
}

TEST_F(TlsListener, ACertificateLogsInTheUserThatItNames) {
    start(options({"--tls-client-ca", certificate("ca.crt"), "--users", usersFile(), "--require-login",
                   "--tls-user-from", "cn"}));
    const auto with = [this](const std::string& name) {
        return wbemcli({"-cacert", certificate("ca.crt"), "-clientcert", certificate(name + ".crt"),
                        "-clientkey", certificate(name + ".key")});
    };
    EXPECT_TRUE(contains(with("agent"), "QAV_System"));
    EXPECT_FALSE(contains(with("localhost"), "QAV_System")) << "names no user";
    EXPECT_EQ("refused: 401 Unauthorized: log in to read", nextLogLine());
}

TEST_F(TlsListener, ACertificateLogsNoOneInWithoutTheOption) {
    start(options({"--tls-client-ca", certificate("ca.crt"), "--users", usersFile(), "--require-login"}));
    const Command own{"-cacert",    certificate("ca.crt"),   "-clientcert", certificate("agent.crt"),
                      "-clientkey", certificate("agent.key")};
    EXPECT_FALSE(contains(wbemcli(own), "QAV_System"));
    EXPECT_TRUE(contains(wbemcli(own, "agent:secret@"), "QAV_System"));
}

TEST_F(TlsListener, AReloadReadsTheCertificateAgain) {
    start(options());
    EXPECT_TRUE(contains(sClient(), "subject=CN = localhost"));
    copy("localhost.crt", 0644);
    std::filesystem::copy_file(certificate("self_signed.crt"), path("localhost.crt"),
                               std::filesystem::copy_options::overwrite_existing);
    daemon().signal(SIGHUP);
    EXPECT_EQ("owbcimomd: cannot reload the site's files: " + path("localhost.key") + ": key values mismatch",
              daemon().nextErrorLine());
    EXPECT_TRUE(contains(sClient(), "issuer=CN = Test CA")) << "the old one is still in use";
    std::filesystem::copy_file(certificate("self_signed.key"), path("localhost.key"),
                               std::filesystem::copy_options::overwrite_existing);
    daemon().signal(SIGHUP);
    EXPECT_EQ("owbcimomd: reloaded the site's files", daemon().nextErrorLine());
    EXPECT_TRUE(contains(sClient(), "issuer=CN = localhost"));
}

TEST_F(TlsListener, AKeyThatOthersMayReadPreventsTheStart) {
    const Command given = options();
    ::chmod(path("localhost.key").c_str(), 0604);
    EXPECT_EQ("owbcimomd: " + path("localhost.key") + ": private key readable by others",
              failureOfStart(given));
    ::chmod(path("localhost.key").c_str(), 0620);
    EXPECT_EQ("owbcimomd: " + path("localhost.key") + ": private key writable by group or others",
              failureOfStart(given));
}

TEST_F(TlsListener, FilesThatCannotBeUsedPreventTheStart) {
    const auto failure = [this](const std::string& cert, const std::string& key) {
        return failureOfStart({"--tls-listen", "0", "--tls-cert", cert, "--tls-key", key});
    };
    const std::string localhost = copy("localhost.crt", 0644);
    const std::string key = copy("localhost.key", 0600);
    const std::string rsa = copy("weak_key.key", 0600);
    const std::string encrypted = copy("encrypted.key", 0600);
    EXPECT_EQ("owbcimomd: " + path("none") + ": No such file or directory", failure(path("none"), key));
    EXPECT_EQ("owbcimomd: " + path("none") + ": No such file or directory", failure(localhost, path("none")));
    EXPECT_EQ("owbcimomd: " + rsa + ": different key types", failure(localhost, rsa));
    EXPECT_EQ("owbcimomd: " + encrypted + ": the private key is encrypted", failure(localhost, encrypted));
    const std::string weak = copy("weak_key.crt", 0644);
    EXPECT_EQ("owbcimomd: " + weak + ": ee key too small", failure(weak, rsa));
    EXPECT_EQ("owbcimomd: " + path("none") + ": No such file or directory",
              failureOfStart(options({"--tls-client-ca", path("none")})));
}

TEST_F(TlsListener, WarnsThatPasswordsAreSentInTheClear) {
    support::Daemon warned(
        {OWBCIMOMD, "--socket", socketPath(), "--no-state", "--listen", "0.0.0.0:0", "--users", usersFile()});
    const std::string line = warned.nextErrorLine();
    EXPECT_TRUE(contains(line, "WARNING: passwords of clients of 0.0.0.0:")) << line;
    warned.signal(SIGTERM);
    warned.wait();
    start({"--listen", "127.0.0.1:0", "--users", usersFile()}); // its first line is not a warning
}

TEST_F(TlsListener, AnIncompleteCommandLineIsRejected) {
    EXPECT_EQ("owbcimomd: command line: --tls-listen requires --tls-cert",
              failureOfStart({"--tls-listen", "0"}));
    EXPECT_EQ("owbcimomd: command line: --tls-cert requires --tls-key", failureOfStart({"--tls-cert", "x"}));
    EXPECT_EQ("owbcimomd: command line: --tls-key requires --tls-listen",
              failureOfStart({"--tls-cert", "x", "--tls-key", "x"}));
}
