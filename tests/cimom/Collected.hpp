#ifndef TESTS_CIMOM_COLLECTED_HPP
#define TESTS_CIMOM_COLLECTED_HPP
#include <vector>

/** All that a source hands out. */
template <class Source>
auto collected(const Source& next) {
    std::vector<decltype(next())> all;
    while (auto object = next())
        all.push_back(object);
    return all;
}

#endif
