#ifndef TESTS_INVENTORY_SOFTWARE_PROGRAM_HPP
#define TESTS_INVENTORY_SOFTWARE_PROGRAM_HPP
#include "inventory/Records.hpp"

#include <string>

/** The software inventory as a test invents it: its functions take the place of the utilities library's. */
struct SoftwareProgram {
    /** What it prints. */
    Texts lines;
    bool isMissing = false;
    /** How often it has run. */
    int runs = 0;
    /** Command line of the last time, and whether it had an input or its errors were wanted. */
    std::string command;
    bool hasMoreThanOutput = false;

    static SoftwareProgram& instance();
};

#endif
