// An agent that interposes OWB_Debug() receives every diagnostic, and the library does not look for a switch
// file.
#include "Agent.hpp"
#include "Interposed.hpp"
#include "TestQueue.hpp"

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
    runWithoutTrace([] {
        interposed::debug = receive;
        makeTwoDiagnostics();
        EXPECT_EQ(twoDiagnostics, received);
    });
}

TEST(InterposedDebug, ReceivesEveryDiagnosticEvenIfItForwardsToTheLibrary) {
    runWithoutTrace([] {
        interposed::debug = [](const Diagnostic& diagnostic) {
            receive(diagnostic);
            interposed::ownDebug(diagnostic);
        };
        makeTwoDiagnostics();
        EXPECT_EQ(twoDiagnostics, received);
    });
}

TEST(InterposedDebug, PreventsTheSearchForASwitchFile) {
    const TraceLog log;
    log.run(makeTwoDiagnostics);
    EXPECT_EQ("", log.raw());
}

TEST(InterposedPrintf, PrintsTheReportOfADuplicate) {
    const std::string printed = runWithoutTrace([] {
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
