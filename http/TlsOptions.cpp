#include "http/TlsOptions.hpp"

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace http {
namespace {

std::string checkFileName(const std::string& text) {
    return text.empty() ? "empty name" : std::string();
}

} // namespace

void addTlsOptions(CLI::App& app, TlsOptions& options, std::uint16_t defaultPort) {
    const std::string port = std::to_string(defaultPort);
    const auto read = [&options, defaultPort](const std::vector<std::string>& texts) {
        for (const std::string& text : texts)
            options.listen.push_back(*networkAddress(text, defaultPort));
    };
    const auto check = [defaultPort, port](const std::string& text) {
        if (!isBuiltWithTls)
            return std::string("built without TLS");
        return networkAddress(text, defaultPort)
                   ? std::string()
                   : "'" + text + "' is not ADDRESS, [ADDRESS:]PORT or PORT (0.0.0.0, [::]:" + port + ")";
    };
    auto* const listen =
        app.add_option_function<std::vector<std::string>>(
               "--tls-listen", read, "Serve clients with TLS (default PORT: " + port + "); may be repeated")
            ->type_name("ADDRESS[:PORT]")
            ->expected(1)
            ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
            ->check(check);
    auto* const certificate =
        app.add_option("--tls-cert", options.files.certificate,
                       "Certificate for TLS, and those of its intermediate issuers, in PEM");
    auto* const key = app.add_option("--tls-key", options.files.key,
                                     "Private key of the certificate, which others may not read");
    auto* const authorities =
        app.add_option("--tls-client-ca", options.files.clientAuthorities,
                       "Require a certificate of TLS clients, issued by one of this file");
    for (CLI::Option* const option : {certificate, key, authorities})
        option->type_name("FILE")->check(checkFileName);
    // One each: CLI11 checks the needs of an option in the order of their addresses.
    listen->needs(certificate);
    certificate->needs(key);
    key->needs(listen);
    authorities->needs(listen);
}

} // namespace http
