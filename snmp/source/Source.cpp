#include "snmp/source/Source.hpp"

#include "snmp/Fields.hpp"
#include "snmp/source/Child.hpp"

#include <boost/asio/buffer.hpp>
#include <boost/asio/local/stream_protocol.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/read.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/write.hpp>

#include <algorithm>
#include <deque>
#include <exception>
#include <set>
#include <stdexcept>
#include <utility>
#include <vector>

namespace snmp {
namespace {

using boost::system::error_code;
using Replies = std::vector<Message>;

/** A message to the child, and what to do with the replies. */
struct Order {
    Message message;
    std::chrono::milliseconds limit;
    /** Nothing if the child ended, or took longer than the limit. */
    std::function<void(std::optional<Replies>)> done;
};

WriteOutcome outcomeOrUnknown(const Message& reply) {
    try {
        return decodedOutcome(reply.bytes);
    } catch (const std::exception&) {
        return {};
    }
}

/** Whether a reply ends the answer to a message. Throws std::runtime_error if it is none to it. */
bool isLast(MessageKind reply, MessageKind message) {
    if (reply == (message == MessageKind::read ? MessageKind::end : MessageKind::written))
        return true;
    if (message == MessageKind::read && (reply == MessageKind::group || reply == MessageKind::failedGroup))
        return false;
    throw std::runtime_error("unexpected message");
}

/** A child, its socket, and the message that is being received. The handlers of its socket own it, since
 * they may run after it was replaced. */
struct Connection {
    Connection(boost::asio::io_context& io, const std::function<void(int)>& serve)
        : child(serve)
        , socket(io) {
        socket.assign(boost::asio::local::stream_protocol(), child.releaseSocket());
    }

    Child child;
    boost::asio::local::stream_protocol::socket socket;
    MessageHead head{};
    MessageHead sentHead{};
    std::string sent;
    std::string body;
    Replies replies;
    /** Bytes of the replies. */
    std::size_t received = 0;
};

using ConnectionPointer = std::shared_ptr<Connection>;

} // namespace

class Source::State : public std::enable_shared_from_this<State> {
public:
    State(boost::asio::io_context& io, Log log, SourceSettings settings)
        : m_io(io)
        , m_log(std::move(log))
        , m_settings(std::move(settings))
        , m_pause(m_settings.firstPause)
        , m_limit(io)
        , m_restart(io) {}

    void start() {
        m_connection = std::make_shared<Connection>(m_io, m_settings.serve);
        receiveHead(m_connection);
        sendNext();
    }

    void stop() {
        m_isStopped = true;
        m_orders.clear();
        m_limit.cancel();
        m_restart.cancel();
        drop();
    }

    void read(const SubjectRule& subject, ReadDone done) {
        std::string groups;
        for (const long group : subject.groups)
            appendNumber(groups, static_cast<std::uint32_t>(group));
        m_orders.push_back({{MessageKind::read, std::move(groups)},
                            m_settings.readLimit.value_or(subject.limit),
                            [this, done = std::move(done)](std::optional<Replies> replies) {
                                done(replies ? readingsOrNone(std::move(*replies)) : std::nullopt);
                            }});
        sendSoon();
    }

    void write(const WriteOrder& order, WriteDone done) {
        const auto firstRead =
            std::find_if(m_orders.begin() + (m_isBusy ? 1 : 0), m_orders.end(),
                         [](const Order& candidate) { return candidate.message.kind == MessageKind::read; });
        m_orders.insert(firstRead, {{MessageKind::write, encoded(order)},
                                    m_settings.writeLimit,
                                    [done = std::move(done)](std::optional<Replies> replies) {
                                        done(replies ? outcomeOrUnknown(replies->back()) : WriteOutcome());
                                    }});
        sendSoon();
    }

    pid_t child() const { return m_connection ? m_connection->child.pid() : 0; }

private:
    void sendSoon() {
        boost::asio::post(m_io, [self = shared_from_this()] {
            try {
                self->sendNext();
            } catch (const std::exception& reason) { // out of memory
                self->fail(reason.what());
            }
        });
    }

    /** Sends the next order, if the child waits for one. Without a child, all orders have failed. */
    void sendNext() {
        if (m_isStopped || m_isBusy || m_orders.empty())
            return;
        if (!m_connection) {
            failAll();
            return;
        }
        m_isBusy = true;
        Connection& to = *m_connection;
        to.sentHead = headOf(m_orders.front().message);
        to.sent = std::move(m_orders.front().message.bytes);
        to.replies.clear();
        to.received = 0;
        const std::array<boost::asio::const_buffer, 2> buffers{boost::asio::buffer(to.sentHead),
                                                               boost::asio::buffer(to.sent)};
        boost::asio::async_write(m_connection->socket, buffers,
                                 [connection = m_connection](const error_code&, std::size_t) {});
        m_limit.expires_after(m_orders.front().limit);
        m_limit.async_wait([self = shared_from_this(), sent = ++m_sent](const error_code& error) {
            if (!error && self->m_isBusy && self->m_sent == sent)
                self->fail("timed out");
        });
    }

    /** A handler of the socket. An error, an exception and an allocation that fails end the child alone. */
    template <class Action>
    auto guarded(const ConnectionPointer& connection, Action action) {
        return [self = shared_from_this(), connection, action](const error_code& error, std::size_t) {
            if (self->m_isStopped || self->m_connection != connection)
                return;
            try {
                if (error)
                    throw std::runtime_error("the process that reads it has ended");
                action(connection);
            } catch (const std::exception& reason) {
                self->fail(reason.what());
            }
        };
    }

    void receiveHead(const ConnectionPointer& connection) {
        boost::asio::async_read(connection->socket, boost::asio::buffer(connection->head),
                                guarded(connection, [this](const ConnectionPointer& from) {
                                    if (from->head[1] > longestMessage - from->received)
                                        throw std::runtime_error("reply too long");
                                    from->received += from->head[1];
                                    from->body.resize(from->head[1]);
                                    receiveBody(from);
                                }));
    }

    void receiveBody(const ConnectionPointer& connection) {
        boost::asio::async_read(connection->socket, boost::asio::buffer(connection->body),
                                guarded(connection, [this](const ConnectionPointer& from) {
                                    if (!m_isBusy)
                                        throw std::runtime_error("reply without request");
                                    const auto kind = static_cast<MessageKind>(from->head[0]);
                                    const bool isEnd = isLast(kind, m_orders.front().message.kind);
                                    from->replies.push_back({kind, std::exchange(from->body, {})});
                                    receiveHead(from);
                                    if (isEnd)
                                        finish(from);
                                }));
    }

    void finish(const ConnectionPointer& connection) {
        m_limit.cancel();
        m_isBusy = false;
        m_pause = m_settings.firstPause;
        const Order order = std::move(m_orders.front());
        m_orders.pop_front();
        order.done(std::exchange(connection->replies, {}));
        sendNext();
    }

    /** Replaces the child after a pause. The orders have failed. */
    void fail(const char* reason) {
        drop();
        m_limit.cancel();
        m_isBusy = false;
        restartAfterPause();
        failAll();
        setLost(reason);
    }

    /** The socket's handlers keep the connection for a moment, but not the child. */
    void drop() {
        if (const ConnectionPointer connection = std::exchange(m_connection, nullptr)) {
            error_code ignored;
            connection->socket.close(ignored);
        }
    }

    void restartAfterPause() {
        m_restart.expires_after(m_pause);
        m_pause = std::min(m_pause * 2, m_settings.longestPause);
        m_restart.async_wait([self = shared_from_this()](const error_code& error) {
            if (error || self->m_isStopped)
                return;
            try {
                self->start();
            } catch (const std::exception&) {
                self->m_connection = nullptr;
                self->restartAfterPause();
            }
        });
    }

    /** Those that are there now. Allocates nothing. */
    void failAll() {
        for (std::size_t left = m_orders.size(); left > 0; --left) {
            const Order order = std::move(m_orders.front());
            m_orders.pop_front();
            order.done(std::nullopt);
        }
    }

    std::optional<Readings> readingsOrNone(Replies replies) {
        try {
            return readings(std::move(replies));
        } catch (const std::exception& reason) {
            setLost(reason.what());
            return std::nullopt;
        }
    }

    std::optional<Readings> readings(Replies replies) {
        FieldReader end(replies.back().bytes);
        const auto state = static_cast<ReadResult>(end.number());
        if (state == ReadResult::lost) {
            setLost(std::string(end.text()));
            return std::nullopt;
        }
        if (state == ReadResult::answered)
            setBack();
        replies.pop_back();
        Readings result;
        for (Message& reply : replies) {
            FieldReader reader(reply.bytes);
            const auto group = static_cast<long>(reader.number());
            if (reply.kind == MessageKind::group)
                result.emplace_back(group, reply.bytes.substr(sizeof(std::uint32_t)));
            else
                logFailure(group);
            reply.bytes = {}; // of the memory of a large group only one copy
        }
        return result;
    }

    void setLost(const std::string& reason) {
        if (!std::exchange(m_isLost, true))
            m_log("object manager lost: " + reason);
    }

    void setBack() {
        if (std::exchange(m_isLost, false))
            m_log("object manager is back");
    }

    void logFailure(long group) {
        if (m_failed.insert(group).second)
            m_log("cannot read group " + std::to_string(group) + ": the object manager reports an error");
    }

    boost::asio::io_context& m_io;
    const Log m_log;
    const SourceSettings m_settings;
    std::chrono::milliseconds m_pause;
    ConnectionPointer m_connection;
    std::deque<Order> m_orders;
    /** The first order was sent. */
    bool m_isBusy = false;
    /** Orders sent so far. */
    unsigned long m_sent = 0;
    bool m_isLost = false;
    bool m_isStopped = false;
    std::set<long> m_failed;
    boost::asio::steady_timer m_limit;
    boost::asio::steady_timer m_restart;
};

Source::Source(boost::asio::io_context& io, std::string url, Log log, SourceSettings settings)
    : m_state(nullptr) {
    if (!settings.serve)
        settings.serve = [url = std::move(url)](int socket) { serveParent(socket, url); };
    m_state = std::make_shared<State>(io, std::move(log), std::move(settings));
    m_state->start();
}

Source::~Source() {
    m_state->stop();
}

void Source::read(const SubjectRule& subject, ReadDone done) {
    m_state->read(subject, std::move(done));
}

void Source::write(const WriteOrder& order, WriteDone done) {
    m_state->write(order, std::move(done));
}

pid_t Source::child() const {
    return m_state->child();
}

} // namespace snmp
