#ifndef OWBCTL_OUTPUT_OUTPUT_HPP
#define OWBCTL_OUTPUT_OUTPUT_HPP

#include <cstddef>
#include <string>
#include <string_view>

namespace owbctl {

/**
 * The program's standard output, separate from what libraries print.
 *
 * While an Output exists, it writes to a duplicate of standard output, and descriptor 1 refers to standard
 * error. So the lines that libowb prints about duplicate items never mix with the data. Make only one, before
 * anything is printed. The constructor throws std::system_error if standard output is closed. If standard
 * error is closed, messages are discarded.
 */
class Output {
public:
    Output();
    ~Output();
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    /**
     * Writes all of `text`, unbuffered. Waits for a slow reader, also if the descriptor is non-blocking.
     * Throws std::system_error if writing fails.
     */
    void write(std::string_view text);

    /** Replaces the contents of the terminal with a text. The last line counts the lines that do not fit. For
     * terminals only. */
    void redraw(std::string_view text);

    bool isTerminal() const;

    /** Whether standard output is a terminal that obeys control sequences: TERM is not "dumb". */
    bool canRedraw() const;

    /** Columns of the terminal; 0 if standard output is no terminal. */
    std::size_t terminalWidth() const;

    /** Whether anything was written. */
    bool isBegun() const { return m_isBegun; }

    /** Descriptor of the data; owned by this object. */
    int descriptor() const { return m_descriptor; }

private:
    void waitWritable() const;

    int m_descriptor;
    bool m_isBegun = false;
};

/** Makes a terminal clear its line and return to the start (ECMA-48). */
constexpr const char* clearLine = "\r\x1b[K";

/** A line on standard error that shows the progress of a long command. Does nothing if standard error is no
 * terminal that obeys control sequences. The destructor removes the line. */
class Progress {
public:
    Progress();
    ~Progress() { clear(); }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /** Shows a printable text in place of the previous one. */
    void show(const std::string& text);
    /** Removes the line, so that other output can follow. */
    void clear();

private:
    const bool m_isOn;
    bool m_isShown = false;
};

} // namespace owbctl
#endif
