#ifndef OWBCTL_OUTPUT_KEYBOARD_HPP
#define OWBCTL_OUTPUT_KEYBOARD_HPP

#include <chrono>

namespace owbctl {

/**
 * Single keys of the terminal on standard input, without an end of line.
 *
 * While a Keyboard exists, the terminal does not show what is typed, nor collect it in lines; ^C and ^Z keep
 * their meaning. The destructor restores the mode of the terminal, and so does every signal that ends or
 * stops the process. Does nothing if standard input is no terminal, and while the process is in the
 * background. Make only one.
 */
class Keyboard {
public:
    using Clock = std::chrono::steady_clock;

    /** @param isUsed false for a keyboard that does nothing */
    explicit Keyboard(bool isUsed);
    ~Keyboard();
    Keyboard(const Keyboard&) = delete;
    Keyboard& operator=(const Keyboard&) = delete;

    /** Waits until `end`, or until `key` is pressed. Returns whether it was; drops other keys. */
    bool waitFor(char key, Clock::time_point end);

private:
    bool isPressed(char key);

    bool m_isOpen;
};

/** Restores the mode that the terminal had before a Keyboard changed it. Does nothing without one.
 * Async-signal-safe: for a signal handler that ends the process. */
void restoreTerminal();

} // namespace owbctl
#endif
