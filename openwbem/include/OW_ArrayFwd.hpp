#ifndef OW_ARRAY_FWD_HPP_INCLUDED
#define OW_ARRAY_FWD_HPP_INCLUDED
#include "OW_config.h"

namespace OpenWBEM {

/** Copy-on-write vector, defined in OW_Array.hpp. */
template <class T>
class Array;

} // namespace OpenWBEM
#endif
