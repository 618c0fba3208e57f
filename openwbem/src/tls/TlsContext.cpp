#include "tls/TlsContext.hpp"

#include "tls/TlsFailure.hpp"

#include <algorithm>
#include <openssl/err.h>
#include <string>
#include <sys/stat.h>
#include <utility>

namespace owtls {
namespace {

const int leastSecurityLevel = 2;

// Debian's OpenSSL itself looks there only if the package openssl, which has a link, is installed.
const char systemAuthorities[] = "/etc/ssl/certs";

bool isDirectory(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool trustSystem(SSL_CTX* context, std::string& failure) {
    return note(::SSL_CTX_set_default_verify_paths(context) == 1 &&
                    ::SSL_CTX_load_verify_locations(context, nullptr, systemAuthorities) == 1,
                "cannot use the CA certificates of the system", failure);
}

bool trust(SSL_CTX* context, const std::string& path, std::string& failure) {
    const bool isPath = isDirectory(path);
    return note(::SSL_CTX_load_verify_locations(context, isPath ? nullptr : path.c_str(),
                                                isPath ? path.c_str() : nullptr) == 1,
                "cannot load CA certificates from " + path, failure);
}

// A library must not ask on the terminal of its agent.
int refusePassphrase(char*, int, int, void* isEncrypted) {
    *static_cast<bool*>(isEncrypted) = true;
    return -1;
}

bool loadKey(SSL_CTX* context, const std::string& path, std::string& failure) {
    bool isEncrypted = false;
    ::SSL_CTX_set_default_passwd_cb(context, refusePassphrase);
    ::SSL_CTX_set_default_passwd_cb_userdata(context, &isEncrypted);
    const bool isLoaded = ::SSL_CTX_use_PrivateKey_file(context, path.c_str(), SSL_FILETYPE_PEM) == 1;
    ::SSL_CTX_set_default_passwd_cb_userdata(context, nullptr);
    const std::string what = "cannot load private key from " + path;
    if (!isEncrypted)
        return note(isLoaded, what, failure);
    failure = what + ": it is encrypted";
    return false;
}

bool loadCertificate(SSL_CTX* context, const TlsSettings& settings, std::string& failure) {
    return note(::SSL_CTX_use_certificate_chain_file(context, settings.certificate.c_str()) == 1,
                "cannot load certificate from " + settings.certificate, failure) &&
           loadKey(context, settings.key, failure);
}

bool loadFiles(SSL_CTX* context, const TlsSettings& settings, std::string& failure) {
    if (settings.verifiesServer &&
        !(settings.authorities.empty() ? trustSystem(context, failure)
                                       : trust(context, settings.authorities, failure)))
        return false;
    return settings.certificate.empty() || loadCertificate(context, settings, failure);
}

} // namespace

TlsContext makeTlsContext(const TlsSettings& settings, std::string& failure) {
    ::ERR_clear_error();
    TlsContext made(::SSL_CTX_new(::TLS_client_method()));
    SSL_CTX* const context = made.get();
    if (!note(context != nullptr, "cannot set up TLS", failure))
        return nullptr;
    ::SSL_CTX_set_min_proto_version(
        context, std::max(static_cast<int>(SSL_CTX_get_min_proto_version(context)), TLS1_2_VERSION));
    ::SSL_CTX_set_security_level(context,
                                 std::max(::SSL_CTX_get_security_level(context), leastSecurityLevel));
    ::SSL_CTX_set_options(context, SSL_OP_NO_RENEGOTIATION);
    return loadFiles(context, settings, failure) ? std::move(made) : nullptr;
}

} // namespace owtls
