#include "system/Text.hpp"

#include <algorithm>

namespace cimom {
namespace {

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

std::vector<std::string_view> lines(std::string_view text) {
    return split(text, "\n");
}

std::vector<std::string_view> words(std::string_view line) {
    return split(line, " \t\r\n");
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
