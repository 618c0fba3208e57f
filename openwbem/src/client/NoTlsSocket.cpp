// Replaces TlsSocket.cpp if there is no OpenSSL for the target.
#include "OW_SSLException.hpp"
#include "client/TlsSocket.hpp"

namespace OpenWBEM {

void requireTls() {
    OW_THROW(SSLException, "built without TLS");
}

std::unique_ptr<Stream> startTls(std::unique_ptr<Socket>, const Endpoint&, const Deadline&) {
    OW_THROW(SSLException, "built without TLS");
}

} // namespace OpenWBEM
