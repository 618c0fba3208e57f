/* The read of one instance by its path. */
#include "OW_CIMClient.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMObjectPath.hpp"
#include "OW_Exception.hpp"
#include "OW_String.hpp"
#include "OW_WBEMFlags.hpp"

#include "owb.h"

#include "OWB_trace.hpp"

using namespace OpenWBEM;

namespace {

const char traceFile[] = "../../owb/src/OWB_getInstance.cpp";

long readInstance(CIMClient& client, long group, const char* objectPath, long row, _qHead* q) {
    const CIMObjectPath path = CIMObjectPath::parse(String(objectPath));
    CIMInstance instance =
        client.getInstance(path, WBEMFlags::E_NOT_LOCAL_ONLY, WBEMFlags::E_EXCLUDE_QUALIFIERS,
                           WBEMFlags::E_EXCLUDE_CLASS_ORIGIN, NULL);
    if (!instance) {
        OWB_TRACE_TEXT("OWB_getInstance", 101, "ERROR - no instances of class found in CIMOM database.\n");
        return OWB_NO_INSTANCE;
    }
    const int error = OWB_getInstanceData(group, instance, row, q);
    if (error != 0)
        OWB_TRACE("OWB_getInstance", 95, "ERROR: OWB_getInstanceData returned error: %d\n", error);
    return error;
}

} // namespace

extern "C" long OWB_getInstance(long group, char* objectPath, long row, _qHead* q) {
    if (static_cast<unsigned long>(group) > OWB_MAX_GROUP || !q || !objectPath || row < 0)
        return OWB_BAD_ARGUMENT;
    try {
        CIMClient* const client = OWB_connect(0);
        if (!client) {
            OWB_TRACE_TEXT("OWB_getInstance", 76, "no client connection\n");
            return OWB_NO_CONNECTION;
        }
        return readInstance(*client, group, objectPath, row, q);
    } catch (const Exception& e) {
        OWB_TRACE_EXCEPTION("OWB_getInstance", 109, "ERROR", e);
        return OWB_EXCEPTION;
    }
}
