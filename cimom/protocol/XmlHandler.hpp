#ifndef CIMOM_PROTOCOL_XML_HANDLER_HPP_INCLUDED
#define CIMOM_PROTOCOL_XML_HANDLER_HPP_INCLUDED
#include "objects/ObjectManager.hpp"
#include "protocol/Handler.hpp"

namespace cimom {

/** Carries out requests in CIM-XML (DSP0200, DSP0201), one operation a request. */
class XmlHandler : public Handler {
public:
    /** @param manager must outlive the handler */
    explicit XmlHandler(ObjectManager& manager)
        : m_manager(manager) {}

    const char* contentType() const override { return "application/xml; charset=\"utf-8\""; }
    OperationReply handle(std::string_view request, Access access,
                          const Announcement& announced = Announcement()) const override;

private:
    ObjectManager& m_manager;
};

} // namespace cimom
#endif
