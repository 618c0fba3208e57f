#ifndef CIMOM_PROVIDERS_MODULES_HPP_INCLUDED
#define CIMOM_PROVIDERS_MODULES_HPP_INCLUDED
#include "host/Module.hpp"
#include "objects/InstanceBuilder.hpp"

namespace cimom {

// What references of the classes of modules lead to. Each is made with its keys and no other values yet.

/** The chassis of the host, in which all modules are. */
InstanceBuilder namedChassis();
InstanceBuilder namedModule(const Module& module);
/** The place that a module is in. */
InstanceBuilder namedModuleLocation(const Module& module);

} // namespace cimom
#endif
