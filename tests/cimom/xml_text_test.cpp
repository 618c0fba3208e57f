#include "protocol/XmlText.hpp"

#include <gtest/gtest.h>

using namespace cimom;

namespace {

std::string clean(std::string text, std::size_t from = 0) {
    replaceForbidden(text, from);
    return text;
}

const std::string mark = "\xEF\xBF\xBD";

} // namespace

TEST(XmlText, CharactersOfXmlStay) {
    for (const std::string text :
         {"", "plain <a b=\"c\">", "tab\tline\r\n", "\x7F", "M\xC3\xA9tal \xE2\x82\xAC",
          "\xF0\x9F\x92\xA1 lamp", "\xEF\xBF\xBD", "\xEE\x80\x80"})
        EXPECT_EQ(text, clean(text));
}

TEST(XmlText, ControlCharactersAreReplaced) {
    EXPECT_EQ("a" + mark + "b" + mark + mark, clean(std::string("a\0b\x1F\x01", 5)));
    EXPECT_EQ(mark + mark, clean("\xEF\xBF\xBE\xEF\xBF\xBF")) << "U+FFFE and U+FFFF are not characters";
}

TEST(XmlText, BytesThatAreNoCharactersAreReplacedOneByOne) {
    EXPECT_EQ(mark, clean("\xFF"));
    EXPECT_EQ("a" + mark + "b", clean("a\xC3"
                                      "b"));
    EXPECT_EQ("a" + mark + mark, clean("a\xE2\x82")) << "cut short by the end";
    EXPECT_EQ(mark + mark + mark, clean("\xED\xA0\x80")) << "a surrogate";
    EXPECT_EQ(mark + mark, clean("\xC0\xAF")) << "a longer form than needed";
}

TEST(XmlText, WhatStandsBeforeStays) {
    EXPECT_EQ("\x01"
              "b" +
                  mark,
              clean("\x01"
                    "b\x01",
                    1));
}
