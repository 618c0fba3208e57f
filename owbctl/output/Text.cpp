#include "output/Text.hpp"

#include "output/Character.hpp"
#include "util/Utf8.hpp"

#include <algorithm>
#include <cstdio>
#include <ctime>

namespace owbctl {
namespace {

std::string escaped(std::string_view bytes) {
    if (bytes == "\n")
        return "\\n";
    if (bytes == "\r")
        return "\\r";
    if (bytes == "\t")
        return "\\t";
    std::string result;
    for (const char byte : bytes) {
        char code[5];
        std::snprintf(code, sizeof code, "\\x%02x", static_cast<unsigned char>(byte));
        result += code;
    }
    return result;
}

/** The parts of a word, each but the last ended by a comma. */
std::vector<std::string_view> piecesOf(std::string_view word) {
    std::vector<std::string_view> pieces;
    while (!word.empty()) {
        const std::size_t length = std::min(word.find(','), word.size() - 1) + 1;
        pieces.push_back(word.substr(0, length));
        word.remove_prefix(length);
    }
    return pieces;
}

} // namespace

std::string printable(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const utf8::Character character = utf8::firstCharacter(text);
        const std::string_view bytes = text.substr(0, std::max<std::size_t>(character.length, 1));
        if (character.length == 0 || isInvisible(character.codePoint))
            result += escaped(bytes);
        else
            result += bytes;
        text.remove_prefix(bytes.size());
    }
    return result;
}

std::string utc(std::chrono::system_clock::time_point moment) {
    const std::time_t time = std::chrono::system_clock::to_time_t(moment);
    char text[32];
    std::tm parts{};
    std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S", gmtime_r(&time, &parts));
    return text + milliseconds(moment) + "Z";
}

std::string milliseconds(std::chrono::system_clock::time_point moment) {
    const auto whole = std::chrono::floor<std::chrono::seconds>(moment);
    const auto rest = std::chrono::floor<std::chrono::milliseconds>(moment - whole);
    char text[8];
    std::snprintf(text, sizeof text, ".%03d", static_cast<int>(rest.count()));
    return text;
}

std::size_t width(std::string_view text) {
    std::size_t columns = 0;
    while (!text.empty()) {
        const utf8::Character character = utf8::firstCharacter(text);
        columns += columnsOf(character.codePoint);
        text.remove_prefix(std::max<std::size_t>(character.length, 1));
    }
    return columns;
}

std::string validUtf8(std::string_view text) {
    return utf8::valid(text);
}

std::string cut(std::string_view text, std::size_t columns) {
    if (width(text) <= columns)
        return std::string(text);
    std::size_t end = 0;
    for (std::size_t used = 1; end < text.size();) { // 1 for the mark
        const utf8::Character next = utf8::firstCharacter(text.substr(end));
        used += columnsOf(next.codePoint);
        if (used > columns)
            break;
        end += std::max<std::size_t>(next.length, 1);
    }
    return std::string(text.substr(0, end)) + (columns > 0 ? "…" : "");
}

std::vector<std::string> linesOf(std::string_view text, std::size_t columns) {
    std::vector<std::string> lines(1);
    const auto fits = [&lines, columns](std::size_t more) {
        return columns == 0 || lines.back().empty() || width(lines.back()) + more <= columns;
    };
    for (bool isFirst = true; !text.empty(); isFirst = false) {
        const std::string_view word = text.substr(0, text.find(' '));
        if (!fits(1 + width(word)))
            lines.emplace_back();
        else if (!isFirst)
            lines.back() += ' ';
        for (const std::string_view piece : piecesOf(word)) {
            if (!fits(width(piece)))
                lines.emplace_back();
            lines.back() += piece;
        }
        text.remove_prefix(std::min(text.size(), word.size() + 1));
    }
    return lines;
}

std::size_t longestPiece(std::string_view text) {
    std::size_t longest = 0;
    while (!text.empty()) {
        const std::string_view word = text.substr(0, text.find(' '));
        for (const std::string_view piece : piecesOf(word))
            longest = std::max(longest, width(piece));
        text.remove_prefix(std::min(text.size(), word.size() + 1));
    }
    return longest;
}

std::string wrapped(std::string_view text, std::size_t indent, std::size_t columns) {
    const std::size_t available = columns == 0 ? 0 : columns > indent ? columns - indent : 1;
    std::string result;
    for (const std::string& line : linesOf(text, available))
        result += (result.empty() ? "" : "\n" + std::string(indent, ' ')) + line;
    return result;
}

} // namespace owbctl
