#ifndef OPENWBEM_READ_OPTIONS_HPP_INCLUDED
#define OPENWBEM_READ_OPTIONS_HPP_INCLUDED
#include "OW_CommonFwd.hpp"
#include "OW_WBEMFlags.hpp"

namespace OpenWBEM {

/** The content of the instances that a read returns (DSP0200). */
struct ReadOptions {
    WBEMFlags::ELocalOnlyFlag localOnly = WBEMFlags::E_NOT_LOCAL_ONLY;
    WBEMFlags::EIncludeQualifiersFlag includeQualifiers = WBEMFlags::E_EXCLUDE_QUALIFIERS;
    WBEMFlags::EIncludeClassOriginFlag includeClassOrigin = WBEMFlags::E_EXCLUDE_CLASS_ORIGIN;
    /** Names of the properties; null means all. Not owned. */
    const StringArray* properties = nullptr;
};

} // namespace OpenWBEM
#endif
