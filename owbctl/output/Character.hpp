#ifndef OWBCTL_OUTPUT_CHARACTER_HPP
#define OWBCTL_OUTPUT_CHARACTER_HPP

#include <cstddef>
#include <cstdint>

namespace owbctl {

/** Whether a character shows nothing itself, but may change what a terminal shows of others: control
 * characters, line and paragraph separators, and what Unicode says to ignore, such as marks of the writing
 * direction, characters of no width, and tags. */
bool isInvisible(std::uint32_t codePoint);

/** Columns of a terminal: 2 for characters that Unicode calls wide (Chinese, Japanese, Korean, most emoji), 0
 * for accents that join the character before them, else 1. Independent of the locale, unlike wcwidth(3).
 * Covers whole blocks, so rare characters may differ. */
std::size_t columnsOf(std::uint32_t codePoint);

} // namespace owbctl
#endif
