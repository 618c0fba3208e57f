#ifndef OWBCTL_TEXT_HPP
#define OWBCTL_TEXT_HPP

#include <cstddef>
#include <string>
#include <string_view>

namespace owbctl {

/**
 * `text` as a terminal may show it on one line: control characters (C0, DEL and C1) and bytes that are not
 * UTF-8 (RFC 3629) stand as \n, \r, \t or \xNN. All else, the backslash too, stays as it is.
 */
std::string printable(std::string_view text);

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
