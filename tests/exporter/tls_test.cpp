// The exporter with TLS, and clients that have nothing in common with it.
#include "RunningExporter.hpp"
#include "support/Certificates.hpp"
#include "support/Prometheus.hpp"

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <poll.h>
#include <sys/stat.h>

using support::certificate;
using support::contains;
using support::ProgramResult;
using support::runProgram;

namespace {

class ExporterTls : public RunningExporter {
protected:
    using Command = std::vector<std::string>;

    /** The options for a certificate of localhost, with further ones. */
    Command options(const Command& further = {}) const {
        Command all{"--tls-listen",        "127.0.0.1:0", "--tls-cert",
                    copy("localhost.crt"), "--tls-key",   copy("localhost.key")};
        all.insert(all.end(), further.begin(), further.end());
        return all;
    }
    /** A copy of a file of the test's certificates, which only its owner may read. */
    std::string copy(const std::string& name) const {
        return directory().writeSecret(name, support::readFile(certificate(name)));
    }
    void replace(const std::string& name, const std::string& other) const {
        std::filesystem::copy_file(certificate(other), directory().file(name),
                                   std::filesystem::copy_options::overwrite_existing);
    }
    /** The metrics by curl, or why there are none. */
    std::string curl(const Command& further = {}, const std::string& authority = "ca.crt") const {
        Command command{CURL, "-sS", "--cacert", certificate(authority)};
        command.insert(command.end(), further.begin(), further.end());
        command.push_back("https://localhost:" + std::to_string(port()) + "/metrics");
        const ProgramResult result = runProgram(command);
        return result.out + result.err;
    }
    /** Clients that have begun a handshake and send no more. */
    std::vector<std::unique_ptr<support::HttpClient>> stalledClients(int count) const {
        std::vector<std::unique_ptr<support::HttpClient>> clients;
        for (int i = 0; i < count; ++i) {
            clients.push_back(std::make_unique<support::HttpClient>(port()));
            clients.back()->send("\x16");
        }
        return clients;
    }
    static ProgramResult run(Command arguments) {
        arguments.insert(arguments.begin(), OWB_EXPORTER);
        return runProgram(arguments);
    }
};

/** Connections of clients over the network at a time. */
constexpr int connectionLimit = 48;
const char* const success = "\nowb_scrape_success 1\n";

} // namespace

TEST_F(ExporterTls, ServesAClientThatVerifiesItsCertificate) {
    startManager();
    startListening(options());
    EXPECT_TRUE(contains(curl(), success));
    EXPECT_TRUE(contains(curl({}, "unknown_ca.crt"), "unable to get local issuer certificate"));
    const std::string line = exporter().nextErrorLine();
    EXPECT_TRUE(contains(line, ": TLS handshake failed: tlsv1 alert unknown ca")) << line;
}

TEST_F(ExporterTls, ListensWithoutTlsOnlyIfAsked) {
    const auto ready = [this](const Command& given) {
        support::Daemon started(given);
        std::string line = started.nextErrorLine();
        started.signal(SIGTERM);
        EXPECT_EQ(0, started.wait());
        return line;
    };
    Command command = options();
    command.insert(command.begin(), OWB_EXPORTER);
    const std::string only = ready(command);
    EXPECT_EQ(std::string::npos, only.find(" and ")) << only;
    EXPECT_EQ(" (TLS)", only.substr(only.size() - 6));
    command.insert(command.end(), {"--listen", "0"});
    EXPECT_TRUE(contains(ready(command), " and 127.0.0.1:"));
}

TEST_F(ExporterTls, RequiresACertificateIfItHasClientAuthorities) {
    startManager();
    startListening(options({"--tls-client-ca", certificate("ca.crt")}));
    EXPECT_FALSE(contains(curl(), success));
    const std::string line = exporter().nextErrorLine();
    EXPECT_TRUE(contains(line, ": TLS handshake failed: peer did not return a certificate")) << line;
    EXPECT_TRUE(
        contains(curl({"--cert", certificate("agent.crt"), "--key", certificate("agent.key")}), success));
}

TEST_F(ExporterTls, AReloadReadsTheFilesAgainOrKeepsTheOldOnes) {
    startListening(options());
    replace("localhost.crt", "self_signed.crt");
    exporter().signal(SIGHUP);
    EXPECT_EQ("owb-exporter: cannot reload the files for TLS: " + directory().file("localhost.key") +
                  ": key values mismatch",
              exporter().nextErrorLine());
    EXPECT_TRUE(contains(curl(), "owb_scrape_success 0")) << "the old one is still in use";
    exporter().nextErrorLine(); // there is no object manager
    replace("localhost.key", "self_signed.key");
    exporter().signal(SIGHUP);
    EXPECT_EQ("owb-exporter: reloaded the files for TLS", exporter().nextErrorLine());
    EXPECT_TRUE(contains(curl({}, "self_signed.crt"), "owb_scrape_success 0"));
}

TEST_F(ExporterTls, AReloadWithoutFilesChangesNothing) {
    startExporter();
    exporter().signal(SIGHUP);
    EXPECT_EQ("owb-exporter: no files to reload", exporter().nextErrorLine());
    EXPECT_EQ(200U, get("/healthz").status);
}

TEST_F(ExporterTls, FilesThatCannotBeUsedPreventTheStart) {
    Command command = options();
    ::chmod(directory().file("localhost.key").c_str(), 0644);
    const ProgramResult readable = run(command);
    EXPECT_EQ(1, readable.exitCode);
    EXPECT_EQ("owb-exporter: " + directory().file("localhost.key") + ": private key readable by others\n",
              readable.err);
    std::filesystem::remove(directory().file("localhost.key"));
    EXPECT_EQ("owb-exporter: " + directory().file("localhost.key") + ": No such file or directory\n",
              run(command).err);
    const ProgramResult incomplete = run({"--tls-listen", "0"});
    EXPECT_EQ(2, incomplete.exitCode);
    EXPECT_EQ("owb-exporter: command line: --tls-listen requires --tls-cert\n", incomplete.err);
}

TEST_F(ExporterTls, AHandshakeThatStallsHoldsUpNoOtherClient) {
    startManager();
    startListening(options());
    const auto stalled = stalledClients(connectionLimit - 1);
    EXPECT_TRUE(contains(curl(), success));
}

TEST_F(ExporterTls, StalledHandshakesCountAsConnections) {
    startListening(options());
    const auto stalled = stalledClients(connectionLimit + 1);
    std::vector<pollfd> descriptors;
    for (const auto& each : stalled)
        descriptors.push_back({each->descriptor(), POLLIN, 0});
    // Not always the last one: the server accepts many at a time, in any order.
    ASSERT_EQ(1, ::poll(descriptors.data(), descriptors.size(), 20000));
    const auto closed = std::find_if(descriptors.begin(), descriptors.end(),
                                     [](const pollfd& each) { return each.revents != 0; });
    EXPECT_TRUE(stalled[static_cast<std::size_t>(closed - descriptors.begin())]->isClosedByPeer());
}

TEST_F(ExporterTls, PrometheusScrapesItWithItsOwnCertificate) {
    if (const std::string reason = support::prometheusMissing(); !reason.empty())
        GTEST_SKIP() << reason;
    startManager();
    startListening(options({"--tls-client-ca", certificate("ca.crt")}));
    const support::Prometheus prometheus("- job_name: owb\n"
                                         "  scheme: https\n"
                                         "  tls_config: {ca_file: " +
                                         certificate("ca.crt") + ", cert_file: " + certificate("agent.crt") +
                                         ", key_file: " + certificate("agent.key") +
                                         "}\n"
                                         "  static_configs: [{targets: ['localhost:" +
                                         std::to_string(port()) + "']}]\n");
    prometheus.await("owb_scrape_success == 1");
    EXPECT_EQ("", prometheus.lastError());
}
