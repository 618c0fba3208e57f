#include "json/Document.hpp"

#include <gtest/gtest.h>

using namespace cimom::json;

namespace {

/** "<line>: <why>" of the error in a document. */
std::string errorOf(const std::string& document) {
    try {
        parse(document);
        return "no error";
    } catch (const Error& e) {
        return std::to_string(e.line()) + ": " + e.what();
    }
}

/** The line on which parsing fails; 0 if it succeeds. */
unsigned errorLineOf(const std::string& document) {
    try {
        parse(document);
        return 0;
    } catch (const Error& e) {
        return e.line();
    }
}

} // namespace

TEST(JsonDocument, EveryKindOfValueIsParsed) {
    const Value root = parse(R"({"a": null, "b": true, "c": [-12, 3.5e2, "x\u0041\n"], "d": {}})");
    ASSERT_EQ(Value::Kind::object, root.kind);
    ASSERT_EQ(4u, root.members.size());
    EXPECT_EQ("a", root.members[0].first);
    EXPECT_EQ(Value::Kind::null, root.members[0].second.kind);
    EXPECT_EQ(Value::Kind::boolean, root.members[1].second.kind);
    EXPECT_EQ("true", root.members[1].second.text);
    const Value& list = root.members[2].second;
    ASSERT_EQ(Value::Kind::array, list.kind);
    ASSERT_EQ(3u, list.elements.size());
    EXPECT_EQ(Value::Kind::number, list.elements[0].kind);
    EXPECT_EQ("-12", list.elements[0].text);
    EXPECT_EQ("3.5e2", list.elements[1].text);
    EXPECT_EQ(Value::Kind::string, list.elements[2].kind);
    EXPECT_EQ("xA\n", list.elements[2].text);
    EXPECT_EQ(Value::Kind::object, root.members[3].second.kind);
}

TEST(JsonDocument, EachValueHasItsLine) {
    const Value root = parse("{\n\"a\": 1\n,\n\n\"b\": [\ntrue,\n\"x\"\n],\"c\":\n{}}");
    EXPECT_EQ(1u, root.line);
    EXPECT_EQ(2u, root.members[0].second.line) << "although the line end ends the number";
    EXPECT_EQ(5u, root.members[1].second.line);
    EXPECT_EQ(6u, root.members[1].second.elements[0].line);
    EXPECT_EQ(7u, root.members[1].second.elements[1].line);
    EXPECT_EQ(9u, root.members[2].second.line);
}

TEST(JsonDocument, AnErrorIsReportedWithItsLine) {
    EXPECT_EQ(1u, errorLineOf(""));
    EXPECT_EQ(1u, errorLineOf("nope"));
    EXPECT_EQ(3u, errorLineOf("{\n\"a\": 1,\n\"b\": tru\n}"));
    EXPECT_EQ(2u, errorLineOf("{\n\"a\" 1\n}"));
    EXPECT_EQ(2u, errorLineOf("{\n\"a\": \"\xff\"}"));
    EXPECT_EQ(1u, errorLineOf("{} {}"));
    EXPECT_EQ(1u, errorLineOf(std::string("\0", 1)));
    EXPECT_EQ(
        "1: syntax error while parsing value - unexpected end of input; expected '[', '{', or a literal",
        errorOf(""));
}

TEST(JsonDocument, ADuplicateNameIsAnError) {
    EXPECT_EQ("3: duplicate name \"a\"", errorOf("{\"a\": 1,\n\"b\": {\"a\": 2},\n\"a\": 3}"));
}

TEST(JsonDocument, DepthIsLimited) {
    const auto nested = [](std::size_t depth) { return std::string(depth, '[') + std::string(depth, ']'); };
    EXPECT_EQ("no error", errorOf(nested(64)));
    EXPECT_EQ("1: more than 64 levels deep", errorOf(nested(65)));
    EXPECT_EQ("1: more than 64 levels deep", errorOf(std::string(1000000, '[')));
}
