#include "state/StateFile.hpp"

#include <cstdlib>
#include <gtest/gtest.h>
#include <pwd.h>
#include <string>
#include <unistd.h>

using cimom::defaultStatePath;

namespace {

/** A test that runs as a user other than root, without HOME in the environment. */
class DefaultPath : public ::testing::Test {
protected:
    DefaultPath()
        : m_real(::geteuid()) {
        if (m_real == 0) {
            EXPECT_EQ(0, ::seteuid(65534));
        }
        ::unsetenv("HOME");
        ::unsetenv("XDG_STATE_HOME");
    }
    ~DefaultPath() override { EXPECT_EQ(0, ::seteuid(m_real)); }

private:
    const uid_t m_real;
};

} // namespace

TEST_F(DefaultPath, IsInTheStateDirectoryOfTheUser) {
    ::setenv("XDG_STATE_HOME", "/srv/state", 1);
    ::setenv("HOME", "/home/me", 1);
    EXPECT_EQ("/srv/state/owb/state.json", defaultStatePath());
}

TEST_F(DefaultPath, IsInTheHomeDirectoryWithoutAStateDirectory) {
    ::setenv("HOME", "/home/me", 1);
    EXPECT_EQ("/home/me/.local/state/owb/state.json", defaultStatePath());
    for (const char* const ignored : {"", "state"}) {
        ::setenv("XDG_STATE_HOME", ignored, 1);
        EXPECT_EQ("/home/me/.local/state/owb/state.json", defaultStatePath()) << ignored;
    }
}

TEST_F(DefaultPath, IsInTheHomeDirectoryOfTheUserDatabaseWithoutHome) {
    const passwd* const user = ::getpwuid(::geteuid());
    ASSERT_NE(nullptr, user);
    const std::string home = user->pw_dir;
    EXPECT_EQ(home + "/.local/state/owb/state.json", defaultStatePath());
    ::setenv("HOME", "", 1);
    EXPECT_EQ(home + "/.local/state/owb/state.json", defaultStatePath());
}

TEST(DefaultPathOfRoot, IsInTheStateDirectoryOfTheSystem) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "needs root";
    ::setenv("XDG_STATE_HOME", "/srv/state", 1);
    EXPECT_EQ("/var/lib/owb/state.json", defaultStatePath());
}
