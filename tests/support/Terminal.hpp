#ifndef TESTS_SUPPORT_TERMINAL_HPP
#define TESTS_SUPPORT_TERMINAL_HPP
#include <cstddef>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

namespace support {

/**
 * What a terminal shows of a stream of bytes: printable characters of one column, line feeds, carriage
 * returns and the sequences of ECMA-48 that move to the top (CSI H) and clear (CSI K, CSI J). All other
 * sequences are skipped. A line that is longer than the terminal continues on the next one. Lines never
 * scroll off.
 */
class Screen {
public:
    explicit Screen(std::size_t columns);

    void show(std::string_view bytes);

    /** All lines, each without trailing blanks and ended by a line feed. */
    std::string text() const;

private:
    void control(char final, std::string_view parameters);
    void put(std::string character);
    std::vector<std::string>& line();

    std::size_t m_columns;
    /** Characters, each in UTF-8. */
    std::vector<std::vector<std::string>> m_lines;
    std::size_t m_row = 0;
    std::size_t m_column = 0;
    /** Start of a sequence or character whose rest has not arrived. */
    std::string m_pending;
};

/** A program whose standard input, output and error are a terminal of a given size. The destructor kills it
 * if it still runs. */
class Terminal {
public:
    /** The first element of the command is the path of the program. Its variable TERM is "xterm". */
    Terminal(const std::vector<std::string>& command, unsigned short columns, unsigned short lines = 24);
    ~Terminal();
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    /** Sends keys to the program. */
    void type(std::string_view keys) const;
    void signal(int number) const;
    /** Waits until the screen shows a text. False if it does not within a minute, or the program ends before.
     */
    bool waitFor(const std::string& text);
    /** Waits for the end of the program. Returns the exit code as in ProgramResult. */
    int wait();

    /** What the terminal shows of the output that arrived so far. */
    std::string screen() const { return m_screen.text(); }
    /** All bytes of the output that arrived so far. */
    const std::string& bytes() const { return m_bytes; }

private:
    bool receive(int milliseconds);

    pid_t m_pid = -1;
    int m_descriptor = -1;
    Screen m_screen;
    std::string m_bytes;
};

} // namespace support
#endif
