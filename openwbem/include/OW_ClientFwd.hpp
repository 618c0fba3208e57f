#ifndef OW_CLIENT_FWD_HPP_INCLUDED
#define OW_CLIENT_FWD_HPP_INCLUDED
#include "OW_IfcsFwd.hpp"
#include "OW_config.h"

namespace OpenWBEM {

class CIMClient;

} // namespace OpenWBEM
#endif
