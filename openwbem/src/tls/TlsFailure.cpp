#include "tls/TlsFailure.hpp"

#include <algorithm>
#include <arpa/inet.h>
#include <cstring>
#include <memory>
#include <openssl/err.h>
#include <openssl/x509v3.h>

namespace owtls {
namespace {

const std::size_t nameLimit = 256; // bytes of one text of a certificate

// The peer chooses the bytes. They end in logs and on terminals.
std::string printable(const unsigned char* bytes, int size) {
    std::string text(reinterpret_cast<const char*>(bytes),
                     std::min(static_cast<std::size_t>(std::max(size, 0)), nameLimit));
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c < ' ' || c > '~'; }, '?');
    return text;
}

std::string printable(const ASN1_STRING* text) {
    return printable(::ASN1_STRING_get0_data(text), ::ASN1_STRING_length(text));
}

std::string address(const ASN1_OCTET_STRING* bytes) {
    const int size = ::ASN1_STRING_length(bytes);
    char text[INET6_ADDRSTRLEN] = "an invalid address";
    if (size == 4 || size == 16)
        ::inet_ntop(size == 4 ? AF_INET : AF_INET6, ::ASN1_STRING_get0_data(bytes), text, sizeof text);
    return text;
}

std::string commonName(X509* certificate) {
    const X509_NAME* const subject = ::X509_get_subject_name(certificate);
    const int at = ::X509_NAME_get_index_by_NID(subject, NID_commonName, -1);
    return at < 0 ? "" : printable(::X509_NAME_ENTRY_get_data(::X509_NAME_get_entry(subject, at)));
}

// The hosts that a certificate is for, or its subject if it names none.
std::string hosts(X509* certificate) {
    const std::unique_ptr<GENERAL_NAMES, decltype(&::GENERAL_NAMES_free)> names(
        static_cast<GENERAL_NAMES*>(::X509_get_ext_d2i(certificate, NID_subject_alt_name, nullptr, nullptr)),
        ::GENERAL_NAMES_free);
    std::string all;
    for (int i = 0; i < sk_GENERAL_NAME_num(names.get()) && all.size() < nameLimit; ++i) {
        const GENERAL_NAME* const name = sk_GENERAL_NAME_value(names.get(), i);
        if (name->type != GEN_DNS && name->type != GEN_IPADD)
            continue;
        all += all.empty() ? "" : ", ";
        all += name->type == GEN_DNS ? printable(name->d.dNSName) : address(name->d.iPAddress);
    }
    if (all.empty())
        all = commonName(certificate);
    return all.empty() ? "no host" : all;
}

} // namespace

std::string oldestTlsError() {
    const unsigned long error = ::ERR_get_error();
    if (error == 0)
        return "unknown error";
    if (ERR_GET_LIB(error) == ERR_LIB_SYS)
        return std::strerror(ERR_GET_REASON(error));
    const char* const reason = ::ERR_reason_error_string(error);
    return reason ? reason : "error " + std::to_string(error);
}

bool note(bool isDone, const std::string& what, std::string& failure) {
    if (!isDone)
        failure = what + ": " + oldestTlsError();
    return isDone;
}

std::string rejectionOf(X509_STORE_CTX* verification) {
    const int error = ::X509_STORE_CTX_get_error(verification);
    X509* const server = ::X509_STORE_CTX_get0_cert(verification);
    if (error == X509_V_ERR_HOSTNAME_MISMATCH)
        return "host name mismatch, certificate is for " + hosts(server);
    if (error == X509_V_ERR_IP_ADDRESS_MISMATCH)
        return "address mismatch, certificate is for " + hosts(server);
    const std::string reason = ::X509_verify_cert_error_string(error);
    X509* const rejected = ::X509_STORE_CTX_get_current_cert(verification);
    const bool isOfIssuer = ::X509_STORE_CTX_get_error_depth(verification) > 0 && rejected;
    return isOfIssuer ? reason + " (issuer " + commonName(rejected) + ")" : reason;
}

} // namespace owtls
