#ifndef CIMOM_PROVIDERS_PROVIDER_HPP_INCLUDED
#define CIMOM_PROVIDERS_PROVIDER_HPP_INCLUDED
#include "schema/ClassDeclaration.hpp"
#include "schema/InstanceSource.hpp"

#include <functional>
#include <memory>

namespace cimom {

/** A served class. */
struct Provider {
    /** Never null. Lives as long as `instances`. */
    const ClassDeclaration* declaration;
    /**
     * Yields all instances, each with every declared property. Throws AnswerPending if a program of the host
     * has not answered yet. The source may be used as long as the provider lives.
     */
    std::function<std::unique_ptr<InstanceSource>()> instances;
};

} // namespace cimom
#endif
