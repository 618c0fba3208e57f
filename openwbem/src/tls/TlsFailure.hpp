#ifndef OPENWBEM_TLS_TLS_FAILURE_HPP_INCLUDED
#define OPENWBEM_TLS_TLS_FAILURE_HPP_INCLUDED
#include <openssl/x509_vfy.h>
#include <string>

/** Reasons of failures of OpenSSL, for messages. */
namespace owtls {

/** The oldest error that OpenSSL has recorded for this thread, and removes it; "unknown error" if there is
 * none. */
std::string oldestTlsError();

/** Unless it is done, sets the failure: what failed, and the oldest error. Returns isDone. */
bool note(bool isDone, const std::string& what, std::string& failure);

/**
 * Why a certificate was rejected, as in "host name mismatch, certificate is for a.example". For use in the
 * callback that verifies. Text of the certificate is printable ASCII.
 */
std::string rejectionOf(X509_STORE_CTX* verification);

} // namespace owtls
#endif
