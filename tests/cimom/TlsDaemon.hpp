#ifndef TESTS_CIMOM_TLS_DAEMON_HPP
#define TESTS_CIMOM_TLS_DAEMON_HPP
#include "StartedDaemon.hpp"
#include "support/Certificates.hpp"

#include <string>
#include <sys/stat.h>
#include <vector>

/** A test that starts object managers with TLS. */
class TlsDaemon : public StartedDaemon {
protected:
    using Command = std::vector<std::string>;

    /** The options for a certificate of localhost, with further ones. */
    Command options(const Command& further = {}) const {
        Command all{"--tls-listen", "127.0.0.1:0",
                    "--tls-cert",   copy("localhost.crt", 0644),
                    "--tls-key",    copy("localhost.key", 0600)};
        all.insert(all.end(), further.begin(), further.end());
        return all;
    }
    /** A copy of a file of the test's certificates. */
    std::string copy(const std::string& name, mode_t mode) const {
        const std::string path = directory().write(name, support::readFile(support::certificate(name)));
        ::chmod(path.c_str(), mode);
        return path;
    }
    /** The next line of the log without the number of the client's port. */
    std::string nextLogLine() {
        const std::string line = daemon().nextErrorLine();
        const std::string address = "owbcimomd: 127.0.0.1:";
        const std::size_t end = line.find(": ", address.size());
        return line.compare(0, address.size(), address) == 0 && end != std::string::npos
                   ? line.substr(end + 2)
                   : line;
    }
};

#endif
