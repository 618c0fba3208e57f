// What tables look like on terminals of 80 and 140 columns.
#include "Screens.hpp"

namespace owbctl_test {
namespace {

TEST_F(Screens, NetworkInterfaces) {
    expectScreens("get-9", {"get", "9"});
}

TEST_F(Screens, Associations) {
    expectScreens("get-8", {"get", "8"});
}

TEST_F(Screens, FileSystems) {
    expectScreens("get-20", {"get", "20"});
}

} // namespace
} // namespace owbctl_test
