#ifndef OW_CIMINSTANCE_ENUMERATION_HPP_INCLUDED
#define OW_CIMINSTANCE_ENUMERATION_HPP_INCLUDED
#include "OW_CIMFwd.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_Enumeration.hpp"
#endif
