#ifndef BENCH_BARE_CLIENT_HPP
#define BENCH_BARE_CLIENT_HPP
#include <string>

namespace bench {

/** What the client library sends to enumerate a class, byte by byte. */
std::string enumerateRequest(const std::string& className);

/** The least that a client can do: sends bytes, takes chunked replies, and looks at their end alone. */
class BareClient {
public:
    explicit BareClient(const std::string& socketPath);
    ~BareClient();
    BareClient(const BareClient&) = delete;
    BareClient& operator=(const BareClient&) = delete;

    /** Sends a request and takes its reply. Returns the size of that. */
    std::size_t exchange(const std::string& request);

private:
    int m_socket;
};

} // namespace bench
#endif
