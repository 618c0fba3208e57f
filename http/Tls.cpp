#include "http/Tls.hpp"

#include "util/Descriptor.hpp"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <openssl/err.h>
#include <openssl/pem.h>
#include <openssl/ssl.h>
#include <stdexcept>
#include <sys/stat.h>

namespace http {
namespace {

const int leastSecurityLevel = 2;

struct Deleter {
    void operator()(BIO* bio) const { ::BIO_free(bio); }
    void operator()(EVP_PKEY* key) const { ::EVP_PKEY_free(key); }
};

/** The oldest error that OpenSSL has recorded. */
std::string tlsError() {
    const unsigned long error = ::ERR_get_error();
    if (ERR_GET_LIB(error) == ERR_LIB_SYS)
        return std::strerror(ERR_GET_REASON(error));
    const char* const reason = ::ERR_reason_error_string(error);
    return reason ? reason : "unknown error";
}

void check(bool isDone, const std::string& what) {
    if (!isDone)
        throw std::runtime_error(what + ": " + tlsError());
}

[[noreturn]] void fail(const std::string& path, const std::string& why) {
    throw std::runtime_error(path + ": " + why);
}

/** Throws unless a private key is secret: only its owner, who is root or this user, may change it, and only
 * the owner and the group may read it. */
void checkSecret(const struct stat& status, const std::string& path) {
    if (!S_ISREG(status.st_mode))
        fail(path, "not a regular file");
    if (status.st_uid != 0 && status.st_uid != ::geteuid())
        fail(path, "private key of another user (uid " + std::to_string(status.st_uid) + ")");
    if ((status.st_mode & (S_IROTH | S_IWOTH | S_IWGRP)) != 0)
        fail(path, (status.st_mode & S_IROTH) != 0 ? "private key readable by others"
                                                   : "private key writable by group or others");
}

/** The content of a file with a private key. */
std::string secretContent(const std::string& path) {
    // Without O_NONBLOCK the opening of a named pipe waits for a writer.
    const util::Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status {};
    if (!file.isOpen() || ::fstat(file.number(), &status) != 0)
        fail(path, std::strerror(errno));
    checkSecret(status, path);
    std::string content;
    if (!util::readAll(file, content))
        fail(path, std::strerror(errno));
    return content;
}

/** Called for an encrypted key. A service must not ask on its terminal. */
int refusePassphrase(char*, int, int, void* isEncrypted) {
    *static_cast<bool*>(isEncrypted) = true;
    return -1;
}

void useKey(SSL_CTX* context, const std::string& path) {
    const std::string content = secretContent(path);
    const std::unique_ptr<BIO, Deleter> bytes(
        ::BIO_new_mem_buf(content.data(), static_cast<int>(content.size())));
    check(bytes != nullptr, path);
    bool isEncrypted = false;
    const std::unique_ptr<EVP_PKEY, Deleter> key(
        ::PEM_read_bio_PrivateKey(bytes.get(), nullptr, refusePassphrase, &isEncrypted));
    if (isEncrypted)
        fail(path, "the private key is encrypted");
    check(key != nullptr, path);
    // OpenSSL accepts a key of another type than the certificate's, for another certificate.
    check(::X509_check_private_key(::SSL_CTX_get0_certificate(context), key.get()) == 1 &&
              ::SSL_CTX_use_PrivateKey(context, key.get()) == 1,
          path);
}

void requireClientCertificates(SSL_CTX* context, const std::string& path) {
    check(::SSL_CTX_load_verify_locations(context, path.c_str(), nullptr) == 1, path);
    auto* const names = ::SSL_load_client_CA_file(path.c_str());
    check(names != nullptr, path);
    ::SSL_CTX_set_client_CA_list(context, names); // takes ownership
    ::SSL_CTX_set_verify(context, SSL_VERIFY_PEER | SSL_VERIFY_FAIL_IF_NO_PEER_CERT, nullptr);
}

/** No session is resumed: each handshake verifies the client's certificate. */
void forbidResumption(SSL_CTX* context) {
    ::SSL_CTX_set_session_cache_mode(context, SSL_SESS_CACHE_OFF);
    ::SSL_CTX_set_options(context, SSL_OP_NO_TICKET);
    ::SSL_CTX_set_num_tickets(context, 0);
}

} // namespace

std::shared_ptr<TlsContext> readTlsFiles(const TlsFiles& files) {
    ::ERR_clear_error();
    SSL_CTX* const context = ::SSL_CTX_new(::TLS_server_method());
    check(context != nullptr, "cannot set up TLS");
    auto made = std::make_shared<TlsContext>(context); // takes ownership
    // The system's configuration may be stricter.
    ::SSL_CTX_set_min_proto_version(
        context, std::max(static_cast<int>(SSL_CTX_get_min_proto_version(context)), TLS1_2_VERSION));
    ::SSL_CTX_set_security_level(context,
                                 std::max(::SSL_CTX_get_security_level(context), leastSecurityLevel));
    ::SSL_CTX_set_options(context, SSL_OP_NO_RENEGOTIATION | SSL_OP_CIPHER_SERVER_PREFERENCE);
    forbidResumption(context);
    check(::SSL_CTX_use_certificate_chain_file(context, files.certificate.c_str()) == 1, files.certificate);
    useKey(context, files.key);
    if (!files.clientAuthorities.empty())
        requireClientCertificates(context, files.clientAuthorities);
    return made;
}

} // namespace http
