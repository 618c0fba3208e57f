#ifndef TESTS_OWB_INSTANCES_HPP
#define TESTS_OWB_INSTANCES_HPP
// OpenWBEM 3.x needs it before OW_Array.hpp, for an Array of numbers.
#if __has_include("OW_vector.hpp")
#include "OW_vector.hpp"
#endif
#include "OW_Array.hpp"
#include "OW_CIMFwd.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMProperty.hpp"

#include <initializer_list>

template <class T>
OpenWBEM::Array<T> arrayOf(std::initializer_list<T> elements) {
    return OpenWBEM::Array<T>(elements.begin(), elements.end());
}

inline OpenWBEM::CIMInstance instanceOf(std::initializer_list<OpenWBEM::CIMProperty> properties) {
    OpenWBEM::CIMInstance instance("Any");
    instance.setProperties(OpenWBEM::CIMPropertyArray(properties.begin(), properties.end()));
    return instance;
}

#endif
