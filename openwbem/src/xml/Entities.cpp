#include "xml/Entities.hpp"

#include <charconv>
#include <utility>

namespace OpenWBEM {
namespace xml {
namespace {

const unsigned highestCharacter = 127;    // of a numeric reference
const std::size_t reportedReference = 16; // bytes of an invalid reference in messages

constexpr std::pair<std::string_view, char> namedReferences[] = {
    {"&lt;", '<'}, {"&gt;", '>'}, {"&amp;", '&'}, {"&quot;", '"'}, {"&apos;", '\''},
};

bool startsWith(std::string_view text, std::string_view start) {
    return text.substr(0, start.size()) == start;
}

// Parses the numeric reference at the start of a text. Returns its size, or 0 if it is invalid.
std::size_t numericReference(std::string_view text, char& character) {
    const bool isHex = startsWith(text, "&#x");
    const char* const digits = text.data() + (isHex ? 3 : 2);
    const char* const end = text.data() + text.size();
    unsigned number = 0;
    const auto result = std::from_chars(digits, end, number, isHex ? 16 : 10);
    if (result.ec != std::errc() || result.ptr == end || *result.ptr != ';')
        return 0;
    if (number == 0 || number > highestCharacter)
        return 0;
    character = static_cast<char>(number);
    return static_cast<std::size_t>(result.ptr + 1 - text.data());
}

// Parses the named reference at the start of a text. Returns its size. Any other "&" is a character.
std::size_t namedReference(std::string_view text, char& character) {
    for (const auto& [reference, meaning] : namedReferences) {
        if (!startsWith(text, reference))
            continue;
        character = meaning;
        return reference.size();
    }
    character = '&';
    return 1;
}

const char* referenceFor(char c) {
    switch (c) {
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '&':
        return "&amp;";
    case '"':
        return "&quot;";
    case '\'':
        return "&apos;";
    case '\r':
        return "&#13;";
    case '\n':
        return "&#10;";
    case '\t':
        return "&#9;";
    default:
        return nullptr;
    }
}

} // namespace

std::string_view decode(std::string_view text, std::string& to) {
    for (;;) {
        const std::size_t at = text.find('&');
        to.append(text.substr(0, at));
        if (at == std::string_view::npos)
            return {};
        text.remove_prefix(at);
        char character = 0;
        const std::size_t size =
            startsWith(text, "&#") ? numericReference(text, character) : namedReference(text, character);
        if (size == 0)
            return text.substr(0, reportedReference);
        to += character;
        text.remove_prefix(size);
    }
}

void appendEscaped(std::string& to, std::string_view text) {
    std::size_t done = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char* const reference = referenceFor(text[i]);
        if (!reference)
            continue;
        to.append(text.substr(done, i - done));
        to += reference;
        done = i + 1;
    }
    to.append(text.substr(done));
}

} // namespace xml
} // namespace OpenWBEM
