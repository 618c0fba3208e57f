// The progress line on a terminal.
#include "Owbctl.hpp"

#include <gtest/gtest.h>

namespace owbctl_test {
namespace {

/** Standard error of a command on a terminal; its standard output is discarded. */
std::string onTerminal(const std::string& arguments) {
    const support::ScriptedPeer peer({instances({})});
    return shell("script -qec '\"$OWBCTL\" --url " + peer.url() + " " + arguments + " >/dev/null' /dev/null")
        .out;
}

TEST(Progress, SeveralGroupsAreCounted) {
    EXPECT_EQ(onTerminal("get 4 14"),
              "\r\x1b[Kowbctl: reading group 4 (QAV_OperatingSystem), 1 of 2\r\x1b[K"
              "\r\x1b[Kowbctl: reading group 14 (QAV_UDPStatisticalData), 2 of 2\r\x1b[K");
}

TEST(Progress, OneGroupIsNamed) {
    EXPECT_EQ(onTerminal("get 4"), "\r\x1b[Kowbctl: reading group 4 (QAV_OperatingSystem)\r\x1b[K");
}

TEST(Progress, SamplesAreCounted) {
    EXPECT_EQ(onTerminal("watch 14 --interval 0.1 --count 2"), "\r\x1b[Kowbctl: sample 1\r\x1b[K");
}

TEST(Progress, ATerminalWithoutControlSequencesShowsNoProgress) {
    const support::ScriptedPeer peer({instances({})});
    EXPECT_EQ(
        shell("TERM=dumb script -qec '\"$OWBCTL\" --url " + peer.url() + " get 4 14 >/dev/null' /dev/null")
            .out,
        "");
}

TEST(Progress, AFileReceivesNoProgress) {
    EXPECT_EQ(get({instances({})}, {"4", "14"}).err, "");
}

} // namespace
} // namespace owbctl_test
