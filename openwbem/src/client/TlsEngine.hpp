#ifndef OPENWBEM_CLIENT_TLS_ENGINE_HPP_INCLUDED
#define OPENWBEM_CLIENT_TLS_ENGINE_HPP_INCLUDED
#include "client/TlsSettings.hpp"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/** TLS for the client library. It uses nothing of OpenWBEM, so that programs can use it without, too. */
namespace owtls {

/** What a handshake shows of a server. Texts are printable ASCII. */
struct TlsServer {
    /** Such as "TLSv1.3" and "TLS_AES_256_GCM_SHA384"; both empty if the server has not chosen. */
    std::string protocol;
    std::string cipher;
    /** Of the certificate, as in "CN=box,O=Example"; both empty without a certificate. */
    std::string subject;
    std::string issuer;
    /** First and last day of the certificate, such as "2026-12-31" (UTC). */
    std::string firstDay;
    std::string lastDay;
    /** Seconds from now to the beginning and to the end of the certificate; negative in the past. */
    std::int64_t untilBegin = 0;
    std::int64_t untilEnd = 0;
};

/**
 * The client's side of one TLS connection, between two buffers: bytes from the peer and bytes to the peer. It
 * never accesses the socket, so that deadlines apply and SIGPIPE is not raised.
 *
 * The implementation is in a module, which uses no symbol of this library. Failures are results, not
 * exceptions; only std::bad_alloc passes.
 */
class TlsEngine {
public:
    enum class Outcome {
        done,
        needsBytes, // from the peer
        ended,      // by the peer
        failed,     // reason() says why
    };

    virtual ~TlsEngine() = default;

    /** Continues the handshake. */
    virtual Outcome shakeHands() = 0;
    /** Encrypts the first bytes. Returns how many; 0 if that fails. */
    virtual std::size_t encrypt(std::string_view bytes) = 0;
    /** Decrypts up to size bytes. Sets their number, at least 1, if it is done. */
    virtual Outcome decrypt(char* to, std::size_t size, std::size_t& decrypted) = 0;
    /** Makes the alert that ends the connection, close_notify. */
    virtual void sayGoodbye() = 0;

    /** Takes bytes from the peer. False if that fails. */
    virtual bool receive(std::string_view bytes) = 0;
    /** Removes and returns the bytes for the peer. Each function above may make some, also if it fails. */
    virtual std::string takeBytesToSend() = 0;
    /** Whether all bytes from the peer are decrypted and read. */
    virtual bool isQuiet() const = 0;
    /** Why the last function failed; empty if the peer has only closed the connection. */
    virtual std::string reason() = 0;
    /** Describes the server, also if its certificate was rejected. */
    virtual TlsServer server() const = 0;
};

} // namespace owtls

/**
 * The one function of the module. Makes an engine, which the caller deletes, for a connection to a host: a
 * name, or an address without brackets. Null if that fails: failure then is the message for the user, which
 * names the file if one cannot be loaded.
 */
extern "C" owtls::TlsEngine* owtls_engine(const std::string& host, bool hostIsAddress,
                                          const owtls::TlsSettings& settings, std::string& failure);

#endif
