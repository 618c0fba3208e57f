// What the environment sets for TLS, and errors in it.
#include "TlsFixture.hpp"

#include <cstdarg>
#include <cstdio>
#include <vector>

namespace {

std::vector<std::string> traced;

} // namespace

// In place of the bridge's.
extern "C" __attribute__((visibility("default"), format(printf, 4, 5))) void
OWB_Debug(char* file, char* function, unsigned long, char* format, ...) {
    char message[256];
    va_list values;
    va_start(values, format);
    std::vsnprintf(message, sizeof message, format, values);
    va_end(values);
    traced.push_back(std::string(file) + ":" + function + ": " + message);
}

namespace {

using support::certificate;
using support::TlsRelay;

class TlsSettings : public TlsFixture {
protected:
    TlsSettings() { traced.clear(); }

    std::string outcome() { return messageOfReadingFrom(m_relay.url()); }

    const ScriptedPeer m_peer{{Step::answerAndClose(good)}, Listening::ipv4};
    const TlsRelay m_relay{m_peer.port()};
};

TEST_F(TlsSettings, WithoutVerificationAreTracedForEachConnection) {
    set("OWB_TLS_VERIFY", "0");
    set("OWB_TLS_CA", "/nonexistent"); // not needed
    CIMClient client(m_relay.url().c_str(), "root/cimv2");
    read(client);
    read(client);
    const std::string line = "openwbem/src/client/TlsSocket.cpp:startTls: "
                             "WARNING: certificate of localhost is not verified, OWB_TLS_VERIFY is 0\n";
    EXPECT_EQ((std::vector<std::string>{line, line}), traced);
}

TEST_F(TlsSettings, WithVerificationAreNotTraced) {
    EXPECT_EQ("no exception", outcome());
    EXPECT_TRUE(traced.empty());
}

TEST_F(TlsSettings, VerifyUnlessTheValueIsExactlyZero) {
    set("OWB_TLS_CA", certificate("unknown_ca.crt"));
    for (const char* value : {"", "1", "no", "00", "false"}) {
        set("OWB_TLS_VERIFY", value);
        EXPECT_EQ("SSLException: TLS handshake with localhost failed: unable to get local issuer certificate",
                  outcome())
            << value;
    }
}

TEST_F(TlsSettings, ThatCannotBeLoadedAreAnSslException) {
    const std::string empty = certificate("index.attr");
    const std::pair<std::string, std::string> authorities[] = {{"/nonexistent", "No such file or directory"},
                                                               {empty, "no certificate or crl found"}};
    for (const auto& [file, reason] : authorities) {
        set("OWB_TLS_CA", file);
        EXPECT_EQ("SSLException: cannot load CA certificates from " + file + ": " + reason, outcome());
    }
    set("OWB_TLS_CA", certificate("ca.crt"));

    const std::pair<std::string, std::string> certificates[] = {{"/nonexistent", "No such file or directory"},
                                                                {empty, "no start line"}};
    for (const auto& [file, reason] : certificates) {
        set("OWB_TLS_CERT", file);
        EXPECT_EQ("SSLException: cannot load certificate from " + file + ": " + reason, outcome());
    }
    set("OWB_TLS_CERT", certificate("agent.crt"));

    const std::pair<std::string, std::string> keys[] = {{"/nonexistent", "No such file or directory"},
                                                        {certificate("ca.key"), "key values mismatch"},
                                                        {certificate("encrypted.key"), "it is encrypted"}};
    for (const auto& [file, reason] : keys) {
        set("OWB_TLS_KEY", file);
        EXPECT_EQ("SSLException: cannot load private key from " + file + ": " + reason, outcome());
    }
}

TEST_F(TlsSettings, AreReadForEachConnection) {
    CIMClient client(m_relay.url().c_str(), "root/cimv2");
    EXPECT_EQ("no exception", messageOfReading(client));
    set("OWB_TLS_CA", certificate("unknown_ca.crt"));
    EXPECT_EQ("SSLException: TLS handshake with localhost failed: unable to get local issuer certificate",
              messageOfReading(client));
    set("OWB_TLS_CA", certificate("ca.crt"));
    EXPECT_EQ("no exception", messageOfReading(client));
}

} // namespace
