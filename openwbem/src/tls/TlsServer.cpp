#include "tls/TlsServer.hpp"

#include <ctime>
#include <memory>
#include <openssl/x509.h>

namespace owtls {
namespace {

const std::size_t nameLimit = 256; // bytes of one name of a certificate

struct Deleter {
    void operator()(BIO* bio) const { ::BIO_free(bio); }
};

// In the form of RFC 2253, which escapes all but printable ASCII, but in the order of the certificate.
std::string textOf(const X509_NAME* name) {
    const std::unique_ptr<BIO, Deleter> text(::BIO_new(::BIO_s_mem()));
    char* bytes = nullptr;
    if (!text || ::X509_NAME_print_ex(text.get(), name, 0, XN_FLAG_RFC2253 & ~XN_FLAG_DN_REV) < 0)
        return "";
    const long size = BIO_get_mem_data(text.get(), &bytes);
    return std::string(bytes, static_cast<std::size_t>(size)).substr(0, nameLimit);
}

std::string dayOf(const ASN1_TIME* time) {
    std::tm parts{};
    char text[32];
    if (::ASN1_TIME_to_tm(time, &parts) != 1)
        return "";
    return std::string(text, std::strftime(text, sizeof text, "%Y-%m-%d", &parts));
}

std::int64_t secondsUntil(const ASN1_TIME* time) {
    int days = 0;
    int seconds = 0;
    ::ASN1_TIME_diff(&days, &seconds, nullptr, time);
    return std::int64_t{days} * 24 * 60 * 60 + seconds;
}

} // namespace

TlsServer describe(const SSL* ssl, X509* certificate) {
    TlsServer server;
    if (const SSL_CIPHER* const cipher = ::SSL_get_current_cipher(ssl)) {
        server.protocol = ::SSL_get_version(ssl);
        server.cipher = ::SSL_CIPHER_get_name(cipher);
    }
    if (!certificate)
        return server;
    server.subject = textOf(::X509_get_subject_name(certificate));
    server.issuer = textOf(::X509_get_issuer_name(certificate));
    server.firstDay = dayOf(::X509_get0_notBefore(certificate));
    server.lastDay = dayOf(::X509_get0_notAfter(certificate));
    server.untilBegin = secondsUntil(::X509_get0_notBefore(certificate));
    server.untilEnd = secondsUntil(::X509_get0_notAfter(certificate));
    return server;
}

} // namespace owtls
