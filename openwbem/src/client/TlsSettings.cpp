#include "client/TlsSettings.hpp"

#include <cstdlib>

namespace owtls {
namespace {

std::string variable(const char* name) {
    const char* const value = ::secure_getenv(name);
    return value ? value : "";
}

} // namespace

TlsSettings tlsSettings() {
    TlsSettings settings;
    settings.authorities = variable("OWB_TLS_CA");
    settings.certificate = variable("OWB_TLS_CERT");
    settings.key = variable("OWB_TLS_KEY");
    settings.verifiesServer = variable("OWB_TLS_VERIFY") != "0";
    if (settings.key.empty())
        settings.key = settings.certificate;
    return settings;
}

} // namespace owtls
