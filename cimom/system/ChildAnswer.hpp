#ifndef CIMOM_SYSTEM_CHILD_ANSWER_HPP_INCLUDED
#define CIMOM_SYSTEM_CHILD_ANSWER_HPP_INCLUDED
#include <boost/asio/io_context.hpp>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace cimom {

/**
 * Computes an answer, any bytes, in a child process; a std::exception means that there is none. In the child
 * all descriptors of the parent are closed, the standard streams among them, and signals are blocked.
 */
using Question = std::function<std::string()>;

/**
 * Has a child process answer a question, so that the io_context can serve others meanwhile.
 *
 * The io_context calls `done` once, never from within this call, with the answer; with nothing if the child
 * has failed or taken longer than `limit`. By then the child and all processes that it has started have
 * ended. They end with the io_context and with this process, too.
 *
 * Throws std::runtime_error if no child can be started.
 */
void askChild(boost::asio::io_context& io, const Question& question, std::chrono::milliseconds limit,
              std::function<void(std::optional<std::string>)> done);

/** Functions to call once a child process has answered or failed. */
using Waiting = std::vector<std::function<void()>>;

/**
 * Thrown by an operation that needs an answer which a child process has not given yet. The caller waits and
 * repeats the operation: the answer is there then. It is no failure, and no std::exception, so that error
 * handlers do not catch it.
 */
class AnswerPending {
public:
    explicit AnswerPending(std::shared_ptr<Waiting> waiting)
        : m_waiting(std::move(waiting)) {}

    /** Has the io_context call a function when the wait is over. */
    void wait(std::function<void()> then) const { m_waiting->push_back(std::move(then)); }

private:
    std::shared_ptr<Waiting> m_waiting;
};

} // namespace cimom
#endif
