// What the trace says about TLS.
#include "LibraryCall.hpp"
#include "TraceLog.hpp"
#include "support/Certificates.hpp"
#include "support/TlsRelay.hpp"

#include <algorithm>
#include <cstdlib>

namespace {

using support::ScriptedPeer;
using support::TlsRelay;

// The lines that a read traces with a variable of the environment set.
Lines linesOfReading(const char* variable, const std::string& value) {
    const ScriptedPeer peer({twoSystems()}, support::Listening::ipv4);
    const TlsRelay relay(peer.port());
    const TraceLog log;
    log.run([&] {
        ::setenv(variable, value.c_str(), 1);
        OWB_URLSet(relay.url().c_str());
        TestQueue q;
        OWB_getGroup(2, q.head());
    });
    return log.lines();
}

testing::AssertionResult hasLine(const Lines& lines, const std::string& part) {
    const bool isThere = std::any_of(lines.begin(), lines.end(), [&](const std::string& line) {
        return line.find(part) != std::string::npos;
    });
    return isThere ? testing::AssertionSuccess()
                   : testing::AssertionFailure() << testing::PrintToString(lines);
}

TEST(TraceOfTls, SaysWhyTheCertificateWasRejectedAndForWhichHost) {
    EXPECT_TRUE(hasLine(linesOfReading("OWB_TLS_CA", support::certificate("unknown_ca.crt")),
                        "TLS handshake with localhost failed: unable to get local issuer certificate"));
}

TEST(TraceOfTls, WarnsIfTheCertificateIsNotVerified) {
    const std::string warning = "WARNING: certificate of localhost is not verified, OWB_TLS_VERIFY is 0";
    EXPECT_TRUE(hasLine(linesOfReading("OWB_TLS_VERIFY", "0"), warning));
    EXPECT_FALSE(hasLine(linesOfReading("OWB_TLS_CA", support::certificate("ca.crt")), warning));
}

} // namespace
