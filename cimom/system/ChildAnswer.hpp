#ifndef CIMOM_SYSTEM_CHILD_ANSWER_HPP_INCLUDED
#define CIMOM_SYSTEM_CHILD_ANSWER_HPP_INCLUDED
#include "system/AnsweringChild.hpp"

#include <boost/asio/io_context.hpp>
#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace cimom {

/**
 * Asks a child process beside the loop. The io_context calls `done` once, never from within this call, with
 * the answer; without one when the child has failed or taken longer than `limit`. Nothing is left of the
 * child and of what it has started then. The child ends with the io_context and with this process, too.
 *
 * Throws std::runtime_error when no child can be started.
 */
void askChild(boost::asio::io_context& io, const Question& question, std::chrono::milliseconds limit,
              std::function<void(std::optional<std::string>)> done);

} // namespace cimom
#endif
