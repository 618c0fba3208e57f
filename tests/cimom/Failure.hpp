#ifndef TESTS_CIMOM_FAILURE_HPP
#define TESTS_CIMOM_FAILURE_HPP
#include "OW_CIMException.hpp"

#include <stdexcept>
#include <string>

/** "<code> <description>" of the CIM error that an action throws. */
template <class Action>
std::string cimErrorOf(Action action) {
    try {
        action();
        return "no error";
    } catch (const OpenWBEM::CIMException& e) {
        return std::to_string(e.getErrNo()) + " " + (e.getDescription() ? e.getDescription() : "");
    }
}

/** The message of the std::runtime_error that an action throws. */
template <class Action>
std::string errorOf(Action action) {
    try {
        action();
        return "no error";
    } catch (const std::runtime_error& e) {
        return e.what();
    }
}

#endif
