#ifndef HTTP_SERVER_HPP_INCLUDED
#define HTTP_SERVER_HPP_INCLUDED
#include "http/Listener.hpp"
#include "http/Session.hpp"

#include <boost/asio/io_context.hpp>
#include <cstddef>
#include <list>

namespace cimom {

/** Serves the connections of some sockets, each in a session of its own, all in one thread. */
class Server {
public:
    /**
     * All must outlive the io_context. A connection beyond the limit of the settings gets status 503 and is
     * closed.
     */
    Server(boost::asio::io_context& io, const SessionSettings& settings, Counters& counters,
           Sessions& sessions);

    /** Accepts connections on a socket that listens, see Listener, while the io_context runs. */
    void listen(int socket, int family);
    /**
     * Accepts no more connections and closes those that are open, each when the answer that is under way has
     * been sent. The io_context has nothing more to do for the server when that is done.
     */
    void stop();

private:
    bool hasPlaceFor(const Session& session) const;
    void serve(Session::Socket socket);

    boost::asio::io_context& m_io;
    std::list<Listener> m_listeners;
    const SessionSettings& m_settings;
    Counters& m_counters;
    Sessions& m_sessions;
    std::size_t m_connectionLimit;
};

} // namespace cimom
#endif
