#include "system/Text.hpp"

#include <algorithm>

namespace cimom {
namespace {

const char* const blanks = " \t\r\n";
const std::size_t longestLine = 1024;

std::vector<std::string_view> split(std::string_view text, const char* separators) {
    std::vector<std::string_view> parts;
    std::size_t begin = text.find_first_not_of(separators);
    while (begin != std::string_view::npos) {
        const std::size_t end = std::min(text.find_first_of(separators, begin), text.size());
        parts.push_back(text.substr(begin, end - begin));
        begin = text.find_first_not_of(separators, end);
    }
    return parts;
}

} // namespace

std::string_view trimmed(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(blanks);
    if (begin == std::string_view::npos)
        return {};
    return text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

std::vector<std::string_view> lines(std::string_view text) {
    return split(text, "\n");
}

std::vector<std::string_view> words(std::string_view line) {
    return split(line, blanks);
}

bool isControl(char c) {
    return static_cast<unsigned char>(c) < ' ' || c == '\x7f';
}

bool holdsControls(std::string_view text) {
    return std::any_of(text.begin(), text.end(), isControl);
}

std::string onOneLine(std::string text) {
    text.resize(std::min(text.size(), longestLine));
    std::replace_if(text.begin(), text.end(), isControl, ' ');
    return text;
}

std::string onOneAsciiLine(const std::string& text) {
    const char* const digits = "0123456789abcdef";
    std::string line;
    for (const char c : onOneLine(text)) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80)
            line += c;
        else
            line.append("\\x").append({digits[byte / 16], digits[byte % 16]});
    }
    line.resize(std::min(line.size(), longestLine));
    return line;
}

std::string shortened(std::string text, std::size_t size) {
    if (text.size() <= size)
        return text;
    const auto continuesCharacter = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; };
    while (size > 0 && continuesCharacter(text[size]))
        --size;
    text.resize(size);
    return text;
}

} // namespace cimom
