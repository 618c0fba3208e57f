#ifndef OPENWBEM_XML_TOKENIZER_HPP_INCLUDED
#define OPENWBEM_XML_TOKENIZER_HPP_INCLUDED
#include "io/Window.hpp"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace OpenWBEM {
namespace xml {

/** Nesting depth of elements; the document element has depth 1. */
const std::size_t maximumNesting = 512;
/** Attributes of one element. */
const std::size_t maximumAttributes = 9;
/** Bytes of the name of an element or an attribute. */
const std::size_t maximumName = 1024;

enum class Tag { start, end, none };

/**
 * Reads an XML document tag by tag, as its bytes arrive. Buffers only the current token; not recursive. Does
 * not validate: accepts all names, and ignores comments, processing instructions, a DOCTYPE, and text that
 * the caller does not read. A DOCTYPE with declarations is an error, so only the predefined entities exist.
 *
 * Throws XMLParseException, `Line <n>: <kind>: <detail>`, if the document is malformed, a token exceeds
 * io::maximumText, or another limit above is exceeded; and the exceptions of the window.
 */
class Tokenizer {
public:
    /** The window must outlive the tokenizer. Lines count from firstLine. */
    explicit Tokenizer(io::Window& in, unsigned firstLine = 1);

    /**
     * Advances to the next tag. `<A/>` counts as a start and an end. Checks that start and end tags match,
     * and that there is one document element. Returns Tag::none at the end of the document, and for an empty
     * input.
     *
     * @param expected tag() of an earlier tag, or empty; a start tag of exactly these bytes is not parsed
     * again
     */
    Tag next(std::string_view expected = {});
    /**
     * The text between a start tag and the next tag, with references and CDATA sections decoded. Valid until
     * the next call of a non-const member.
     */
    std::string_view text();
    /** Advances to the end tag of the innermost element. */
    void skip();

    /** Name in the current start tag. Valid, like tag(), until the next call of a non-const member. */
    std::string_view name() const { return m_name; }
    /** The current start tag without brackets and without the slash of an empty element. */
    std::string_view tag() const { return m_tag; }
    /** Value of an attribute, with references decoded; empty if there is none. Keeps earlier results valid.
     */
    std::string_view attribute(std::string_view name);

    /** Line of the current token. */
    unsigned line();
    /** Throws XMLParseException with the line of the current token. The message contains the first bytes of
     * the detail. */
    [[noreturn]] void fail(const char* kind, std::string_view detail);

private:
    struct Attribute {
        std::size_t nameAt;
        std::size_t nameSize;
        std::size_t valueAt;
        std::size_t valueSize;
        std::string_view name;
        std::string_view value;
    };

    // Tokens
    void startTag(std::string_view expected);
    void endTag();
    void push(std::string_view name);
    void pop() { m_namesSize -= m_nameSizes[--m_depth]; }
    bool toMarkup();
    void requireBlank(std::string_view text);
    void skipMarkup();
    void skipPast(std::string_view mark);
    void skipDocumentType();
    std::string_view mixedText();
    void appendText(std::string_view piece);

    // Parsing one start tag
    bool consumeExpected(std::string_view expected);
    void parseStartTag();
    std::size_t parseAttribute(std::size_t at);
    std::size_t parseName(std::size_t at, const char* kind);
    std::size_t afterBlanks(std::size_t at);
    void decodeAttributes();

    // Access to the window
    std::string_view visible() const { return std::string_view(m_in.begin(), m_in.size()); }
    bool extend(std::size_t size);
    void require(std::size_t size);
    char byteAt(std::size_t at) {
        if (at >= m_in.size())
            require(at + 1);
        return m_in.begin()[at];
    }
    std::size_t find(std::string_view mark, std::size_t from = 0);
    bool startsWith(std::string_view mark);
    void drop() {
        m_in.consume(m_size);
        m_size = 0;
    }
    void checkSize(std::size_t size);
    void countLines();

    io::Window& m_in;
    std::size_t m_size = 0; // bytes of the current token at the front of the window
    unsigned m_line;
    const char* m_counted; // end of the bytes counted in m_line

    std::string_view m_name;
    std::string_view m_tag;
    bool m_isParsed = true; // false for an expected tag
    std::array<Attribute, maximumAttributes> m_attributes;
    std::size_t m_attributeCount = 0;
    std::string m_decoded; // attribute values with references
    std::string m_text;

    std::string m_names; // concatenated names of the open elements, and unused bytes
    std::size_t m_namesSize = 0;
    std::array<std::uint16_t, maximumNesting> m_nameSizes;
    std::size_t m_depth = 0;
    bool m_isEmpty = false; // the current start tag is also an end tag
    bool m_hasRoot = false;
};

} // namespace xml
} // namespace OpenWBEM
#endif
