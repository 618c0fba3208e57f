#include "arguments/Suggestion.hpp"

#include "agent/Catalogue.hpp"
#include "util/Ascii.hpp"

#include <algorithm>
#include <cstddef>

namespace owbctl {
namespace {

bool areEqual(char a, char b) {
    return ascii::toLower(a) == ascii::toLower(b);
}

/** Number of characters to insert, delete, replace or swap with the next one that make one word the other. */
std::size_t distance(const std::string& from, const std::string& to) {
    std::vector<std::size_t> beforeLast(to.size() + 1);
    std::vector<std::size_t> last(to.size() + 1);
    std::vector<std::size_t> current(to.size() + 1);
    for (std::size_t j = 0; j <= to.size(); ++j)
        current[j] = j;
    for (std::size_t i = 1; i <= from.size(); ++i) {
        beforeLast.swap(last);
        last.swap(current);
        current[0] = i;
        for (std::size_t j = 1; j <= to.size(); ++j) {
            const std::size_t replaced = last[j - 1] + (areEqual(from[i - 1], to[j - 1]) ? 0 : 1);
            current[j] = std::min({last[j] + 1, current[j - 1] + 1, replaced});
            const bool isSwapped =
                i > 1 && j > 1 && areEqual(from[i - 1], to[j - 2]) && areEqual(from[i - 2], to[j - 1]);
            if (isSwapped)
                current[j] = std::min(current[j], beforeLast[j - 2] + 1);
        }
    }
    return current[to.size()];
}

/** Whether a word may be the start of a candidate that was not typed to its end. */
bool isStart(const std::string& word, const std::string& candidate) {
    constexpr std::size_t shortest = 3;
    return word.size() >= shortest && candidate.compare(0, word.size(), word) == 0;
}

} // namespace

std::string suggestion(const std::string& word, const std::vector<std::string>& candidates) {
    const std::string* best = nullptr;
    // One error in three characters: more makes any short word similar to any other.
    std::size_t least = word.size() / 3 + 1;
    for (const std::string& candidate : candidates) {
        const std::size_t errors = isStart(word, candidate) ? 0 : distance(word, candidate);
        if (errors < least && errors < candidate.size()) {
            best = &candidate;
            least = errors;
        }
    }
    return best == nullptr ? std::string() : ", did you mean '" + *best + "'?";
}

std::string groupSuggestion(const std::string& word) {
    std::vector<std::string> names;
    for (const long group : agent::everyGroup()) {
        names.emplace_back(agent::classOf(group).shortName);
        names.emplace_back(agent::classOf(group).name);
    }
    return suggestion(word, names);
}

std::string propertySuggestion(const std::string& word, const std::vector<long>& groups) {
    std::vector<std::string> names;
    for (const long group : groups) {
        for (const agent::Attribute* attribute : agent::attributesOf(group))
            names.emplace_back(attribute->property);
    }
    const std::string found = suggestion(word, names);
    return found.empty() ? "; see 'owbctl groups'" : found;
}

} // namespace owbctl
