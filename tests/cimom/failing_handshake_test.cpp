// Each system call of an object manager fails in turn after a client with TLS has connected. At most this
// connection ends.
#include "TlsConnection.hpp"
#include "TlsDaemon.hpp"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fstream>

namespace {

class HandshakeWithoutACall : public TlsDaemon, public testing::WithParamInterface<int> {
protected:
    /** Serves clients, one after the other, at most one of which gets no answer. Returns the number of the
     * calls since the first one connected, and the name of the failed one.
     *
     * @param call index of the call that fails, or -1 for none
     */
    std::pair<long, std::string> serve(int clients, long call) {
        const std::string countPath = directory().file("count");
        Command command{"/usr/bin/env",
                        "LD_PRELOAD=" FAILING_PROGRAM,
                        "FAIL_SINCE_CONNECTION=1",
                        "FAIL_CALL=" + std::to_string(call),
                        "FAIL_ERROR=" + std::to_string(GetParam()),
                        "FAIL_COUNT=" + countPath,
                        OWBCIMOMD,
                        "--no-state",
                        "--socket",
                        socketPath()};
        const Command tls = options();
        command.insert(command.end(), tls.begin(), tls.end());
        support::Daemon manager(command);
        const std::string ready = manager.nextErrorLine();
        const auto port = static_cast<std::uint16_t>(std::stoul(ready.substr(ready.rfind(':') + 1)));
        int answered = 0;
        for (int client = 0; client < clients; ++client)
            answered += isAnswered(port);
        EXPECT_LE(call < 0 ? clients : clients - 1, answered);
        manager.signal(SIGTERM);
        EXPECT_EQ(0, manager.wait());
        std::pair<long, std::string> calls(-1, "");
        std::ifstream(countPath) >> calls.first >> calls.second;
        return calls;
    }

private:
    static bool isAnswered(std::uint16_t port) {
        try {
            TlsConnection client(port);
            client.connect();
            return client.statusLine("GET / HTTP/1.1\r\nHost: box\r\n\r\n").compare(0, 13, "HTTP/1.1 405 ") ==
                   0;
        } catch (const std::runtime_error&) { // the connection has ended
            return false;
        }
    }
};

} // namespace

TEST_P(HandshakeWithoutACall, EndsAtMostThisConnection) {
    const long calls = serve(1, -1).first;
    EXPECT_LT(20, calls);
    for (long call = 0; call < calls && !HasFailure(); ++call) {
        const std::string name = serve(2, call).second;
        EXPECT_FALSE(HasFailure()) << "call " << call << " of " << calls << ", " << name << ": "
                                   << std::strerror(GetParam());
    }
}

INSTANTIATE_TEST_SUITE_P(For, HandshakeWithoutACall, testing::Values(EINTR, ENOMEM),
                         [](const auto& error) { return std::string(::strerrorname_np(error.param)); });
