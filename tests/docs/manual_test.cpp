#include "Manual.hpp"

#include <cctype>
#include <gtest/gtest.h>

using namespace manual;

namespace {

const std::string pages = PAGES;

std::string header() {
    return contentOf(HEADER);
}

/** Whether a name has a form that only this library uses. */
bool isOfLibrary(const std::string& name) {
    return name.compare(0, 4, "OWB_") == 0 || name.compare(0, 3, "Ext") == 0 ||
           name.compare(0, 2, "_q") == 0 ||
           (name.compare(0, 3, "owb") == 0 && name.size() > 3 && std::isupper(name[3]));
}

std::vector<std::string> textsOf(const std::vector<Declaration>& declarations, const std::string& name) {
    std::vector<std::string> texts;
    for (const Declaration& declaration : declarations) {
        if (declaration.name == name)
            texts.push_back(declaration.text);
    }
    return texts;
}

} // namespace

TEST(Manual, ReadsWhatAHeaderDeclares) {
    const std::vector<Declaration> found = declarationsIn(
        "/* int gone(void); */\n#define NO(x) no(x);\n#ifdef __cplusplus\nextern \"C\" {\n#endif\n"
        "typedef struct S { long member; } S;\nextern const char* const names[32];\n"
        "void say(const char* format, ...)\n    __attribute__((format(printf, 1, 2)))\n    ;\n"
        "}\nlong\nadd( long a,\n long b );\n");
    ASSERT_EQ(found.size(), 3U);
    EXPECT_EQ(found[0].name, "names");
    EXPECT_EQ(found[0].text, "extern const char*const names[32]");
    EXPECT_EQ(found[1].name, "say");
    EXPECT_EQ(found[1].text, "void say(const char*format,...)");
    EXPECT_EQ(found[2].name, "add");
    EXPECT_EQ(found[2].text, "long add(long a,long b)");
}

TEST(Manual, ReadsEveryExportOfTheHeader) {
    const std::vector<Declaration> declared = declarationsIn(header());
    for (const char* const name : {"OWB_Debug", "OWB_connect", "OWB_getInstanceData", "OWB_version",
                                   "owbStringClean", "owbUrl_p", "ExtCimKeyArray"})
        EXPECT_EQ(textsOf(declared, name).size(), 1U) << name;
}

TEST(Manual, HasAPageForEveryDeclarationWithItsNameAndText) {
    for (const Declaration& declared : declarationsIn(header())) {
        SCOPED_TRACE(declared.name);
        const std::string page = pageOf(pages, declared.name);
        EXPECT_EQ(namesIn(page).count(declared.name), 1U);
        EXPECT_EQ(textsOf(synopsisOf(page), declared.name), std::vector<std::string>{declared.text});
    }
}

TEST(Manual, DeclaresNothingThatTheHeaderDoesNot) {
    const std::vector<Declaration> declared = declarationsIn(header());
    for (const std::string& name : namesOfPages(pages)) {
        for (const Declaration& shown : synopsisOf(pageOf(pages, name)))
            EXPECT_EQ(textsOf(declared, shown.name), std::vector<std::string>{shown.text}) << name << ".3";
    }
}

TEST(Manual, NamesNothingThatTheHeaderDoesNot) {
    const std::set<std::string> known = identifiersIn(header());
    for (const std::string& name : namesOfPages(pages)) {
        for (const std::string& word : identifiersIn(pageOf(pages, name)))
            EXPECT_TRUE(!isOfLibrary(word) || known.count(word) == 1) << name << ".3: " << word;
    }
}

TEST(Manual, NamesEachPageInItsSectionName) {
    for (const std::string& name : namesOfPages(pages))
        EXPECT_EQ(namesIn(pageOf(pages, name)).count(name), 1U) << name;
}
