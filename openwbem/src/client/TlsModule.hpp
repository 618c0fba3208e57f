#ifndef OPENWBEM_CLIENT_TLS_MODULE_HPP_INCLUDED
#define OPENWBEM_CLIENT_TLS_MODULE_HPP_INCLUDED
#include "client/TlsEngine.hpp"

namespace OpenWBEM {

/**
 * Returns owtls_engine() of the module with OpenSSL, which is in the directory of this library. The first
 * call loads it, until the process ends. Throws SSLException if that fails; the next call tries again.
 *
 * Any thread may call it.
 */
decltype(&owtls_engine) tlsModule();

} // namespace OpenWBEM
#endif
