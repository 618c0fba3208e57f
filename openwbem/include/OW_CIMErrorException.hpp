#ifndef OW_CIM_ERROR_EXCEPTION_HPP_INCLUDED
#define OW_CIM_ERROR_EXCEPTION_HPP_INCLUDED
#include "OW_Exception.hpp"

namespace OpenWBEM {

/** The object manager reported a protocol error (DSP0200, header CIMError). */
OW_DECLARE_EXCEPTION(CIMError)

} // namespace OpenWBEM
#endif
