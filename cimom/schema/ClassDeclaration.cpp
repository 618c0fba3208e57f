#include "schema/ClassDeclaration.hpp"

#include "OW_CIMException.hpp"
#include "OW_CIMValueCast.hpp"

#include <algorithm>

namespace cimom {

using namespace OpenWBEM;

namespace {

/**
 * Whether a conversion keeps the meaning of a value. CIMValueCast also makes texts of objects and takes the
 * first element of an array; neither is what a client means.
 */
bool isConvertible(const CIMValue& value, const PropertyDeclaration& declared) {
    switch (value.getType()) {
    case CIMDataType::REFERENCE:
    case CIMDataType::EMBEDDEDCLASS:
    case CIMDataType::EMBEDDEDINSTANCE:
        return value.getType() == declared.type;
    default:
        return declared.isArray || !value.isArray();
    }
}

} // namespace

CIMDataType PropertyDeclaration::dataType() const {
    const Int32 anySize = -1;
    if (type == CIMDataType::REFERENCE)
        return CIMDataType(CIMName(referenceClass));
    return isArray ? CIMDataType(type, anySize) : CIMDataType(type);
}

CIMValue PropertyDeclaration::converted(const CIMValue& value) const {
    if (value && !isConvertible(value, *this)) {
        const String why = String(name) + ": a value of another kind";
        OW_THROWCIMMSG(CIMException::TYPE_MISMATCH, why.c_str());
    }
    try {
        return CIMValueCast::castValueToDataType(value, dataType());
    } catch (const Exception& e) {
        const String why = String(name) + ": " + e.getMessage();
        OW_THROWCIMMSG_SUBEX(CIMException::TYPE_MISMATCH, why.c_str(), e);
    }
}

const PropertyDeclaration* ClassDeclaration::find(const CIMName& property) const {
    const auto found =
        std::find_if(properties.begin(), properties.end(), [&property](const PropertyDeclaration& declared) {
            return property == CIMName(declared.name);
        });
    return found == properties.end() ? nullptr : &*found;
}

} // namespace cimom
