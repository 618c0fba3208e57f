#include "state/SiteValues.hpp"

#include "support/TempDir.hpp"

#include <filesystem>
#include <gtest/gtest.h>

using cimom::SiteValues;
using cimom::StateFile;
using support::readFile;
using support::TempDir;

namespace {

class SiteValuesTest : public ::testing::Test {
protected:
    std::string path() const { return m_directory.file("state"); }
    /** The values in the file. */
    SiteValues load() const { return SiteValues(std::make_unique<StateFile>(path())); }
    /** Why a file with this content is rejected, without its name. */
    std::string errorOf(const std::string& content) const {
        m_directory.write("state", content);
        std::string why = "not rejected";
        try {
            load();
        } catch (const std::runtime_error& e) {
            why = e.what();
            EXPECT_EQ(0u, why.find(path() + ":")) << why;
            why.erase(0, path().size() + 1);
        }
        EXPECT_EQ(content, readFile(path())) << "it is never overwritten";
        return why;
    }
    const TempDir& directory() const { return m_directory; }

private:
    TempDir m_directory;
};

const char* const room = "Lamp.Colour=\"red\"";

} // namespace

TEST_F(SiteValuesTest, WrittenValuesAreRead) {
    SiteValues values;
    EXPECT_EQ(nullptr, values.find(room));
    values.write(room, {{"Room", "hall"}, {"Owner", std::nullopt}});
    values.write(room, {{"Room", "cellar"}});
    ASSERT_NE(nullptr, values.find(room));
    EXPECT_EQ((SiteValues::Values{{"Room", "cellar"}, {"Owner", std::nullopt}}), *values.find(room));
    EXPECT_EQ(nullptr, values.find("Lamp.Colour=\"RED\""));
}

TEST_F(SiteValuesTest, TheFileKeepsThemForTheNextProcess) {
    const std::string odd("quote \" back\\slash \n tab\t nul\0 d\xc3\xbcne \xf0\x9f\x92\xa1", 37);
    load().write(room, {{"Room", odd}, {"Owner", std::nullopt}, {"Empty", ""}});
    load().write("Lamp.Colour=\"blue\"", {{"Room", "attic"}});
    const SiteValues later = load();
    ASSERT_NE(nullptr, later.find(room));
    EXPECT_EQ((SiteValues::Values{{"Room", odd}, {"Owner", std::nullopt}, {"Empty", ""}}), *later.find(room));
    ASSERT_NE(nullptr, later.find("Lamp.Colour=\"blue\""));
}

TEST_F(SiteValuesTest, TheFileIsIndentedJson) {
    load().write(room, {{"Room", "hall"}, {"Owner", std::nullopt}});
    EXPECT_EQ("{\n"
              "  \"format_version\": 1,\n"
              "  \"instances\": {\n"
              "    \"Lamp.Colour=\\\"red\\\"\": {\n"
              "      \"Owner\": null,\n"
              "      \"Room\": \"hall\"\n"
              "    }\n"
              "  }\n"
              "}\n",
              readFile(path()));
}

TEST_F(SiteValuesTest, AnEmptyWriteDoesNotTouchTheFile) {
    load().write(room, {});
    EXPECT_FALSE(std::filesystem::exists(path()));
}

TEST_F(SiteValuesTest, AWriteOfTheSameValueReachesTheDisk) {
    SiteValues values = load();
    values.write(room, {{"Room", "hall"}});
    std::filesystem::remove(path());
    values.write(room, {{"Room", "hall"}});
    EXPECT_TRUE(std::filesystem::exists(path()));
}

TEST_F(SiteValuesTest, AWriteThatFailsChangesNothing) {
    SiteValues values = load();
    values.write(room, {{"Room", "hall"}});
    directory().write("state.new/in the way", "");
    EXPECT_THROW(values.write(room, {{"Room", "cellar"}}), std::system_error);
    EXPECT_EQ("hall", values.find(room)->at("Room"));
    std::filesystem::remove_all(directory().file("state.new"));
    values.write(room, {{"Room", "cellar"}});
    EXPECT_EQ("cellar", values.find(room)->at("Room"));
}

TEST_F(SiteValuesTest, AFileThatIsNotJsonIsAnError) {
    EXPECT_EQ(0u, errorOf("").find("1: syntax error"));
    EXPECT_EQ(0u, errorOf("{\n  \"format_version\": 1,\n  \"inst").find("3: syntax error"));
}

TEST_F(SiteValuesTest, AFileOfAnotherFormIsAnError) {
    EXPECT_EQ("1: not an object with \"format_version\" and \"instances\"", errorOf("[]"));
    EXPECT_EQ("1: no \"format_version\"", errorOf("{}"));
    EXPECT_EQ("2: format_version is not 1", errorOf("{\n\"format_version\": 2}"));
    EXPECT_EQ("1: format_version is not 1", errorOf("{\"format_version\": \"1\"}"));
    EXPECT_EQ("2: unknown member \"more\"", errorOf("{\"format_version\": 1,\n\"more\": 1}"));
    EXPECT_EQ("2: not an object of instances", errorOf("{\"format_version\": 1,\n\"instances\": []}"));
    EXPECT_EQ("2: not an object of values",
              errorOf("{\"format_version\": 1, \"instances\": {\n\"a\": \"b\"}}"));
    EXPECT_EQ("3: not a string or null",
              errorOf("{\"format_version\": 1, \"instances\": {\n\"a\": {\"b\": null,\n\"c\": 5}}}"));
    EXPECT_EQ("2: duplicate name \"b\"",
              errorOf("{\"format_version\": 1, \"instances\": {\"a\": {\"b\": \"x\",\n\"b\": \"y\"}}}"));
}
