#ifndef TESTS_CIMOM_UNDERSTOOD_HPP
#define TESTS_CIMOM_UNDERSTOOD_HPP
#include "OW_CIMInstance.hpp"

#include <string>
#include <vector>

/** What the client library makes of a reply. */
struct Understood {
    std::vector<OpenWBEM::CIMInstance> instances;
    /** `<code> <description>` of a CIM error, `<type>: <message>` of another exception, "" when it is good.
     */
    std::string error;
};

/**
 * Reads a whole reply of HTTP, as the client library does.
 *
 * @param request the request that it answers, which says the protocol, the operation and the message
 */
Understood understood(const std::string& request, const std::string& reply);

#endif
