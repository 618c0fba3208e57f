#ifndef SNMP_SOURCE_SOURCE_HPP
#define SNMP_SOURCE_SOURCE_HPP

#include "snmp/mapping/Mapping.hpp"
#include "snmp/source/Message.hpp"

#include <boost/asio/io_context.hpp>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <sys/types.h>

namespace snmp {

/** How a Source treats its child. */
struct SourceSettings {
    /** Pause before a child that ended is replaced. It doubles with each child that answers nothing. */
    std::chrono::milliseconds firstPause{1000};
    std::chrono::milliseconds longestPause{60000};
    /** Replaces the limit of each reading; for tests. */
    std::optional<std::chrono::milliseconds> readLimit = std::nullopt;
    /** Time after which a write counts as hanging. */
    std::chrono::milliseconds writeLimit{10000};
    /** Replaces what the child does with its end of the socket; for tests. */
    std::function<void(int socket)> serve = {};
};

/**
 * Reads and writes the values of the object manager through a child process, which is replaced when it dies
 * or exceeds a time limit. One order at a time; writes precede reads. Logs when the object manager is lost
 * and when it is back. For the thread of the io_context, and never blocks it.
 */
class Source {
public:
    using Log = std::function<void(const std::string&)>;
    /** Receives the groups that could be read; nothing if the object manager did not answer. */
    using ReadDone = std::function<void(std::optional<Readings>)>;
    using WriteDone = std::function<void(const WriteOutcome&)>;

    /** Starts the child. Throws std::system_error. */
    Source(boost::asio::io_context& io, std::string url, Log log, SourceSettings settings = {});
    /** Kills the child; drops all functions that are still to be called. */
    ~Source();
    Source(const Source&) = delete;
    Source& operator=(const Source&) = delete;

    /** Calls `done` from the io_context, never from within this call. */
    void read(const SubjectRule& subject, ReadDone done);
    void write(const WriteOrder& order, WriteDone done);

    /** The child; 0 if there is none now. For tests. */
    pid_t child() const;

private:
    class State;
    std::shared_ptr<State> m_state;
};

} // namespace snmp
#endif
