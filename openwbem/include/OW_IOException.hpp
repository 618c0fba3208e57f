#ifndef OW_IO_EXCEPTION_HPP_INCLUDED
#define OW_IO_EXCEPTION_HPP_INCLUDED
#include "OW_Exception.hpp"

namespace OpenWBEM {

/** A reply cannot be read or decoded, or the object manager reported an error without a CIM code. */
OW_DECLARE_EXCEPTION(IO)

/** An object has an unexpected signature or version. Clients throw it as a plain IOException. */
OW_DECLARE_EXCEPTION2(BadCIMSignature, IOException)

} // namespace OpenWBEM
#endif
