// The object manager with TLS and without it, over TCP: connections a second, and reads of 10,000 instances.
// The client is one process with the client library; it shares the processors with the manager.
#include "OW_CIMClient.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMInstanceEnumeration.hpp"

#include "ManyPorts.hpp"
#include "Measure.hpp"

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

const int ports = 10000;
const int connections = 501;
const int reads = 21;

using Options = std::vector<std::string>;

/** Self-signed certificates of a server on this host, NAME.crt and NAME.key, for each kind of key. */
class Certificates {
public:
    Certificates() {
        make("ecdsa", {"-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256"});
        make("rsa", {"-newkey", "rsa:2048"});
    }
    std::string file(const std::string& name) const { return m_directory.file(name); }
    /** The options of a server. */
    Options options(const std::string& name, bool requiresCertificate) const {
        Options all{"--listen",   "127.0.0.1:0",       "--tls-listen", "127.0.0.1:0",
                    "--tls-cert", file(name + ".crt"), "--tls-key",    file(name + ".key")};
        if (requiresCertificate)
            all.insert(all.end(), {"--tls-client-ca", file("ecdsa.crt")});
        return all;
    }

private:
    void make(const std::string& name, const Options& key) {
        Options command{OPENSSL,   "req",
                        "-x509",   "-nodes",
                        "-days",   "2",
                        "-subj",   "/CN=localhost",
                        "-addext", "subjectAltName=IP:127.0.0.1",
                        "-keyout", file(name + ".key"),
                        "-out",    file(name + ".crt")};
        command.insert(command.end(), key.begin(), key.end());
        if (support::runProgram(command).exitCode != 0) {
            std::fprintf(stderr, "bench: cannot make certificates\n");
            std::exit(EXIT_FAILURE);
        }
    }

    support::TempDir m_directory;
};

/** The URL of one of the two TCP addresses in the line with which the manager is ready. */
std::string urlOf(const bench::ManyPorts& manager, const std::string& scheme) {
    const std::string address = "127.0.0.1:";
    const std::string& line = manager.readyLine();
    const bool hasTls = scheme.back() == 's';
    const std::size_t at = hasTls ? line.rfind(address) : line.find(address);
    return scheme + "://" + line.substr(at, line.find(' ', at) - at);
}

void read(OpenWBEM::CIMClient& client, const char* className) {
    OpenWBEM::CIMInstanceEnumeration all = client.enumInstancesE(className);
    if (!all.hasMoreElements())
        std::abort();
    while (all.hasMoreElements())
        all.nextElement();
}

/** What one action takes, in microseconds. */
struct Times {
    double wall;
    double manager;
    double client;
};

template <class Action>
Times timesOf(const bench::ManyPorts& manager, int count, Action action) {
    action();
    const double managerBefore = manager.processorSeconds();
    const double clientBefore = bench::threadSeconds();
    const double wall = bench::wallSecondsOf([&] {
        for (int i = 0; i < count; ++i)
            action();
    });
    const double perAction = 1e6 / count;
    return {wall * perAction, (manager.processorSeconds() - managerBefore) * perAction,
            (bench::threadSeconds() - clientBefore) * perAction};
}

/** A new connection, and a request for a class of one instance. */
Times connect(const bench::ManyPorts& manager, const std::string& url) {
    return timesOf(manager, connections, [&url] {
        OpenWBEM::CIMClient client(url.c_str(), "root/cimv2");
        read(client, "QAV_IPProtocolEndpoint");
    });
}

void printConnections(const char* key, const char* certificate, const Times& times, const Times& plain) {
    std::printf("| %s | %s | %.0f | %.0f | %.0f | %.1f |\n", key, certificate, 1e6 / times.wall,
                times.manager, times.client, times.wall / plain.wall);
    std::fflush(stdout);
}

void measureConnections(const Certificates& certificates) {
    std::printf("| key of the manager | client certificate | connections/s | manager, µs | client, µs | "
                "time, ratio |\n"
                "|---|---|---:|---:|---:|---:|\n");
    Times plain{};
    for (const char* const name : {"ecdsa", "rsa"}) {
        const std::string key = name;
        for (const bool isRequired : {false, true}) {
            ::setenv("OWB_TLS_CA", certificates.file(key + ".crt").c_str(), 1);
            const bench::ManyPorts manager(1, certificates.options(key, isRequired));
            if (plain.wall == 0) {
                plain = connect(manager, urlOf(manager, "owbinary.wbem"));
                printConnections("none: plain TCP", "", plain, plain);
            }
            printConnections(key == "rsa" ? "RSA 2048" : "ECDSA P-256", isRequired ? "ECDSA P-256" : "none",
                             connect(manager, urlOf(manager, "owbinary.wbems")), plain);
        }
    }
}

void measureReads(const Certificates& certificates) {
    ::setenv("OWB_TLS_CA", certificates.file("ecdsa.crt").c_str(), 1);
    const bench::ManyPorts manager(ports, certificates.options("ecdsa", false));
    std::printf(
        "\n| protocol | instances/s | manager, µs an instance | client, µs an instance | time, ratio |\n"
        "|---|---:|---:|---:|---:|\n");
    for (const char* const name : {"owbinary.wbem", "cimxml.wbem"}) {
        const std::string protocol = name;
        double plain = 0;
        for (const std::string& scheme : {protocol, protocol + "s"}) {
            OpenWBEM::CIMClient client(urlOf(manager, scheme).c_str(), "root/cimv2");
            const Times times =
                timesOf(manager, reads, [&client] { read(client, bench::ManyPorts::className()); });
            plain = plain == 0 ? times.wall : plain;
            std::printf("| %s | %.0f | %.2f | %.2f | %.2f |\n", scheme.c_str(), 1e6 * ports / times.wall,
                        times.manager / ports, times.client / ports, times.wall / plain);
            std::fflush(stdout);
        }
    }
}

} // namespace

int main() {
    bench::printMachine();
    const Certificates certificates;
    ::setenv("OWB_TLS_CERT", certificates.file("ecdsa.crt").c_str(), 1);
    ::setenv("OWB_TLS_KEY", certificates.file("ecdsa.key").c_str(), 1);
    measureConnections(certificates);
    measureReads(certificates);
    return EXIT_SUCCESS;
}
