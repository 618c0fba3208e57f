#include "agent/Connection.hpp"

// Before owb.h, which then declares what takes the client library's classes.
#include <OW_CIMClient.hpp>
#include <OW_Exception.hpp>

#include <owb.h>

namespace owbctl {

std::string connectAnew() {
    try {
        OWB_connect(1);
        return std::string();
    } catch (const OpenWBEM::Exception& reason) {
        return std::string(reason.type()) + ": " + reason.getMessage();
    }
}

} // namespace owbctl
