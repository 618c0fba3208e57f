#ifndef OW_CIMFWD_HPP_INCLUDED
#define OW_CIMFWD_HPP_INCLUDED
#include "OW_CommonFwd.hpp"

namespace OpenWBEM {

class CIMBase;
class CIMElement;
class CIMName;
class CIMDataType;
class CIMDateTime;
class CIMValue;
class CIMProperty;
class CIMClass;
class CIMInstance;
class CIMObjectPath;

typedef Array<CIMName> CIMNameArray;
typedef Array<CIMDataType> CIMDataTypeArray;
typedef Array<CIMDateTime> CIMDateTimeArray;
typedef Array<CIMValue> CIMValueArray;
typedef Array<CIMProperty> CIMPropertyArray;
typedef Array<CIMClass> CIMClassArray;
typedef Array<CIMInstance> CIMInstanceArray;
typedef Array<CIMObjectPath> CIMObjectPathArray;

typedef Enumeration<CIMInstance> CIMInstanceEnumeration;
typedef Enumeration<CIMObjectPath> CIMObjectPathEnumeration;
typedef Enumeration<CIMClass> CIMClassEnumeration;

} // namespace OpenWBEM
#endif
