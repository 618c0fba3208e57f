#include "xml/Tokenizer.hpp"

#include "util/Ascii.hpp"
#include "xml/Entities.hpp"

namespace OpenWBEM {
namespace xml {
namespace {

// Whether "<" and this byte start markup other than a tag.
bool isMarkup(char second) {
    return second == '!' || second == '?';
}

} // namespace

Tokenizer::Tokenizer(io::Window& in, unsigned firstLine)
    : m_in(in)
    , m_line(firstLine)
    , m_counted(in.begin()) {}

Tag Tokenizer::next(std::string_view expected) {
    drop();
    if (m_isEmpty) {
        m_isEmpty = false;
        pop();
        return Tag::end;
    }
    while (toMarkup()) {
        const char second = m_in.begin()[1];
        if (isMarkup(second)) {
            skipMarkup();
        } else if (second == '/') {
            endTag();
            return Tag::end;
        } else {
            startTag(expected);
            return Tag::start;
        }
    }
    return Tag::none;
}

void Tokenizer::skip() {
    const std::size_t outside = m_depth - 1;
    while (m_depth != outside)
        next();
}

void Tokenizer::startTag(std::string_view expected) {
    if (m_depth == 0 && m_hasRoot)
        fail("Text after the document", visible().substr(0, 1));
    if (m_depth == maximumNesting)
        fail("Too deep", "elements are nested too deeply");
    m_isParsed = !consumeExpected(expected);
    if (m_isParsed)
        parseStartTag();
    m_hasRoot = true;
    push(m_name);
}

void Tokenizer::push(std::string_view name) {
    if (m_names.size() < m_namesSize + name.size())
        m_names.resize(2 * (m_namesSize + name.size()));
    name.copy(&m_names[m_namesSize], name.size());
    m_namesSize += name.size();
    m_nameSizes[m_depth++] = static_cast<std::uint16_t>(name.size());
}

void Tokenizer::endTag() {
    if (m_depth == 0)
        fail("Bad end tag", "no element is open");
    const std::size_t size = m_nameSizes[m_depth - 1];
    const std::string_view name(&m_names[m_namesSize - size], size);
    std::size_t at = 2 + size;
    require(at + 1);
    if (visible().substr(2, size) != name)
        fail("Bad end tag", std::string("expected ").append(name));
    while (ascii::isSpace(m_in.begin()[at]))
        require(++at + 1);
    if (m_in.begin()[at] != '>')
        fail("Bad end tag", std::string("expected ").append(name));
    m_size = at + 1;
    pop();
}

// Drops the text before the next "<" and makes "<" and the byte after it visible. False at the end.
bool Tokenizer::toMarkup() {
    if (m_in.size() > 1 && *m_in.begin() == '<') // the usual case
        return true;
    for (;;) {
        const std::size_t at = visible().find('<');
        const std::size_t size = at == std::string_view::npos ? m_in.size() : at;
        if (m_depth == 0)
            requireBlank(visible().substr(0, size));
        m_in.consume(size);
        if (m_in.size() > 1)
            return true;
        if (extend(m_in.size() + 1))
            continue;
        if (m_depth > 0 || m_in.size() > 0)
            fail("Premature end", "the document is truncated");
        return false;
    }
}

// Checks the text outside the document element. A byte order mark counts as blank.
void Tokenizer::requireBlank(std::string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (ascii::isSpace(c) || (!m_hasRoot && (c == '\xEF' || c == '\xBB' || c == '\xBF')))
            continue;
        m_in.consume(i);
        fail(m_hasRoot ? "Text after the document" : "Text before the document", text.substr(i, 1));
    }
}

void Tokenizer::skipMarkup() {
    if (startsWith("<?"))
        skipPast("?>");
    else if (startsWith("<!--"))
        skipPast("-->");
    else if (m_depth > 0 && startsWith("<![CDATA["))
        skipPast("]]>");
    else if (!m_hasRoot && startsWith("<!DOCTYPE"))
        skipDocumentType();
    else
        fail("Bad markup", "expected an element, a comment or an instruction");
}

// Drops everything up to the end of the mark.
void Tokenizer::skipPast(std::string_view mark) {
    m_in.consume(2); // "<?>" is not complete
    for (;;) {
        const std::size_t at = visible().find(mark);
        if (at != std::string_view::npos)
            return m_in.consume(at + mark.size());
        if (m_in.size() >= mark.size())
            m_in.consume(m_in.size() - mark.size() + 1);
        require(m_in.size() + 1);
    }
}

void Tokenizer::skipDocumentType() {
    char quote = '\0';
    std::size_t at = 1;
    for (char c = byteAt(at); quote || c != '>'; c = byteAt(++at)) {
        if (c == quote)
            quote = '\0';
        else if (!quote && (c == '"' || c == '\''))
            quote = c;
        else if (!quote && c == '[')
            fail("Bad DOCTYPE", "declarations are not accepted");
    }
    m_in.consume(at + 1);
}

std::string_view Tokenizer::text() {
    drop();
    if (m_isEmpty)
        return {};
    const std::size_t size = find("<");
    require(size + 2);
    const std::string_view piece = visible().substr(0, size);
    if (isMarkup(m_in.begin()[size + 1]) || piece.find('&') != std::string_view::npos)
        return mixedText();
    m_size = size;
    return piece;
}

// Text with references, CDATA sections or comments.
std::string_view Tokenizer::mixedText() {
    m_text.clear();
    for (;;) {
        const std::size_t size = find("<");
        appendText(visible().substr(0, size));
        m_in.consume(size);
        require(2);
        if (!isMarkup(m_in.begin()[1]))
            return m_text;
        if (!startsWith("<![CDATA[")) {
            skipMarkup();
            continue;
        }
        m_in.consume(9);
        const std::size_t section = find("]]>");
        appendText(visible().substr(0, section));
        m_in.consume(section + 3);
    }
}

void Tokenizer::appendText(std::string_view piece) {
    checkSize(m_text.size() + piece.size());
    const std::string_view bad = decode(piece, m_text);
    if (!bad.empty())
        fail("Bad reference", bad);
}

} // namespace xml
} // namespace OpenWBEM
