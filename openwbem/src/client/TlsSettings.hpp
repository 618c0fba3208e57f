#ifndef OPENWBEM_CLIENT_TLS_SETTINGS_HPP_INCLUDED
#define OPENWBEM_CLIENT_TLS_SETTINGS_HPP_INCLUDED
#include <string>

namespace owtls {

/** How TLS connections are secured. Variables of the environment decide: an agent cannot pass anything else.
 */
struct TlsSettings {
    /** OWB_TLS_CA: file or directory of trusted certificates; empty: those of the system. */
    std::string authorities;
    /** OWB_TLS_CERT: file of the client's certificate and its chain; empty: none. */
    std::string certificate;
    /** OWB_TLS_KEY: file of its private key; by default the file of the certificate. */
    std::string key;
    /** Whether the certificate of the server is verified. Only OWB_TLS_VERIFY=0 switches that off. */
    bool verifiesServer = true;
};

/**
 * Reads the environment. A variable without a value counts as absent. In a program with the rights of another
 * user (set-user-ID) all are ignored.
 */
TlsSettings tlsSettings();

} // namespace owtls
#endif
