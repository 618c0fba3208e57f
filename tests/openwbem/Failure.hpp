#ifndef TESTS_OPENWBEM_FAILURE_HPP
#define TESTS_OPENWBEM_FAILURE_HPP
#include "OW_Exception.hpp"

#include <string>

/** Type and message of the library exception that an action throws. */
template <class Action>
std::string failureOf(Action action) {
    try {
        action();
    } catch (const OpenWBEM::Exception& e) {
        return std::string(e.type()) + ": " + e.getMessage();
    }
    return "no exception";
}

#endif
