#ifndef SERVICE_CHILD_ANSWER_HPP_INCLUDED
#define SERVICE_CHILD_ANSWER_HPP_INCLUDED
#include <boost/asio/io_context.hpp>
#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace service {

/** Computes an answer, any bytes, in a ChildProcess; a std::exception means that there is none. */
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

} // namespace service
#endif
