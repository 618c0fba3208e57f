#ifndef CIMOM_PROTOCOL_OPERATION_NAMES_HPP_INCLUDED
#define CIMOM_PROTOCOL_OPERATION_NAMES_HPP_INCLUDED
#include "OW_Types.hpp"

namespace cimom {

/** Name of an operation of the binary protocol, as in "EnumerateInstances"; null when the number names none.
 */
const char* operationName(OpenWBEM::UInt8 number);

} // namespace cimom
#endif
