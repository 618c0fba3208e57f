#ifndef OPENWBEM_BINARY_PROTOCOL_HPP_INCLUDED
#define OPENWBEM_BINARY_PROTOCOL_HPP_INCLUDED
// Constants of the binary protocol. A request consists of version, operation and arguments; a reply of a
// result and, for Result::ok, the return value. Numbers are big-endian.

#include "OW_Types.hpp"

namespace OpenWBEM {
namespace binary {

const UInt32 version = 3000008;       // written by every client
const UInt32 lowestVersion = 3000007; // of requests that an object manager accepts

enum class Operation : UInt8 {
    enumerateClasses = 23,
    enumerateClassNames = 24,
    enumerateInstances = 25,
    enumerateInstanceNames = 26,
    getClass = 28,
    getInstance = 29,
    modifyInstance = 35,
    getProperty = 37
};

enum class Result : UInt8 { ok = 0, error = 1, exception = 2 };

// The first byte of each object. A version follows the lower-case forms.
namespace sig {
const UInt8 instance = 'I';
const UInt8 versionedInstance = 'i';
const UInt8 classObject = 'C';
const UInt8 versionedClass = 'c';
const UInt8 method = 'M';
const UInt8 parameter = 'P';
const UInt8 property = 'R';
const UInt8 dataType = 'D';
const UInt8 value = 'V';
const UInt8 objectPath = 'O';
const UInt8 nameSpace = 'N';
const UInt8 url = 'U';
const UInt8 qualifier = 'Q';
const UInt8 versionedQualifier = 'q';
const UInt8 qualifierType = 'T';
const UInt8 boolean = 'h';
const UInt8 string = 'j';
const UInt8 stringArray = 'k';
const UInt8 instanceEnumeration = 'o';
const UInt8 endOfInstances = 0x98; // ends an instance enumeration, twice
const UInt8 pathEnumeration = 'n';
const UInt8 endOfPaths = 0x97; // likewise
const UInt8 classEnumeration = 'i';
const UInt8 endOfClasses = 0x96; // likewise
const UInt8 stringEnumeration = 's';
const UInt8 endOfStrings = 0x9a; // likewise
} // namespace sig

const UInt32 instanceVersion = 1;        // in written instances
const UInt32 highestInstanceVersion = 2; // accepted; version 2 ends with a namespace
const UInt32 qualifierVersion = 1;       // in written qualifiers, and the highest accepted
const UInt32 highestClassVersion = 2;    // accepted; version 1 ends with a language

} // namespace binary
} // namespace OpenWBEM
#endif
