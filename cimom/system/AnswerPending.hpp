#ifndef CIMOM_SYSTEM_ANSWER_PENDING_HPP_INCLUDED
#define CIMOM_SYSTEM_ANSWER_PENDING_HPP_INCLUDED
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace cimom {

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
