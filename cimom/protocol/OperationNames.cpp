#include "protocol/OperationNames.hpp"

namespace cimom {

const char* operationName(OpenWBEM::UInt8 number) {
    static const unsigned first = 20;
    static const char* const names[] = {
        "DeleteClass",
        "DeleteInstance",
        "DeleteQualifierType",
        "EnumerateClasses",
        "EnumerateClassNames",
        "EnumerateInstances",
        "EnumerateInstanceNames",
        "EnumerateQualifierTypes",
        "GetClass",
        "GetInstance",
        "InvokeMethod",
        "GetQualifierType",
        "SetQualifierType",
        "ModifyClass",
        "CreateClass",
        "ModifyInstance",
        "CreateInstance",
        "GetProperty",
        "SetProperty",
        "AssociatorNames",
        "Associators",
        "ReferenceNames",
        "References",
        "ExecQuery",
        "GetServerFeatures",
    };
    const unsigned index = number - first;
    return index < sizeof names / sizeof *names ? names[index] : nullptr;
}

} // namespace cimom
