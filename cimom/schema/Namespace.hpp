#ifndef CIMOM_SCHEMA_NAMESPACE_HPP_INCLUDED
#define CIMOM_SCHEMA_NAMESPACE_HPP_INCLUDED
#include "OW_CIMInstance.hpp"
#include "OW_CIMObjectPath.hpp"

namespace cimom {

/** The namespace of all served classes. */
inline constexpr const char* servedNamespace = "root/cimv2";

/** The path of a served instance: the namespace, its class and its keys. */
inline OpenWBEM::CIMObjectPath pathOf(const OpenWBEM::CIMInstance& instance) {
    return OpenWBEM::CIMObjectPath(servedNamespace, instance);
}

} // namespace cimom
#endif
