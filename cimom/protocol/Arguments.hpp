#ifndef CIMOM_PROTOCOL_ARGUMENTS_HPP_INCLUDED
#define CIMOM_PROTOCOL_ARGUMENTS_HPP_INCLUDED
#include "objects/ObjectManager.hpp"

#include <optional>

namespace cimom {

/** A property list as the object manager takes it: null for none. Valid as long as the list. */
inline const PropertyList* pointer(const std::optional<PropertyList>& list) {
    return list ? &*list : nullptr;
}

} // namespace cimom
#endif
