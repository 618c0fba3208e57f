#ifndef OW_ARRAY_IMPL_HPP_INCLUDED
#define OW_ARRAY_IMPL_HPP_INCLUDED
// Exists for sources that include it; OW_Array.hpp defines the members, too.
#include "OW_Array.hpp"
#endif
