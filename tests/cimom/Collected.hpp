#ifndef TESTS_CIMOM_COLLECTED_HPP
#define TESTS_CIMOM_COLLECTED_HPP
#include "schema/InstanceSource.hpp"

#include <vector>

/** All objects of a source. */
template <class Object>
std::vector<Object> collected(cimom::Source<Object>& source) {
    std::vector<Object> all;
    while (const Object object = source.next())
        all.push_back(object);
    return all;
}

#endif
