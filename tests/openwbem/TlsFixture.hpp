#ifndef TESTS_OPENWBEM_TLS_FIXTURE_HPP
#define TESTS_OPENWBEM_TLS_FIXTURE_HPP
#include "Clients.hpp"
#include "support/Certificates.hpp"
#include "support/TlsRelay.hpp"

#include <cstdlib>

/** A test whose client trusts the test's certificate authority, and nothing else is set. */
class TlsFixture : public testing::Test {
protected:
    TlsFixture() {
        clear();
        set("OWB_TLS_CA", support::certificate("ca.crt"));
    }
    ~TlsFixture() override { clear(); }

    static void set(const char* variable, const std::string& value) { ::setenv(variable, value.c_str(), 1); }

    /** The outcome of a read with a new client. */
    static std::string messageOfReadingFrom(const std::string& url) {
        return failureOf([&url] {
            CIMClient client(url.c_str(), "root/cimv2");
            read(client);
        });
    }

private:
    static void clear() {
        for (const char* const variable : {"OWB_TLS_CA", "OWB_TLS_CERT", "OWB_TLS_KEY", "OWB_TLS_VERIFY"})
            ::unsetenv(variable);
    }
};

#endif
