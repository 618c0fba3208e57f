// What tables look like on terminals of 80 and 140 columns.
#include "Screens.hpp"
#include "support/Pattern.hpp"

namespace owbctl_test {
namespace {

TEST_F(Screens, InterfacesBeginWithTheirNamesAndShowNamesOfCodes) {
    expectScreens("get-9", {"get", "9"});
    expectScreens("get-9-human", {"get", "9", "-h"});
}

TEST_F(Screens, ARawTableShowsItemTexts) {
    expectScreens("get-9-raw", {"get", "9", "--raw"});
    expectScreens("get-8-raw", {"get", "8", "--raw"});
}

TEST_F(Screens, AWideTableHasAllKeysAndCompletePaths) {
    expectScreens("get-9-wide", {"get", "9", "-o", "wide"});
    expectScreens("get-8-wide", {"get", "8", "-o", "wide"});
}

TEST_F(Screens, AssociationsShowWhatDiffersBetweenRows) {
    expectScreens("get-8", {"get", "8"});
}

TEST_F(Screens, FileSystemsBeginWithTheirMountPoints) {
    expectScreens("get-20", {"get", "20"});
    expectScreens("get-20-wide", {"get", "20", "-o", "wide"});
    expectScreens("get-20-raw", {"get", "20", "--raw"});
}

TEST_F(Screens, StorageIsShownInBytesOnRequest) {
    expectScreenAt(80, "get-3-human", {"get", "3", "--where", "Purpose=/srv/tape", "-h"});
    expectScreenAt(140, "get-10-human", {"get", "10", "-h"});
}

TEST_F(Screens, OneRowShowsOnePropertyOnEachLine) {
    expectScreenAt(80, "get-9-row", {"get", "9", "--where", "Name=ib0"});
    expectScreenAt(80, "get-8-row", {"get", "8", "--row", "1"});
}

TEST_F(Screens, ColumnsHaveTheOrderOfTheRequest) {
    expectScreenAt(80, "get-9-columns", {"get", "9", "--columns", "Speed,Name,OperationalStatus"});
}

/** The screen of a watch, with the time of each sample replaced. */
void expectWatch(const std::string& name, const std::string& url, unsigned short columns) {
    const std::string screen = shown({"--url", url, "watch", "10", "--count", "1"}, columns);
    const char time[] = "  [0-9]{2}:[0-9]{2}:[0-9]{2}\\.[0-9]{3}  ";
    expectScreen(name + "." + std::to_string(columns),
                 support::replacedAll(screen, time, "  12:34:56.789  "));
}

TEST_F(Screens, ASampleHasItsTime) {
    expectWatch("watch-10", host().url(), 80);
    expectWatch("watch-10", host().url(), 140);
}

} // namespace
} // namespace owbctl_test
