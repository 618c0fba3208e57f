#include "objects/Provider.hpp"

namespace cimom {

OpenWBEM::CIMDataType PropertyDeclaration::dataType() const {
    const OpenWBEM::Int32 anySize = -1;
    if (type == OpenWBEM::CIMDataType::REFERENCE)
        return OpenWBEM::CIMDataType(OpenWBEM::CIMName(referenceClass));
    return isArray ? OpenWBEM::CIMDataType(type, anySize) : OpenWBEM::CIMDataType(type);
}

} // namespace cimom
