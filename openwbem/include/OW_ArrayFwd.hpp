#ifndef OW_ARRAY_FWD_HPP_INCLUDED
#define OW_ARRAY_FWD_HPP_INCLUDED
#include "OW_config.h"

namespace OpenWBEM {

/** Vector whose copies share their elements; with its comparisons and its swap() whole in OW_Array.hpp. */
template <class T>
class Array;

} // namespace OpenWBEM
#endif
