#include "protocol/Handler.hpp"

#include "OW_CIMException.hpp"

namespace cimom {

using OpenWBEM::CIMException;

OperationError operationError(const std::exception& e) {
    const auto* const cim = dynamic_cast<const CIMException*>(&e);
    if (!cim)
        return {CIMException::FAILED, e.what()};
    const char* const description = cim->getDescription();
    return {static_cast<unsigned>(cim->getErrNo()), description ? description : ""};
}

} // namespace cimom
