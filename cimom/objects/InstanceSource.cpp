#include "objects/InstanceSource.hpp"

namespace cimom {

using OpenWBEM::CIMInstance;

InstanceSource only(const CIMInstance& instance) {
    return [instance, isDone = false]() mutable {
        return std::exchange(isDone, true) ? CIMInstance(OpenWBEM::CIMNULL) : instance;
    };
}

InstanceSource chained(InstanceSource first, InstanceSource second) {
    return [first = std::move(first), second = std::move(second)]() {
        const CIMInstance instance = first();
        return instance ? instance : second();
    };
}

} // namespace cimom
