// The keyboard of `owbctl watch` and the mode of its terminal.
#include "Owbctl.hpp"
#include "support/Terminal.hpp"

#include <csignal>
#include <gtest/gtest.h>

namespace owbctl_test {
namespace {

// A shell gives its background commands neither its standard input, which descriptor 3 keeps, nor SIGINT and
// SIGQUIT, which env(1) sets to their defaults.
const char* const watchInBackground =
    "exec 3<&0; before=$(stty -g); trap shown=1 USR1\n"
    "is_restored() { [ \"$(stty -g)\" = \"$before\" ]; }\n"
    "until_restored() { until is_restored; do sleep 0.02; done; }\n"
    "until_changed() { while is_restored; do sleep 0.02; done; }\n"
    "env --default-signal \"$0\" --url \"$1\" watch 14 --interval 600 <&3 & pid=$!\n"
    "until [ \"$shown\" ]; do sleep 0.02; done; until_changed; echo watching\n";

/** A shell that runs lines while a watch, which has shown a reading, waits for the next one. */
class Watching {
public:
    explicit Watching(const std::string& lines)
        : m_peer({instances({})})
        , m_terminal({"/bin/sh", "-c", watchInBackground + lines, OWBCTL, m_peer.url()}, 80) {
        EXPECT_TRUE(m_terminal.waitFor("no data"));
        m_terminal.signal(SIGUSR1);
    }

    support::Terminal& terminal() { return m_terminal; }

private:
    support::ScriptedPeer m_peer;
    support::Terminal m_terminal;
};

TEST(Keyboard, QLeaves) {
    const support::ScriptedPeer peer({instances({})});
    support::Terminal terminal({OWBCTL, "--url", peer.url(), "watch", "14", "--interval", "600"}, 80);
    ASSERT_TRUE(terminal.waitFor("sample 1"));
    terminal.type("xq");
    EXPECT_EQ(terminal.wait(), 0);
}

TEST(Keyboard, QLeavesWithTheStatusOfTheLastReading) {
    support::Terminal terminal({OWBCTL, "--url", deadUrl(), "watch", "14", "--interval", "600"}, 80);
    ASSERT_TRUE(terminal.waitFor("no answer"));
    terminal.type("q");
    EXPECT_EQ(terminal.wait(), 15);
}

TEST(Keyboard, QRestoresTheTerminal) {
    Watching watching("wait $pid; echo status $?; is_restored && echo restored\n");
    ASSERT_TRUE(watching.terminal().waitFor("watching"));
    watching.terminal().type("q");
    watching.terminal().wait();
    EXPECT_NE(watching.terminal().screen().find("status 0\nrestored\n"), std::string::npos)
        << watching.terminal().screen();
}

TEST(Keyboard, EverySignalThatEndsTheProgramRestoresTheTerminal) {
    for (const char* const signal : {"HUP", "INT", "QUIT", "TERM", "PIPE", "ABRT"}) {
        SCOPED_TRACE(signal);
        Watching watching(std::string("kill -") + signal +
                          " $pid; wait $pid; [ $? -gt 128 ] && echo ended; is_restored && echo restored\n");
        watching.terminal().wait();
        EXPECT_NE(watching.terminal().screen().find("restored\n"), std::string::npos)
            << watching.terminal().screen();
    }
}

TEST(Keyboard, TheTerminalIsRestoredWhileTheProgramIsStopped) {
    Watching watching("kill -TSTP $pid; until_restored; echo stopped\n"
                      "kill -CONT $pid; until_changed; echo continued\n"
                      "kill -TERM $pid; until_restored; echo restored\n");
    watching.terminal().wait();
    EXPECT_NE(watching.terminal().screen().find("stopped\ncontinued\nrestored\n"), std::string::npos)
        << watching.terminal().screen();
}

TEST(Keyboard, ATimeoutRestoresTheTerminal) {
    const support::ScriptedPeer peer({instances({}), support::Step::staySilent()});
    support::Terminal terminal(
        {"/bin/sh", "-c",
         "before=$(stty -g); \"$0\" --url \"$1\" --timeout 0.5 watch 14 --interval 0.1; "
         "echo status $?; [ \"$(stty -g)\" = \"$before\" ] && echo restored",
         OWBCTL, peer.url()},
        80);
    terminal.wait();
    EXPECT_NE(terminal.screen().find("status 124\nrestored\n"), std::string::npos) << terminal.screen();
}

TEST(Keyboard, KeysThatArePipedAreNotRead) {
    const support::ScriptedPeer peer({instances({}), instances({})});
    const support::ProgramResult result =
        shell("echo q | \"$OWBCTL\" --url " + peer.url() + " watch 14 --interval 0.1 --count 2 -o json");
    EXPECT_NE(result.out.find("\"sample\":2"), std::string::npos) << result.out;
}

} // namespace
} // namespace owbctl_test
