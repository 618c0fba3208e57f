// The XML tokenizer with hand-written documents, valid and malformed.
#include "Xml.hpp"

#include "io/Limits.hpp"
#include "io/Window.hpp"
#include "xml/Tokenizer.hpp"

#include <gtest/gtest.h>
#include <string>
#include <utility>

namespace {

using namespace OpenWBEM;
using xml::Tag;
using xml::Tokenizer;
using xml_test::repeated;

// The tags of a document, and the texts of elements named T.
std::string walk(io::Window& window) {
    Tokenizer in(window);
    std::string seen;
    for (Tag tag = in.next(); tag != Tag::none; tag = in.next()) {
        seen += tag == Tag::end ? ")" : "(" + std::string(in.name());
        if (tag == Tag::start && in.name() == "T")
            seen.append("=").append(in.text());
    }
    return seen;
}

std::string walk(const std::string& document) {
    io::Window window(document.data(), document.size());
    return walk(window);
}

std::string failureOfWalk(const std::string& document) {
    return failureOf([&document] { walk(document); });
}

std::string textOf(const std::string& content) {
    const std::string seen = walk("<T>" + content + "</T>");
    return seen.substr(3, seen.size() - 4);
}

std::string attributeOf(const std::string& tag, const char* name = "a") {
    const std::string document = tag;
    io::Window window(document.data(), document.size());
    Tokenizer in(window);
    in.next();
    return std::string(in.attribute(name));
}

TEST(Tokenizer, AdvancesFromTagToTag) {
    EXPECT_EQ("(A(B)(B(C)))", walk("<A><B></B><B><C ></C ></B></A>"));
}

TEST(Tokenizer, ReportsAnEmptyElementAsAStartAndAnEnd) {
    EXPECT_EQ("(A(B)(T=))", walk("<A><B a='1'/><T/></A>"));
}

TEST(Tokenizer, FindsNoTagInAnEmptyDocument) {
    EXPECT_EQ("", walk(""));
    EXPECT_EQ("", walk(" \r\n\t<?xml version=\"1.0\"?><!-- nothing -->\n"));
}

TEST(Tokenizer, IgnoresMarkupThatIsNotAnElement) {
    EXPECT_EQ("(A(B))", walk("\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"utf-8\" ?>\n"
                             "<!DOCTYPE CIM SYSTEM \"a>b\" PUBLIC 'c>d'>\n<!-- <X> -- -> -->\n<?x <Y> ?>"
                             "<A>\r\n\t<!-- --><B><![CDATA[<Z>]]></B> stray </A>\n<!-- -->\n"));
}

TEST(Tokenizer, SkipsTheRestOfAnElement) {
    const std::string document = "<A><B x='1'><C><B/></C>t</B><D/></A>";
    io::Window window(document.data(), document.size());
    Tokenizer in(window);
    in.next();
    in.next();
    in.skip();
    EXPECT_EQ(Tag::start, in.next());
    EXPECT_EQ("D", in.name());
    in.skip();
    EXPECT_EQ(Tag::end, in.next());
    EXPECT_EQ(Tag::none, in.next());
}

TEST(Tokenizer, ReturnsPlainTextUnchanged) {
    EXPECT_EQ("  a > b ' \" \xC3\xA9\r\n ", textOf("  a > b ' \" \xC3\xA9\r\n "));
    EXPECT_EQ("", textOf(""));
}

TEST(Tokenizer, DecodesThePredefinedEntities) {
    EXPECT_EQ("<>&\"'", textOf("&lt;&gt;&amp;&quot;&apos;"));
    EXPECT_EQ("a&lt;b", textOf("a&amp;lt;b"));
}

TEST(Tokenizer, DecodesNumericReferencesUpTo127) {
    EXPECT_EQ("A\n\r\t\x7F", textOf("&#65;&#10;&#13;&#9;&#127;"));
    EXPECT_EQ("AJj", textOf("&#x41;&#x4a;&#x6A;"));
}

TEST(Tokenizer, RejectsOtherNumericReferences) {
    for (const char* reference :
         {"&#128;", "&#xe9;", "&#0;", "&#;", "&#x;", "&#-1;", "&#a;", "&#65", "&#X41;"})
        EXPECT_EQ(std::string("XMLParseException: Line 1: Bad reference: ") + reference,
                  failureOfWalk(std::string("<T>") + reference + "</T>"));
}

TEST(Tokenizer, CopiesUnknownReferences) {
    EXPECT_EQ("&nbsp; & &&lt", textOf("&nbsp; & &&lt"));
}

TEST(Tokenizer, DecodesReferencesInCdataSectionsToo) {
    EXPECT_EQ("a<b>]]c<&d", textOf("a<![CDATA[<b>]]]]>c<![CDATA[&lt;&amp;]]><!-- no -->d"));
}

TEST(Tokenizer, ReturnsAttributes) {
    EXPECT_EQ("1", attributeOf("<A b='2' a=\"1\"/>"));
    EXPECT_EQ("it's > that", attributeOf("<A \n a = \"it's > that\" >"));
    EXPECT_EQ("", attributeOf("<A b='2'/>"));
    EXPECT_EQ("", attributeOf("<A a=''/>"));
}

TEST(Tokenizer, DecodesEveryAttribute) {
    const std::string tag = "<A a='&lt;1&gt;' b='" + repeated("&amp;", 100) + "' c='&#x41;'/>";
    EXPECT_EQ("<1>", attributeOf(tag));
    EXPECT_EQ(std::string(100, '&'), attributeOf(tag, "b"));
    EXPECT_EQ("A", attributeOf(tag, "c"));
}

TEST(Tokenizer, ReturnsTheBytesOfAStartTag) {
    const std::string document = "<A b='&lt;' ><C/></A>";
    io::Window window(document.data(), document.size());
    Tokenizer in(window);
    in.next();
    EXPECT_EQ("A b='&lt;' ", in.tag());
    in.next();
    EXPECT_EQ("C", in.tag());
}

// Name, bytes and attribute "a" of the second start tag, read with the bytes of the first as the expected
// tag.
std::string readExpected(const std::string& first, const std::string& second, std::size_t piece) {
    PieceSource source("<A>" + first + "</T>" + second + "</T></A>", piece);
    io::Window window(source);
    Tokenizer in(window);
    in.next();
    in.next();
    const std::string expected(in.tag());
    in.next();
    in.next(expected);
    std::string seen = std::string(in.name()) + '|' + std::string(in.tag()) + '|';
    seen += in.attribute("a");
    in.skip();
    EXPECT_EQ(Tag::end, in.next());
    EXPECT_EQ(Tag::none, in.next());
    return seen;
}

TEST(Tokenizer, ReadsAnExpectedTagLikeAnyOther) {
    for (const std::size_t piece : {1U, 7U, 4096U}) {
        EXPECT_EQ("T|T a='1' b='>'|1", readExpected("<T a='1' b='>'>", "<T a='1' b='>'>", piece));
        EXPECT_EQ("T|T a='&lt;' |<", readExpected("<T a='&lt;' >", "<T a='&lt;' >", piece));
        EXPECT_EQ("T|T|", readExpected("<T>", "<T>", piece));
        EXPECT_EQ("T|T a='1' b='2'|1", readExpected("<T a='1'>", "<T a='1' b='2'>", piece));
        EXPECT_EQ("T|T a='2'|2", readExpected("<T a='1'>", "<T a='2'>", piece));
        EXPECT_EQ("T|T a='1'|1", readExpected("<T a='1' b='2'>", "<T a='1'>", piece));
    }
}

TEST(Tokenizer, ChecksTheEndTagOfAnExpectedTag) {
    const std::string document = "<A><T a='1'></T><T a='1'></U></A>";
    io::Window window(document.data(), document.size());
    Tokenizer in(window);
    for (int tags = 0; tags < 3; ++tags)
        in.next();
    in.next("T a='1'");
    EXPECT_EQ("XMLParseException: Line 1: Bad end tag: expected T", failureOf([&in] { in.next(); }));
}

TEST(Tokenizer, DoesNotDependOnTheSizesOfReads) {
    const std::string document =
        "<?xml version='1.0'?><!DOCTYPE CIM><A a='x>y' b=\"&lt;\"><!-- -- --><T>a&amp;b<![CDATA[]]]]></T >"
        "<B ><T/><T>plain</T></B>\n</A>\n<!-- end -->";
    const std::string expected = walk(document);
    EXPECT_EQ("(A(T=a&b]])(B(T=)(T=plain)))", expected);
    for (std::size_t pieceSize = 1; pieceSize < 20; ++pieceSize) {
        PieceSource source(document, pieceSize);
        io::Window window(source);
        EXPECT_EQ(expected, walk(window)) << pieceSize;
    }
}

TEST(Tokenizer, KeepsTheAttributesOfATagThatArrivesInPieces) {
    PieceSource source("<A a='&lt;1' b='2' c='&gt;3' />", 1);
    io::Window window(source);
    Tokenizer in(window);
    in.next();
    EXPECT_EQ("<1", in.attribute("a"));
    EXPECT_EQ("2", in.attribute("b"));
    EXPECT_EQ(">3", in.attribute("c"));
}

TEST(Tokenizer, RejectsMalformedDocuments) {
    const std::pair<const char*, const char*> examples[] = {
        {"text", "Line 1: Text before the document: t"},
        {"<A></A>\n x", "Line 2: Text after the document: x"},
        {"<A/><B/>", "Line 1: Text after the document: <"},
        {"<A/><?x?></A>", "Line 1: Bad end tag: no element is open"},
        {"<A><B></A></B>", "Line 1: Bad end tag: expected B"},
        {"<A><BC></B  ></A>", "Line 1: Bad end tag: expected BC"},
        {"<A></A B>", "Line 1: Bad end tag: expected A"},
        {"<A></AB>", "Line 1: Bad end tag: expected A"},
        {"<1/>", "Line 1: Bad tag name: Expected alpha or _; got 1"},
        {"< A/>", "Line 1: Bad tag name: Expected alpha or _; got  "},
        {"<A 1='2'/>", "Line 1: Bad attribute name: Expected alpha or _; got 1"},
        {"<A <B/>", "Line 1: Bad attribute name: Expected alpha or _; got <"},
        {"<A a='1'b='2'/>", "Line 1: Bad tag: b"},
        {"<A=1/>", "Line 1: Bad tag: ="},
        {"<A a/>", "Line 1: Bad attribute: Expected ="},
        {"<A a=1/>", "Line 1: Bad attribute value: Expected a quote"},
        {"<A / >", "Line 1: Bad tag: Expected > after /"},
        {"<A a='&#0;'/>", "Line 1: Bad reference: &#0;"},
        {"<A><!X></A>", "Line 1: Bad markup: expected an element, a comment or an instruction"},
        {"<![CDATA[x]]><A/>", "Line 1: Bad markup: expected an element, a comment or an instruction"},
        {"<A/><!DOCTYPE CIM>", "Line 1: Bad markup: expected an element, a comment or an instruction"},
        {"\n<A>\n<B>\n\n</A>", "Line 5: Bad end tag: expected B"},
    };
    for (const auto& [document, message] : examples)
        EXPECT_EQ(std::string("XMLParseException: ") + message, failureOfWalk(document)) << document;
}

TEST(Tokenizer, RejectsDeclarationsOfEntities) {
    const std::string message = "XMLParseException: Line 1: Bad DOCTYPE: declarations are not accepted";
    EXPECT_EQ(message, failureOfWalk("<!DOCTYPE A [<!ENTITY x \"y\">]><A/>"));
    EXPECT_EQ(message, failureOfWalk("<!DOCTYPE A SYSTEM 'a' []><A/>"));
    EXPECT_EQ("XMLParseException: Line 1: Bad markup: expected an element, a comment or an instruction",
              failureOfWalk("<!ENTITY x \"y\"><A/>"));
}

TEST(Tokenizer, CountsLinesAcrossPieces) {
    PieceSource source("<A>\n\n<T>x\ny</T>" + std::string(100, '\n') + "</B>", 7);
    io::Window window(source);
    EXPECT_EQ("XMLParseException: Line 104: Bad end tag: expected A", failureOf([&] { walk(window); }));
}

TEST(Tokenizer, RejectsATruncatedDocument) {
    const std::string document = "<?xml version='1.0'?><!DOCTYPE A><A a='1' b='&lt;'><!-- c --><T>t&amp;"
                                 "<![CDATA[x]]></T ><B/></A>";
    walk(document);
    for (std::size_t size = 1; size < document.size(); ++size) {
        if (size == document.find("<!D") || size == document.find("<A"))
            continue; // an empty document is not truncated
        EXPECT_EQ("XMLParseException: Line 1: Premature end: the document is truncated",
                  failureOfWalk(document.substr(0, size)))
            << size;
    }
}

TEST(Tokenizer, AcceptsNineAttributes) {
    const std::string nine = "<A a='1' b='1' c='1' d='1' e='1' f='1' g='1' h='1' i='9'";
    EXPECT_EQ("9", attributeOf(nine + "/>", "i"));
    EXPECT_EQ("XMLParseException: Line 1: Too many attributes: more than 9",
              failureOfWalk(nine + " j='1'/>"));
}

TEST(Tokenizer, LimitsNames) {
    const std::string longest(xml::maximumName, 'n');
    EXPECT_EQ("(" + longest + ")", walk("<" + longest + "></" + longest + ">"));
    EXPECT_EQ("v", attributeOf("<A " + longest + "='v'/>", longest.c_str()));
    EXPECT_EQ("XMLParseException: Line 1: Bad tag name: too long", failureOfWalk("<" + longest + "n/>"));
    EXPECT_EQ("XMLParseException: Line 1: Bad attribute name: too long",
              failureOfWalk("<A " + longest + "n='v'/>"));
}

TEST(Tokenizer, LimitsNesting) {
    const std::size_t most = xml::maximumNesting;
    EXPECT_EQ(2 * most + most, walk(repeated("<A>", most) + repeated("</A>", most)).size());
    EXPECT_EQ("XMLParseException: Line 1: Too deep: elements are nested too deeply",
              failureOfWalk(repeated("<A>", most + 1)));
    EXPECT_EQ("XMLParseException: Line 1: Too deep: elements are nested too deeply",
              failureOfWalk(repeated("<A>", 200000)));
}

TEST(Tokenizer, LimitsTexts) {
    const std::string longest(io::maximumText, 'x');
    EXPECT_EQ(longest.size(), textOf(longest).size());
    EXPECT_EQ(longest.size(), textOf("<!-- -->" + longest).size());
    const std::string message = "XMLParseException: Line 1: Too long: text or tag";
    EXPECT_EQ(message, failureOfWalk("<T>" + longest + "x</T>"));
    EXPECT_EQ(message, failureOfWalk("<T>x<!-- -->" + longest + "</T>"));
    EXPECT_EQ(message, failureOfWalk("<T><![CDATA[" + longest + "x]]></T>"));
    EXPECT_EQ(message, failureOfWalk("<A a='" + longest + "'/>"));
}

TEST(Tokenizer, StopsReadingAnEndlessToken) {
    const std::string endless(io::maximumText + 1024 * 1024, 'x');
    const std::string message = "XMLParseException: Line 1: Too long: text or tag";
    for (const char* begin : {"<T>", "<T><![CDATA[", "<A a='", "<A></A                    ", "<!DOCTYPE "}) {
        const bool isEndTag = begin[3] == '<' && begin[4] == '/';
        PieceSource source(begin + (isEndTag ? std::string(endless.size(), ' ') : endless), 1000000);
        io::Window window(source);
        EXPECT_EQ(message, failureOf([&] { walk(window); })) << begin;
    }
}

TEST(Tokenizer, DoesNotBufferSkippedMarkup) {
    const std::string much(io::maximumText, 'x');
    for (const std::string& filler :
         {"<!-- " + much + much + " -->", "<?x " + much + much + "?>", much + much}) {
        PieceSource source("<A>" + filler + "<T>t</T></A>", 100000);
        io::Window window(source);
        EXPECT_EQ("(A(T=t))", walk(window));
    }
}

} // namespace
