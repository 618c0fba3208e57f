// An agent that interposes OWB_Debug(): it receives every diagnostic, and the library looks for no switch
// file.
#include "Agent.hpp"
#include "Interposed.hpp"
#include "TestQueue.hpp"
#include "support/Child.hpp"
#include "support/TempDir.hpp"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using interposed::Diagnostic;

std::vector<std::string> received;

void receive(const Diagnostic& diagnostic) {
    received.push_back(diagnostic.file + ":" + diagnostic.function + ":" + std::to_string(diagnostic.line) +
                       ": " + diagnostic.message);
}

const std::vector<std::string> twoDiagnostics = {
    "../../owb/src/OWB_getGroup.cpp:OWB_URLSet:149: Set URL: 'u'\n",
    "../../owb/src/OWB_getInstanceData.cpp:OWB_itemAdd:203: Failed to add item: 'Model' group: 0 nominator: "
    "1 row: 2 "
    "array: 3\n"};

void makeTwoDiagnostics() {
    OWB_URLSet("u");
    OWB_itemAdd(nullptr, 0, 1, 2, 3, "x");
}

TEST(InterposedDebug, ReceivesEveryDiagnosticWithoutASwitchFile) {
    const support::TempDir folder;
    support::inChild(folder.path(), [] {
        interposed::debug = receive;
        makeTwoDiagnostics();
        EXPECT_EQ(twoDiagnostics, received);
    });
}

TEST(InterposedDebug, ReceivesEveryDiagnosticAlsoWhenItForwardsToTheLibrarys) {
    const support::TempDir folder;
    support::inChild(folder.path(), [] {
        interposed::debug = [](const Diagnostic& diagnostic) {
            receive(diagnostic);
            interposed::ownDebug(diagnostic);
        };
        makeTwoDiagnostics();
        EXPECT_EQ(twoDiagnostics, received);
    });
}

TEST(InterposedDebug, KeepsTheLibraryFromTheSwitchFile) {
    const support::TempDir folder;
    folder.write("vdxDebug", folder.file("log") + "\n");
    support::inChild(folder.path(), makeTwoDiagnostics);
    EXPECT_FALSE(std::filesystem::exists(folder.file("log")));
}

TEST(InterposedPrintf, PrintsTheReportOfADuplicate) {
    const support::TempDir folder;
    const std::string printed = support::inChild(folder.path(), [] {
        std::vector<std::string> formats;
        interposed::printed = [&](const char* format) { formats.push_back(format); };
        TestQueue q;
        OWB_itemAdd(q.head(), 0, 1, 2, 3, "x");
        OWB_itemAdd(q.head(), 0, 1, 2, 3, "x");
        interposed::printed = nullptr;
        EXPECT_EQ(
            (std::vector<std::string>{"ZUL: duplicate item '%s' group: %ld nom: %ld row: %ld array: %ld\n",
                                      "\n*** EXT_DIE() called: %s:%lu ***\n\n"}),
            formats);
    });
    EXPECT_NE("", printed);
}

} // namespace
