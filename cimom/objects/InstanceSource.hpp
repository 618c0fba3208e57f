#ifndef CIMOM_OBJECTS_INSTANCE_SOURCE_HPP_INCLUDED
#define CIMOM_OBJECTS_INSTANCE_SOURCE_HPP_INCLUDED
#include "OW_CIMInstance.hpp"

#include <cstddef>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace cimom {

/**
 * Hands out instances, one a call; after the last one the null instance, and again at every call after that.
 * An instance is made when it is asked for, so that a long enumeration never stands in memory whole. The
 * source owns what it makes them of; its provider must outlive it.
 */
using InstanceSource = std::function<OpenWBEM::CIMInstance()>;

/** Hands out one instance for each record: what `make` makes of it. */
template <class Record, class Make>
InstanceSource eachOf(std::vector<Record> records, Make make) {
    // Shared, since a function is copied with all that it holds.
    const auto all = std::make_shared<const std::vector<Record>>(std::move(records));
    return [all, make = std::move(make), next = std::size_t{0}]() mutable {
        return next < all->size() ? make((*all)[next++]) : OpenWBEM::CIMInstance(OpenWBEM::CIMNULL);
    };
}

/** Hands out the instances of a source, each after `change` has changed it. */
template <class Change>
InstanceSource eachWith(InstanceSource next, Change change) {
    return [next = std::move(next), change = std::move(change)] {
        OpenWBEM::CIMInstance instance = next();
        if (instance)
            change(instance);
        return instance;
    };
}

/** Hands out a single instance. */
InstanceSource only(const OpenWBEM::CIMInstance& instance);

/** Hands out the instances of one source and then those of another. */
InstanceSource chained(InstanceSource first, InstanceSource second);

} // namespace cimom
#endif
