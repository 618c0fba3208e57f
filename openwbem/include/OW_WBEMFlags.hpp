#ifndef OW_WBEM_FLAGS_HPP_INCLUDED
#define OW_WBEM_FLAGS_HPP_INCLUDED
#include "OW_config.h"

namespace OpenWBEM {

/** Flags of the CIM operations (DSP0200); integers do not convert to them. */
namespace WBEMFlags {

enum EDeepFlag { E_SHALLOW = 0, E_DEEP = 1 };
enum ELocalOnlyFlag { E_NOT_LOCAL_ONLY = 0, E_LOCAL_ONLY = 1 };
enum EIncludeQualifiersFlag { E_EXCLUDE_QUALIFIERS = 0, E_INCLUDE_QUALIFIERS = 1 };
enum EIncludeClassOriginFlag { E_EXCLUDE_CLASS_ORIGIN = 0, E_INCLUDE_CLASS_ORIGIN = 1 };
enum EEnumSubclassesFlag { E_DONT_ENUM_SUBCLASSES = 0, E_ENUM_SUBCLASSES = 1 };
enum EOperationResultFlag { E_FAILED = 0, E_SUCCESS = 1 };

} // namespace WBEMFlags
} // namespace OpenWBEM
#endif
