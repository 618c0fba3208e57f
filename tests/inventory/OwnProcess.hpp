#ifndef TESTS_INVENTORY_OWN_PROCESS_HPP
#define TESTS_INVENTORY_OWN_PROCESS_HPP
#include "inventory/Records.hpp"

#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

/** A test of the table that adds its own process repeatedly. */
class OwnProcess : public testing::Test {
protected:
    /** A handle of this process. Each number gives a different one, with as many leading zeros. */
    static std::string handle(std::size_t number = 0) {
        return std::string(number, '0') + std::to_string(::getpid());
    }
    /** Adds this process to the table. */
    void add(const std::string& handle, QAV_UnixProcessAPI::tProcessInfoType type = statistics) {
        ASSERT_EQ(1, m_processes.init(type, handle.c_str())) << handle;
    }

    QAV_UnixProcessAPI m_processes;
};

#endif
