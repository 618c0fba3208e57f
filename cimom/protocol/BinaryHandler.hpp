#ifndef CIMOM_PROTOCOL_BINARY_HANDLER_HPP_INCLUDED
#define CIMOM_PROTOCOL_BINARY_HANDLER_HPP_INCLUDED
#include "ObjectManager.hpp"

#include <optional>
#include <string>
#include <string_view>

namespace cimom {

/** Why an operation failed, for a client that is told so beside the body of the reply. */
struct OperationError {
    /** Status code of DSP0200. */
    unsigned code;
    std::string description;
};

/** The outcome of an operation. */
struct OperationReply {
    /** The whole reply; of a failed operation the error in the form that stands in for the result. */
    std::string body;
    /** Set when the operation failed. */
    std::optional<OperationError> error;
};

/** Carries out requests in the binary protocol. */
class BinaryHandler {
public:
    /** @param manager must outlive the handler */
    explicit BinaryHandler(ObjectManager& manager)
        : m_manager(manager) {}

    /**
     * @param request the body of the request; bytes after the arguments of its operation are ignored
     * @param access what the client may do
     */
    OperationReply handle(std::string_view request, Access access) const;

private:
    ObjectManager& m_manager;
};

} // namespace cimom
#endif
