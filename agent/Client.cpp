#include "agent/Client.hpp"

// Before owb.h, which declares functions with the client library's classes only after their headers.
#include <OW_CIMClient.hpp>
#include <OW_CIMInstance.hpp>
#include <OW_CIMInstanceEnumeration.hpp>
#include <OW_CIMObjectPath.hpp>
#include <OW_Exception.hpp>
#include <OW_String.hpp>
#include <OW_WBEMFlags.hpp>

#include <owb.h>

namespace agent {
namespace {

using namespace OpenWBEM;

template <class Request>
std::optional<Failure> failureOfRequest(Request request) {
    try {
        request();
        return std::nullopt;
    } catch (const Exception& e) {
        return failureOf({e.type(), e.getMessage()}, OWB_URLGet());
    }
}

} // namespace

std::optional<Failure> reconnect() {
    return failureOfRequest([] { OWB_connect(1); });
}

std::optional<Failure> requestInstances(const std::string& className) {
    return failureOfRequest([&className] {
        OWB_connect(0)->enumInstancesE(className.c_str(), WBEMFlags::E_DEEP, WBEMFlags::E_NOT_LOCAL_ONLY,
                                       WBEMFlags::E_EXCLUDE_QUALIFIERS, WBEMFlags::E_EXCLUDE_CLASS_ORIGIN,
                                       NULL);
    });
}

std::optional<Failure> requestInstance(const std::string& path) {
    return failureOfRequest([&path] {
        OWB_connect(0)->getInstance(CIMObjectPath::parse(String(path.c_str())), WBEMFlags::E_NOT_LOCAL_ONLY,
                                    WBEMFlags::E_EXCLUDE_QUALIFIERS, WBEMFlags::E_EXCLUDE_CLASS_ORIGIN, NULL);
    });
}

} // namespace agent
