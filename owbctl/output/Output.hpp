#ifndef OWBCTL_OUTPUT_OUTPUT_HPP
#define OWBCTL_OUTPUT_OUTPUT_HPP

#include <cstddef>
#include <string_view>

namespace owbctl {

/**
 * The program's standard output, kept apart from what libraries print.
 *
 * While an Output lives, it holds standard output under a descriptor of its own, and descriptor 1 leads to
 * standard error: the lines that libowb prints about duplicate items never mix into the data. Make one only,
 * before anything is printed. Throws std::system_error when either stream is closed.
 */
class Output {
public:
    Output();
    ~Output();
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    /**
     * Writes all of `text`, unbuffered; waits for a slow reader, even when the descriptor is non-blocking.
     * Throws std::system_error when writing fails (a full disk, say).
     */
    void write(std::string_view text);

    /** Shows a text on the terminal in place of what stood there; lines that it has no room for are counted
     * on the last one. For terminals only. */
    void redraw(std::string_view text);

    bool isTerminal() const;

    /** Columns of the terminal that standard output is, or 0 when it is no terminal. */
    std::size_t terminalWidth() const;

    /** Whether anything was written. */
    bool isBegun() const { return m_isBegun; }

    /** Where the data goes. */
    int descriptor() const { return m_descriptor; }

private:
    void waitWritable() const;

    int m_descriptor;
    bool m_isBegun = false;
};

} // namespace owbctl
#endif
