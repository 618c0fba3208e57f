#ifndef OPENWBEM_XML_TOKENIZER_HPP_INCLUDED
#define OPENWBEM_XML_TOKENIZER_HPP_INCLUDED
#include "io/Window.hpp"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace OpenWBEM {
namespace xml {

/** Levels of elements within elements, the document element being the first. */
const std::size_t maximumNesting = 512;
/** Attributes of one element. */
const std::size_t maximumAttributes = 9;
/** Bytes of the name of an element or an attribute. */
const std::size_t maximumName = 1024;

enum class Tag { start, end, none };

/**
 * Walks through an XML document from tag to tag, as its bytes come in; holds no more of them than the token
 * it looks at, and calls nothing recursively. Does not validate: names may be any, text between elements that
 * nobody asks for is passed over, as are comments, processing instructions and a DOCTYPE. A DOCTYPE that
 * declares anything is refused, so there are no entities but those of XML itself.
 *
 * Throws XMLParseException, `Line <n>: <kind>: <detail>`, for what is not well-formed, for what is longer
 * than io::maximumText, and for what goes beyond the limits above. Throws as well what the window throws.
 */
class Tokenizer {
public:
    /** The window must outlive it. Lines are counted from firstLine on. */
    explicit Tokenizer(io::Window& in, unsigned firstLine = 1);

    /**
     * Passes to the next tag. `<A/>` is a start and an end. Start and end tags match; there is one document
     * element, and none comes when it has ended and nothing follows it, or when there is no document at all.
     *
     * @param expected tag() of an earlier tag, or empty: a start tag of these bytes is recognised, which is
     *        faster than parsing it
     */
    Tag next(std::string_view expected = {});
    /**
     * The text up to the next tag, references and CDATA sections decoded; to be called after a start tag.
     * Valid until the next call of a member that is not const.
     */
    std::string_view text();
    /** Passes to the end tag of the innermost element. */
    void skip();

    /** Name of the start tag that next() came to. Valid, as what follows, until the next call of a member
     * that is not const. */
    std::string_view name() const { return m_name; }
    /** All of it but the brackets and the slash of an empty element. */
    std::string_view tag() const { return m_tag; }
    /** Value of an attribute, references decoded; empty when there is no such attribute. Changes nothing that
     * the other members gave. */
    std::string_view attribute(std::string_view name);

    /** Line of the token. */
    unsigned line();
    /** Throws XMLParseException with the line of the token. Only the first bytes of the detail are told. */
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

    // Walking
    void startTag(std::string_view expected);
    void endTag();
    void push(std::string_view name);
    void pop() { m_namesSize -= m_nameSizes[--m_depth]; }
    bool toMarkup();
    void requireBlank(std::string_view text);
    void passOverMarkup();
    void passOver(std::string_view mark);
    void passOverDocumentType();
    std::string_view mixedText();
    void appendText(std::string_view piece);

    // Parsing one start tag
    bool recognise(std::string_view expected);
    void parseStartTag();
    std::size_t parseAttribute(std::size_t at);
    std::size_t parseName(std::size_t at, const char* kind);
    std::size_t pastBlanks(std::size_t at);
    void decodeAttributes();

    // Making bytes visible
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
    std::size_t m_size = 0; // bytes of the token at the front of the window, which is done with
    unsigned m_line;
    const char* m_counted; // lines are counted up to here

    std::string_view m_name;
    std::string_view m_tag;
    bool m_isParsed = true; // and not recognised only
    std::array<Attribute, maximumAttributes> m_attributes;
    std::size_t m_attributeCount = 0;
    std::string m_decoded; // the attribute values that hold references
    std::string m_text;

    std::string m_names; // begins with those of the open elements, one behind the other
    std::size_t m_namesSize = 0;
    std::array<std::uint16_t, maximumNesting> m_nameSizes;
    std::size_t m_depth = 0;
    bool m_isEmpty = false; // the start tag is an end tag as well
    bool m_hasRoot = false;
};

} // namespace xml
} // namespace OpenWBEM
#endif
