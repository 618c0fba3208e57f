#ifndef CIMOM_SYSTEM_TEXT_HPP_INCLUDED
#define CIMOM_SYSTEM_TEXT_HPP_INCLUDED
#include <charconv>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cimom {

/** A text without the blanks, tabs and line ends around it. */
std::string_view trimmed(std::string_view text);

/** The lines of a text that are not empty, without their ends. A last line needs no end. */
std::vector<std::string_view> lines(std::string_view text);

/** The words of a line, which blanks and tabs separate. */
std::vector<std::string_view> words(std::string_view line);

/** Whether a byte is a control character of ASCII. */
bool isControl(char c);

/** Whether there is a control character of ASCII in a text. */
bool holdsControls(std::string_view text);

/**
 * A text for one line of a log or of HTTP. It may hold what a client sent, whose line ends must not become
 * ours: control characters become blanks. Cut after 1024 bytes, since readers limit the length of a line.
 */
std::string onOneLine(std::string text);

/**
 * The same in ASCII, for a log or a reason phrase, whose readers need not know UTF-8: each byte from 0x80 on
 * becomes an escape sequence like \\xe4.
 */
std::string onOneAsciiLine(const std::string& text);

/** A text in UTF-8 cut after so many bytes at most, at the end of a character. */
std::string shortened(std::string text, std::size_t size);

/** The number that a text is; nothing when the text is anything else, or T cannot hold the number. */
template <class T>
std::optional<T> number(std::string_view text, int base = 10) {
    T value{};
    const char* const end = text.data() + text.size();
    const auto [next, error] = std::from_chars(text.data(), end, value, base);
    return error == std::errc() && next == end ? std::optional<T>(value) : std::nullopt;
}

} // namespace cimom
#endif
