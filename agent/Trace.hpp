#ifndef AGENT_TRACE_HPP
#define AGENT_TRACE_HPP

#include "agent/Reason.hpp"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

namespace agent {

/**
 * Turns the library's trace on for this process, regardless of switch files.
 *
 * The library looks for its switch file at its first trace call and never again. begin() makes that call
 * happen in a temporary directory whose switch file names the descriptor of the trace. Needs /proc. One per
 * process; must live as long as the library is called.
 */
class Trace {
public:
    /** Traces to the file `path`, which is truncated, or to standard error for "-". Throws std::system_error
     * if it cannot be opened. */
    explicit Trace(const std::string& path);
    /** Traces to memory. */
    Trace();
    ~Trace();
    Trace(const Trace&) = delete;
    Trace& operator=(const Trace&) = delete;

    /** Runs `firstCall`, which must make the first trace call of the process; the library traces from then
     * on. Changes the current directory in the meantime. Throws std::system_error if the temporary directory
     * cannot be made. */
    void begin(const std::function<void()>& firstCall) const;

    /** Bytes traced so far; 0 if the trace cannot be read, as on a terminal. */
    std::size_t size() const;

    /** The exception that the library traced last, after the first `from` bytes of the trace. Nothing if
     * there was none, or if the trace cannot be read. */
    std::optional<Thrown> lastException(std::size_t from) const;

private:
    explicit Trace(int descriptor);

    int m_descriptor;
};

} // namespace agent
#endif
