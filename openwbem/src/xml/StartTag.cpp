// Parsing of start tags, and the tokenizer's access to its window.
#include "OW_XMLParseException.hpp"
#include "io/Limits.hpp"
#include "xml/Entities.hpp"
#include "xml/Tokenizer.hpp"

#include <algorithm>

namespace OpenWBEM {
namespace xml {
namespace {

const std::size_t reportedDetail = 80; // bytes of a peer's text in messages

// Classes of bytes (XML 1.0, NameStartChar and NameChar; all bytes above 127 count as letters).
struct Bytes {
    bool isBlank[256] = {};
    bool startsName[256] = {};
    bool isInName[256] = {};

    constexpr Bytes() {
        for (const char c : {' ', '\t', '\r', '\n'})
            isBlank[static_cast<unsigned char>(c)] = true;
        for (unsigned c = 0; c < 256; ++c) {
            startsName[c] =
                (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' || c == ':' || c >= 128;
            isInName[c] = startsName[c] || (c >= '0' && c <= '9') || c == '.' || c == '-';
        }
    }
};
constexpr Bytes bytes;

bool is(const bool (&kind)[256], char c) {
    return kind[static_cast<unsigned char>(c)];
}

} // namespace

// Consumes the expected tag, if it is next and has neither a slash nor a blank before its ">".
bool Tokenizer::consumeExpected(std::string_view expected) {
    const std::size_t end = 1 + expected.size();
    if (expected.empty() || m_in.size() <= end || m_in.begin()[end] != '>' ||
        visible().substr(1, expected.size()) != expected)
        return false;
    m_size = end + 1;
    m_tag = visible().substr(1, expected.size());
    std::size_t nameSize = 1;
    while (is(bytes.isInName, m_in.begin()[1 + nameSize]))
        ++nameSize;
    m_name = m_tag.substr(0, nameSize);
    return true;
}

// Offsets, not pointers: bytes may move until the whole tag is visible.
void Tokenizer::parseStartTag() {
    std::size_t at = parseName(1, "Bad tag name");
    const std::size_t nameSize = at - 1;
    m_attributeCount = 0;
    while (byteAt(at) != '>' && byteAt(at) != '/') {
        const std::size_t gap = at;
        at = afterBlanks(at);
        if (byteAt(at) == '>' || byteAt(at) == '/')
            break;
        if (at == gap)
            fail("Bad tag", visible().substr(at, 1));
        at = parseAttribute(at);
    }
    const std::size_t tagSize = at - 1;
    m_isEmpty = byteAt(at) == '/';
    if (m_isEmpty && byteAt(++at) != '>')
        fail("Bad tag", "Expected > after /");
    m_size = at + 1;
    checkSize(m_size);
    m_name = visible().substr(1, nameSize);
    m_tag = visible().substr(1, tagSize);
    decodeAttributes();
}

// Returns the offset after the attribute.
std::size_t Tokenizer::parseAttribute(std::size_t at) {
    Attribute attribute;
    attribute.nameAt = at;
    at = parseName(at, "Bad attribute name");
    attribute.nameSize = at - attribute.nameAt;
    at = afterBlanks(at);
    if (byteAt(at) != '=')
        fail("Bad attribute", "Expected =");
    at = afterBlanks(at + 1);
    const char quote = byteAt(at);
    if (quote != '"' && quote != '\'')
        fail("Bad attribute value", "Expected a quote");
    attribute.valueAt = at + 1;
    at = find(std::string_view(&quote, 1), attribute.valueAt);
    attribute.valueSize = at - attribute.valueAt;
    if (m_attributeCount == maximumAttributes)
        fail("Too many attributes", "more than " + std::to_string(maximumAttributes));
    m_attributes[m_attributeCount++] = attribute;
    return at + 1;
}

// Returns the offset after the name.
std::size_t Tokenizer::parseName(std::size_t at, const char* kind) {
    if (!is(bytes.startsName, byteAt(at)))
        fail(kind, std::string("Expected alpha or _; got ") + byteAt(at));
    const std::size_t begin = at;
    do {
        require(at + 1);
        const char* const found =
            std::find_if_not(m_in.begin() + at, m_in.end(), [](char c) { return is(bytes.isInName, c); });
        at = static_cast<std::size_t>(found - m_in.begin());
        if (at - begin > maximumName)
            fail(kind, "too long");
    } while (at == m_in.size());
    return at;
}

std::size_t Tokenizer::afterBlanks(std::size_t at) {
    while (is(bytes.isBlank, byteAt(at)))
        ++at;
    return at;
}

// The whole tag must be visible.
void Tokenizer::decodeAttributes() {
    m_decoded.clear();
    for (std::size_t i = 0; i < m_attributeCount; ++i) {
        Attribute& attribute = m_attributes[i];
        attribute.name = visible().substr(attribute.nameAt, attribute.nameSize);
        attribute.value = visible().substr(attribute.valueAt, attribute.valueSize);
        if (attribute.value.find('&') == std::string_view::npos)
            continue;
        if (m_decoded.empty()) // no reallocation: earlier values are views
            m_decoded.reserve(m_size);
        const std::size_t begin = m_decoded.size();
        const std::string_view bad = decode(attribute.value, m_decoded);
        if (!bad.empty())
            fail("Bad reference", bad);
        attribute.value = std::string_view(m_decoded).substr(begin);
    }
}

std::string_view Tokenizer::attribute(std::string_view name) {
    if (!m_isParsed)
        parseStartTag();
    m_isParsed = true;
    const auto end = m_attributes.begin() + static_cast<std::ptrdiff_t>(m_attributeCount);
    const auto found = std::find_if(m_attributes.begin(), end,
                                    [name](const Attribute& attribute) { return attribute.name == name; });
    return found == end ? std::string_view() : found->value;
}

// Makes size bytes visible; false if the input ends before. May move the visible bytes.
bool Tokenizer::extend(std::size_t size) {
    checkSize(size);
    countLines();
    const bool isVisible = m_in.need(size);
    m_counted = m_in.begin();
    return isVisible;
}

void Tokenizer::require(std::size_t size) {
    if (m_in.size() < size && !extend(size))
        fail("Premature end", "the document is truncated");
}

// Offset of a mark at or after from. Makes it, and all bytes before it, visible.
std::size_t Tokenizer::find(std::string_view mark, std::size_t from) {
    for (;;) {
        const std::size_t at = mark.size() == 1 ? visible().find(mark[0], from) : visible().find(mark, from);
        if (at != std::string_view::npos) {
            checkSize(at);
            return at;
        }
        from = std::max(from, m_in.size() - std::min(m_in.size(), mark.size() - 1));
        require(m_in.size() + 1);
    }
}

// Whether the mark is next. Fails at the end of the input.
bool Tokenizer::startsWith(std::string_view mark) {
    for (std::size_t i = 0; i < mark.size(); ++i) {
        require(i + 1);
        if (m_in.begin()[i] != mark[i])
            return false;
    }
    return true;
}

void Tokenizer::checkSize(std::size_t size) {
    if (size > io::maximumText)
        fail("Too long", "text or tag");
}

void Tokenizer::countLines() {
    const std::string_view consumed(m_counted, static_cast<std::size_t>(m_in.begin() - m_counted));
    for (std::size_t at = consumed.find('\n'); at != std::string_view::npos; at = consumed.find('\n', at + 1))
        ++m_line;
    m_counted = m_in.begin();
}

unsigned Tokenizer::line() {
    countLines();
    return m_line;
}

void Tokenizer::fail(const char* kind, std::string_view detail) {
    const std::string message =
        "Line " + std::to_string(line()) + ": " + kind + ": " + std::string(detail.substr(0, reportedDetail));
    OW_THROW(XMLParseException, message.c_str());
}

} // namespace xml
} // namespace OpenWBEM
