#ifndef OW_CIMNULL_HPP_INCLUDED
#define OW_CIMNULL_HPP_INCLUDED
#include "OW_config.h"

namespace OpenWBEM {

/** Tag that constructs the null object of a CIM type: `CIMInstance(CIMNULL)`. */
enum CIMNULL_t { CIMNULL };

} // namespace OpenWBEM
#endif
