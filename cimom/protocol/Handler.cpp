#include "protocol/Handler.hpp"

#include "OW_CIMException.hpp"
#include "system/Text.hpp"

namespace cimom {

using OpenWBEM::CIMException;

OperationError operationError(const std::exception& e) {
    const auto* const cim = dynamic_cast<const CIMException*>(&e);
    if (!cim)
        return {CIMException::FAILED, shortened(e.what(), maximumDescription)};
    const char* const description = cim->getDescription();
    return {static_cast<unsigned>(cim->getErrNo()),
            shortened(description ? description : "", maximumDescription)};
}

} // namespace cimom
