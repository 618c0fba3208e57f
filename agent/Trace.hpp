#ifndef AGENT_TRACE_HPP
#define AGENT_TRACE_HPP

#include <functional>
#include <string>

namespace owbctl {

/**
 * The library's trace of this process alone, whatever switch files there are for others.
 *
 * The library looks for its switch at its first trace call and never again: begin() has this happen in a
 * folder of its own, whose switch file names the trace's descriptor.
 */
class Trace {
public:
    /** Traces into the file at `path`, which is emptied, or to standard error for "-". Throws
     * std::system_error when that cannot be opened. */
    explicit Trace(const std::string& path);
    /** Traces into memory. */
    Trace();
    ~Trace();
    Trace(const Trace&) = delete;
    Trace& operator=(const Trace&) = delete;

    /** Has the library trace from `firstCall` on, which must make the first trace call of the process. */
    void begin(const std::function<void()>& firstCall) const;

    /** What the library last traced of an exception: its type and message. Empty when there was none, or the
     * trace goes where it cannot be read from, as to a terminal. */
    std::string lastError() const;

private:
    explicit Trace(int descriptor);

    int m_descriptor;
};

} // namespace owbctl
#endif
