#ifndef OW_ARRAY_IMPL_HPP_INCLUDED
#define OW_ARRAY_IMPL_HPP_INCLUDED
// For sources that ask for the members of Array apart: here they stand with the class.
#include "OW_Array.hpp"
#endif
