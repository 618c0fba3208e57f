#ifndef HTTP_SESSIONS_HPP_INCLUDED
#define HTTP_SESSIONS_HPP_INCLUDED
#include "http/Settings.hpp"

#include <cstddef>
#include <set>
#include <utility>

namespace http {

class Session;

/** What a server has done since its start. */
struct Counters {
    unsigned long connections = 0;
    /** Requests that got a reply. */
    unsigned long requests = 0;
    /** Requests whose reply reports a failure. */
    unsigned long failed = 0;
    /** Error responses, without status 408 to an idle connection, and TLS handshakes that failed. */
    unsigned long refused = 0;
};

/** The open sessions of a server, the settings that they follow and the counters that they keep. */
class Sessions {
public:
    explicit Sessions(Settings chosen)
        : settings(std::move(chosen)) {}
    Sessions(const Sessions&) = delete;
    Sessions& operator=(const Sessions&) = delete;

    /** Called by each session when it begins, and when it ends. */
    void add(Session& session) { m_open.insert(&session); }
    void remove(Session& session) { m_open.erase(&session); }

    std::size_t count() const { return m_open.size(); }
    std::size_t countOnNetwork() const;
    /** See Session::finish(). */
    void finish();

    const Settings settings;
    Counters counters;

private:
    std::set<Session*> m_open;
};

} // namespace http
#endif
