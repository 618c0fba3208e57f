#include "Provider.hpp"

namespace cimom {

OpenWBEM::CIMDataType PropertyDeclaration::dataType() const {
    const OpenWBEM::Int32 anySize = -1;
    return isArray ? OpenWBEM::CIMDataType(type, anySize) : OpenWBEM::CIMDataType(type);
}

} // namespace cimom
