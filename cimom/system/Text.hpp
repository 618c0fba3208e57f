#ifndef CIMOM_SYSTEM_TEXT_HPP_INCLUDED
#define CIMOM_SYSTEM_TEXT_HPP_INCLUDED
#include "util/Number.hpp"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cimom {

using util::number;

/** The lines of a text that are not empty, without their line ends. The last line needs no line end. */
std::vector<std::string_view> lines(std::string_view text);

/** The words of a line, separated by white space. */
std::vector<std::string_view> words(std::string_view line);

/** A text in UTF-8, cut after `size` bytes at most, at the end of a character. */
std::string shortened(std::string text, std::size_t size);

} // namespace cimom
#endif
