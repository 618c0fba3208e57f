#ifndef OPENWBEM_TLS_TLS_FAILURE_HPP_INCLUDED
#define OPENWBEM_TLS_TLS_FAILURE_HPP_INCLUDED
#include <openssl/x509_vfy.h>
#include <string>

/** Reasons of failures of OpenSSL, for the messages of exceptions. */
namespace OpenWBEM {

/** The oldest error that OpenSSL has recorded for this thread, and removes it; "unknown error" if there is
 * none. */
std::string oldestTlsError();

/** Unless it is done, throws std::runtime_error: what failed, and the oldest error. */
void checkTls(bool isDone, const std::string& what);

/**
 * Why a certificate was rejected, as in "host name mismatch, certificate is for a.example". For use in the
 * callback that verifies. Text of the certificate is printable ASCII.
 */
std::string rejectionOf(X509_STORE_CTX* verification);

} // namespace OpenWBEM
#endif
