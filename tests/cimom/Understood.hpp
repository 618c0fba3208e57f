#ifndef TESTS_CIMOM_UNDERSTOOD_HPP
#define TESTS_CIMOM_UNDERSTOOD_HPP
#include "OW_CIMInstance.hpp"

#include <string>
#include <vector>

/** A reply as the client library decodes it. */
struct Understood {
    std::vector<OpenWBEM::CIMInstance> instances;
    /** `<code> <description>` of a CIM error, `<type>: <message>` of another exception, "" for none. */
    std::string error;
};

/**
 * Decodes a complete HTTP reply with the client library.
 *
 * @param request the request that it answers: determines protocol, operation and message ID
 */
Understood understood(const std::string& request, const std::string& reply);

#endif
