#ifndef OWBCTL_OUTPUT_HPP
#define OWBCTL_OUTPUT_HPP

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

    /** Columns of the terminal that standard output is, or 0 when it is no terminal. */
    std::size_t terminalWidth() const;

private:
    void waitWritable() const;

    int m_descriptor;
};

} // namespace owbctl
#endif
