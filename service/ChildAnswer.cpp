#include "service/ChildAnswer.hpp"

#include "service/ChildProcess.hpp"

#include <boost/asio/buffer.hpp>
#include <boost/asio/posix/stream_descriptor.hpp>
#include <boost/asio/read.hpp>
#include <boost/asio/steady_timer.hpp>
#include <memory>
#include <utility>

namespace service {
namespace {

using Done = std::function<void(std::optional<std::string>)>;

/** A child and the wait for its answer. The handlers that the io_context holds own it. */
class Running : public std::enable_shared_from_this<Running> {
public:
    Running(boost::asio::io_context& io, const Question& question)
        : m_child([&question](int pipe) { return writeAll(pipe, question()); })
        , m_pipe(io)
        , m_timer(io) {
        m_pipe.assign(m_child.releasePipe());
    }

    void run(std::chrono::milliseconds limit, Done done) {
        m_timer.expires_after(limit);
        m_timer.async_wait([self = shared_from_this()](const boost::system::error_code& error) {
            if (!error)
                self->m_child.kill();
        });
        boost::asio::async_read(m_pipe, boost::asio::dynamic_buffer(m_answer),
                                [self = shared_from_this(),
                                 done = std::move(done)](const boost::system::error_code&, std::size_t) {
                                    self->m_timer.cancel();
                                    if (self->m_child.wait())
                                        done(std::move(self->m_answer));
                                    else
                                        done(std::nullopt);
                                });
    }

private:
    ChildProcess m_child;
    boost::asio::posix::stream_descriptor m_pipe;
    boost::asio::steady_timer m_timer;
    std::string m_answer;
};

} // namespace

void askChild(boost::asio::io_context& io, const Question& question, std::chrono::milliseconds limit,
              std::function<void(std::optional<std::string>)> done) {
    std::make_shared<Running>(io, question)->run(limit, std::move(done));
}

} // namespace service
