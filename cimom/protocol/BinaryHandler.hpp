#ifndef CIMOM_PROTOCOL_BINARY_HANDLER_HPP_INCLUDED
#define CIMOM_PROTOCOL_BINARY_HANDLER_HPP_INCLUDED
#include "objects/ObjectManager.hpp"
#include "protocol/Handler.hpp"

namespace cimom {

/** Carries out requests in the binary protocol. Bytes after the arguments of an operation are ignored. */
class BinaryHandler : public Handler {
public:
    /** @param manager must outlive the handler */
    explicit BinaryHandler(ObjectManager& manager)
        : m_manager(manager) {}

    const char* contentType() const override { return "application/x-owbinary; charset=\"utf-8\""; }
    OperationReply handle(std::string_view request, Access access,
                          const Announcement& announced = Announcement()) const override;

private:
    ObjectManager& m_manager;
};

} // namespace cimom
#endif
