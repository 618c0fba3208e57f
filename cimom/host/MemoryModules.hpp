#ifndef CIMOM_HOST_MEMORY_MODULES_HPP_INCLUDED
#define CIMOM_HOST_MEMORY_MODULES_HPP_INCLUDED
#include "host/Module.hpp"
#include "host/Smbios.hpp"

#include <vector>

namespace cimom {

/** The memory modules that a table describes, in its order; sockets without one are left out. */
std::vector<Module> memoryModules(const std::vector<SmbiosStructure>& structures);

} // namespace cimom
#endif
