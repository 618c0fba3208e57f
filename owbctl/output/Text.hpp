#ifndef OWBCTL_OUTPUT_TEXT_HPP
#define OWBCTL_OUTPUT_TEXT_HPP

#include <cstddef>
#include <ctime>
#include <string>
#include <string_view>

namespace owbctl {

/**
 * `text` as a terminal may show it on one line: control characters (C0, DEL and C1) and bytes that are not
 * UTF-8 (RFC 3629) stand as \n, \r, \t or \xNN. All else, the backslash too, stays as it is.
 */
std::string printable(std::string_view text);

/** `text` as UTF-8: each byte sequence that is none (RFC 3629) is replaced by U+FFFD. */
std::string validUtf8(std::string_view text);

/** `text`, a printable one, of at most `columns`: a longer one ends early, with "…" in the last column. */
std::string cut(std::string_view text, std::size_t columns);

/** A moment as "2026-01-02T03:04:05Z" (RFC 3339). */
std::string utc(std::time_t time);

/** Columns that a printable text takes: its UTF-8 characters, each counted as one. */
std::size_t width(std::string_view text);

/**
 * Breaks `text` at blanks into lines of at most `columns`, the later ones indented by `indent` blanks; the
 * first is thought to stand behind `indent` columns. A longer word has a line of its own. columns 0: no
 * break.
 */
std::string wrapped(std::string_view text, std::size_t indent, std::size_t columns);

} // namespace owbctl
#endif
