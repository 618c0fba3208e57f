#ifndef OWBCTL_OUTPUT_TEXT_HPP
#define OWBCTL_OUTPUT_TEXT_HPP

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace owbctl {

/**
 * `text` for one line of a terminal. Invisible characters (see isInvisible()) and bytes that are not UTF-8
 * (RFC 3629) become \n, \r, \t or, byte by byte, \xNN. Nothing else changes, not even a backslash.
 */
std::string printable(std::string_view text);

/** `text` as UTF-8: U+FFFD replaces each byte sequence that is not UTF-8 (RFC 3629). */
std::string validUtf8(std::string_view text);

/** A printable text of at most `columns`. A longer one is cut and gets "…" in the last column. */
std::string cut(std::string_view text, std::size_t columns);

/** A moment as "2026-01-02T03:04:05.678Z" (RFC 3339). */
std::string utc(std::chrono::system_clock::time_point moment);

/** The milliseconds of a moment within its second, as ".678". */
std::string milliseconds(std::chrono::system_clock::time_point moment);

/** Number of columns of a printable text, see columnsOf(). */
std::size_t width(std::string_view text);

/**
 * Breaks a printable text at blanks into lines of at most `columns`, at least one line. A longer word gets
 * its own line and is broken after commas, if it has any. 0 columns mean no limit.
 */
std::vector<std::string> linesOf(std::string_view text, std::size_t columns);

/** Columns of the longest part of a text that linesOf() does not break. */
std::size_t longestPiece(std::string_view text);

/** The lines of `text` for a paragraph of `columns` that starts at column `indent`; all lines but the first
 * are indented by as many blanks. */
std::string wrapped(std::string_view text, std::size_t indent, std::size_t columns);

} // namespace owbctl
#endif
