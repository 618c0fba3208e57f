#ifndef OPENWBEM_CLIENT_DEADLINE_HPP_INCLUDED
#define OPENWBEM_CLIENT_DEADLINE_HPP_INCLUDED
#include <chrono>

namespace OpenWBEM {

/** The end of a wait that starts with the construction. Signals and changes of the system time do not move
 * it. */
class Deadline {
public:
    /**
     * @param what the operation that waits, as in "receive"; must outlive the deadline
     * @param limit clamped to the range of an int in milliseconds
     */
    Deadline(const char* what, std::chrono::milliseconds limit);

    /** Remaining milliseconds, rounded up, for poll(2); 0 after the deadline. */
    int left() const;
    /** Throws the SocketTimeoutException that reports this timeout. */
    [[noreturn]] void expire() const;

private:
    using Clock = std::chrono::steady_clock;

    const char* m_what;
    std::chrono::milliseconds m_limit;
    Clock::time_point m_end;
};

} // namespace OpenWBEM
#endif
