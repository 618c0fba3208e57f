#ifndef OWBCTL_OUTPUT_DEADLINE_HPP
#define OWBCTL_OUTPUT_DEADLINE_HPP

#include "output/Output.hpp"

#include <functional>
#include <string>

namespace owbctl {

/** The exit status of timeout(1). */
constexpr int exitTimeout = 124;

/** How long the program may take. */
struct TimeLimit {
    /** 0 for no limit. */
    double seconds;
    /** Whether each Waiting has this time, else the whole program from limitTime() on. */
    bool isForEachWait;
};

/** What the program says when its time is over. */
struct Expiry {
    /** Name of the object manager in messages. */
    std::string peer;
    /** Makes the text that the output gets, unless something was written to it, from the message; may be
     * empty. */
    std::function<std::string(const std::string& message)> document;
};

/**
 * Ends the program with exitTimeout when its time is over, whatever it is doing, after a message on standard
 * error. `output` must live until the end of the program. Call this once only, before the first Waiting.
 */
void limitTime(const TimeLimit& limit, Expiry expiry, const Output& output);

/** "timed out after 30 s". */
std::string timeoutText(double seconds);

/**
 * A wait for the object manager, from construction to destruction. If standard error is a terminal, a line
 * there says after two seconds what the program waits for; the destructor removes it. One at a time. Uses
 * SIGALRM.
 */
class Waiting {
public:
    /** Waits for a group. */
    explicit Waiting(long group);
    /** Waits for something else, named by a printable text. */
    explicit Waiting(const std::string& what);
    ~Waiting();
    Waiting(const Waiting&) = delete;
    Waiting& operator=(const Waiting&) = delete;
};

} // namespace owbctl
#endif
