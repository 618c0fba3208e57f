#include "formats/Reference.hpp"

#include <algorithm>
#include <string_view>
#include <utility>

namespace owbctl {
namespace {

struct Path {
    /** All before the keys: namespace and class. */
    std::string prefix;
    /** Names and values, the values as they are written, without quotes. */
    std::vector<std::pair<std::string, std::string>> keys;
};

/** Reads Name="value" from the start of a text and removes it; nothing if the text begins with anything else.
 * A backslash escapes the character after it. */
std::optional<std::pair<std::string, std::string>> takeKey(std::string_view& text) {
    const std::size_t mark = text.find("=\"");
    if (mark == std::string_view::npos)
        return std::nullopt;
    std::string name(text.substr(0, mark));
    text.remove_prefix(mark + 2);
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\') {
            ++i;
        } else if (text[i] == '"') {
            std::string value(text.substr(0, i));
            text.remove_prefix(i + 1);
            return std::pair(std::move(name), std::move(value));
        }
    }
    return std::nullopt;
}

std::optional<Path> parsePath(std::string_view text) {
    const std::size_t point = text.find('.', text.find(':') + 1);
    if (point == std::string_view::npos)
        return std::nullopt;
    Path path{std::string(text.substr(0, point)), {}};
    text.remove_prefix(point);
    while (!text.empty()) {
        text.remove_prefix(1); // the point, then commas
        std::optional<std::pair<std::string, std::string>> key = takeKey(text);
        if (!key || (!text.empty() && text.front() != ','))
            return std::nullopt;
        path.keys.push_back(std::move(*key));
    }
    std::sort(path.keys.begin(), path.keys.end());
    return path;
}

/** The paths if they are of one class and have the same keys; else nothing. */
std::vector<Path> alike(const std::vector<std::string>& texts) {
    std::vector<Path> paths;
    for (const std::string& text : texts) {
        std::optional<Path> path = parsePath(text);
        if (!path || path->keys.empty())
            return {};
        paths.push_back(std::move(*path));
        const Path& first = paths.front();
        const bool hasSameKeys = std::equal(
            first.keys.begin(), first.keys.end(), paths.back().keys.begin(), paths.back().keys.end(),
            [](const auto& one, const auto& other) { return one.first == other.first; });
        if (paths.back().prefix != first.prefix || !hasSameKeys)
            return {};
    }
    return paths;
}

bool namesClass(const std::string& key) {
    constexpr std::string_view end = "CreationClassName";
    return key.size() >= end.size() && key.compare(key.size() - end.size(), end.size(), end) == 0;
}

/** The indexes of the keys to show. */
std::vector<std::size_t> shownKeys(const std::vector<Path>& paths) {
    std::vector<std::size_t> differing;
    std::vector<std::size_t> others;
    for (std::size_t i = 0; i < paths.front().keys.size(); ++i) {
        const auto differs = [&paths, i](const Path& path) {
            return path.keys[i].second != paths.front().keys[i].second;
        };
        if (std::any_of(paths.begin(), paths.end(), differs))
            differing.push_back(i);
        else if (!namesClass(paths.front().keys[i].first))
            others.push_back(i);
    }
    return differing.empty() ? others : differing;
}

std::string unescaped(const std::string& value) {
    std::string text;
    for (std::size_t i = 0; i < value.size(); ++i)
        text += value[i] == '\\' && i + 1 < value.size() ? value[++i] : value[i];
    return text;
}

std::string textOf(const Path& path, const std::vector<std::size_t>& shown) {
    if (shown.size() == 1)
        return unescaped(path.keys[shown.front()].second);
    std::string text;
    for (const std::size_t i : shown)
        text += (text.empty() ? "" : ",") + path.keys[i].first + "=\"" + path.keys[i].second + "\"";
    return text;
}

} // namespace

std::optional<ShortReferences> shortened(const std::vector<std::string>& paths) {
    const std::vector<Path> parsed = alike(paths);
    const std::vector<std::size_t> shown = parsed.empty() ? std::vector<std::size_t>() : shownKeys(parsed);
    if (shown.empty())
        return std::nullopt;
    ShortReferences result;
    if (shown.size() == 1)
        result.key = parsed.front().keys[shown.front()].first;
    for (const Path& path : parsed)
        result.texts.push_back(textOf(path, shown));
    return result;
}

} // namespace owbctl
