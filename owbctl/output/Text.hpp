#ifndef OWBCTL_OUTPUT_TEXT_HPP
#define OWBCTL_OUTPUT_TEXT_HPP

#include <cstddef>
#include <ctime>
#include <string>
#include <string_view>

namespace owbctl {

/**
 * `text` for one line of a terminal. Control characters (C0, DEL and C1) and bytes that are not UTF-8 (RFC
 * 3629) become \n, \r, \t or \xNN. Nothing else changes, not even a backslash.
 */
std::string printable(std::string_view text);

/** `text` as UTF-8: U+FFFD replaces each byte sequence that is not UTF-8 (RFC 3629). */
std::string validUtf8(std::string_view text);

/** A printable text of at most `columns`. A longer one is cut and gets "…" in the last column. */
std::string cut(std::string_view text, std::size_t columns);

/** A moment as "2026-01-02T03:04:05Z" (RFC 3339). */
std::string utc(std::time_t time);

/** Number of columns of a printable text: each UTF-8 character counts as one. */
std::size_t width(std::string_view text);

/**
 * Breaks `text` at blanks into lines of at most `columns`. The first line starts at column `indent`; the
 * others are indented by as many blanks. A longer word gets its own line. 0 columns mean no limit.
 */
std::string wrapped(std::string_view text, std::size_t indent, std::size_t columns);

} // namespace owbctl
#endif
