#ifndef BENCH_BARE_CLIENT_HPP
#define BENCH_BARE_CLIENT_HPP
#include <string>

namespace bench {

/** The bytes that the client library sends to enumerate a class. */
std::string enumerateRequest(const std::string& className);

/** The minimal client: sends bytes and receives chunked replies, of which it parses only the end. */
class BareClient {
public:
    explicit BareClient(const std::string& socketPath);
    ~BareClient();
    BareClient(const BareClient&) = delete;
    BareClient& operator=(const BareClient&) = delete;

    /** Sends a request and receives its reply. Returns the size of the reply. */
    std::size_t exchange(const std::string& request);

private:
    int m_socket;
};

} // namespace bench
#endif
