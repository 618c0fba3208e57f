#ifndef TESTS_OWBCTL_SCREENS_HPP
#define TESTS_OWBCTL_SCREENS_HPP
#include "support/Manager.hpp"
#include "support/Terminal.hpp"

#include <string>
#include <vector>

/**
 * Golden screens: what owbctl shows on a terminal, compared with the files tests/owbctl/screens/NAME.txt.
 *
 *     TEST_F(Screens, NetworkInterfaces) {
 *         expectScreens("get-9", {"get", "9"});      // compares get-9.80.txt and get-9.140.txt
 *     }
 *
 * To write the files from the present output, review the difference and commit it:
 *
 *     OWB_UPDATE_SCREENS=1 build/release/tests/owbctl/owbctl_test --gtest_filter='Screens.*'
 *     git diff tests/owbctl/screens
 *
 * A screen may not contain times, process numbers or temporary paths: replace them before expectScreen().
 */
namespace owbctl_test {

/** A fake host with network interfaces, file systems and disks, with the same values in every run. Some
 * come from declared instances. */
class FixtureHost {
public:
    FixtureHost();

    std::string url() const { return m_manager->url(); }
    support::Manager& manager() { return *m_manager; }

private:
    void writeSystem() const;
    void writeInterfaces() const;
    void writeInterface(const std::string& name, const std::vector<std::string>& values) const;
    void writeStorage() const;
    void writeInstances() const;
    void write(const std::string& path, const std::string& content) const;

    support::TempDir m_directory;
    std::unique_ptr<support::Manager> m_manager;
};

/** Runs owbctl in a terminal to its end. The screen has the lines of both output streams, and a last line
 * "[exit status N]" if that is not 0. */
std::string shown(const std::vector<std::string>& arguments, unsigned short columns);

/** Expects that a screen equals the file screens/NAME.txt. A failure prints both. With the environment
 * variable OWB_UPDATE_SCREENS, writes the file instead. */
void expectScreen(const std::string& name, const std::string& screen);

/** A test with a fixture host. */
class Screens : public testing::Test {
protected:
    /** Expects the screens NAME.80 and NAME.140 of a command that reads from the fixture host. */
    static void expectScreens(const std::string& name, const std::vector<std::string>& arguments);
    static void expectScreenAt(unsigned short columns, const std::string& name,
                               const std::vector<std::string>& arguments);

    static void SetUpTestSuite();
    static void TearDownTestSuite();
    static const FixtureHost& host() { return *s_host; }

private:
    static std::unique_ptr<FixtureHost> s_host;
};

} // namespace owbctl_test
#endif
