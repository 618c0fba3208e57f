#ifndef OWBCTL_ARGUMENTS_SUGGESTION_HPP
#define OWBCTL_ARGUMENTS_SUGGESTION_HPP

#include <string>
#include <vector>

namespace owbctl {

/** ", did you mean 'get'?" with the candidate that a word most likely means; empty if none is similar. The
 * case of letters does not count. */
std::string suggestion(const std::string& word, const std::vector<std::string>& candidates);

/** The name or the class of a group that a word most likely means, as suggestion() says it. */
std::string groupSuggestion(const std::string& word);

/** The property of one of the groups that a word most likely means, as suggestion() says it; "; see 'owbctl
 * groups'" if none is similar. */
std::string propertySuggestion(const std::string& word, const std::vector<long>& groups);

} // namespace owbctl
#endif
