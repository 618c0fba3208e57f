#ifndef TESTS_INVENTORY_SOFTWARE_PROGRAM_HPP
#define TESTS_INVENTORY_SOFTWARE_PROGRAM_HPP
#include "inventory/Records.hpp"

#include <string>

/** A fake software inventory: the test program defines runcommand() instead of the utilities library. */
struct SoftwareProgram {
    /** What it prints. */
    Texts lines;
    bool isMissing = false;
    /** How often it has run. */
    int runs = 0;
    /** The last command line, and whether the caller passed an input or requested the errors. */
    std::string command;
    bool hasMoreThanOutput = false;

    static SoftwareProgram& instance();
};

#endif
