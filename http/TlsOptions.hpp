#ifndef HTTP_TLS_OPTIONS_HPP_INCLUDED
#define HTTP_TLS_OPTIONS_HPP_INCLUDED
#include "http/NetworkAddress.hpp"
#include "http/Tls.hpp"

#include <cstdint>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace http {

/** What a command line says about TLS. */
struct TlsOptions {
    /** Empty: no TLS, and no files. */
    std::vector<NetworkAddress> listen{};
    TlsFiles files{};
};

/**
 * Adds the options for TLS to a command line. A build without TLS rejects them.
 *
 * @param options must outlive the parsing of the command line
 */
void addTlsOptions(CLI::App& app, TlsOptions& options, std::uint16_t defaultPort);

} // namespace http
#endif
