#ifndef TESTS_CIMOM_RUNNING_DAEMON_HPP
#define TESTS_CIMOM_RUNNING_DAEMON_HPP
#include "support/Program.hpp"
#include "support/TempDir.hpp"

#include <gtest/gtest.h>
#include <string>

/** A test with its own object manager, which is ready and serves a fake host. */
class RunningDaemon : public ::testing::Test {
protected:
    RunningDaemon()
        : m_daemon({OWBCIMOMD, "--socket", socketPath(), "--state", m_directory.file("state"), "--root",
                    hostRoot()}) {
        EXPECT_EQ("owbcimomd: ready on " + socketPath(), m_daemon.nextErrorLine());
    }

    support::Daemon& daemon() { return m_daemon; }
    std::string socketPath() const { return m_directory.file("socket"); }

private:
    std::string hostRoot() const {
        m_directory.write("host/proc/sys/kernel/hostname", "box.example.org\n");
        m_directory.write("host/proc/sys/kernel/pid_max", "32768\n");
        m_directory.write("host/proc/1/stat", "");
        return m_directory.file("host");
    }

    support::TempDir m_directory;
    support::Daemon m_daemon;
};

#endif
