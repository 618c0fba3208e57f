#ifndef TESTS_SUPPORT_PATTERN_HPP
#define TESTS_SUPPORT_PATTERN_HPP
#include <string>

// Regular expressions, as std::regex has them. A test that includes <regex> itself compiles for seconds
// longer.
namespace support {

/** Whether a whole text matches a pattern. */
bool matches(const std::string& text, const std::string& pattern);

/** The text with each match of a pattern replaced; "$1" in the replacement is the first group of the match.
 */
std::string replacedAll(const std::string& text, const std::string& pattern, const std::string& replacement);

} // namespace support
#endif
