/* The group read. */
#include "OW_CIMClient.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMInstanceEnumeration.hpp"
#include "OW_Exception.hpp"
#include "OW_WBEMFlags.hpp"

#include "owb.h"

#include "OWB_trace.hpp"

using namespace OpenWBEM;

namespace {

const char traceFile[] = "../../owb/src/OWB_getGroup.cpp";

/* Appends all instances of a class, numbered from 0. */
void readInstances(CIMClient& client, long group, const char* className, _qHead* q) {
    CIMInstanceEnumeration instances =
        client.enumInstancesE(className, WBEMFlags::E_DEEP, WBEMFlags::E_NOT_LOCAL_ONLY,
                              WBEMFlags::E_EXCLUDE_QUALIFIERS, WBEMFlags::E_EXCLUDE_CLASS_ORIGIN, NULL);
    CIMInstance instance;
    for (long row = 0; instances.hasMoreElements(); ++row) {
        instances.nextElement(instance);
        const int error = OWB_getInstanceData(group, instance, row, q);
        if (error != 0)
            OWB_TRACE("OWB_getGroup", 279, "ERROR: OWB_getInstanceData returned error: %d\n", error);
    }
}

} // namespace

extern "C" long OWB_getGroup(long group, _qHead* q) {
    if (static_cast<unsigned long>(group) > OWB_MAX_GROUP || !q)
        return OWB_BAD_ARGUMENT;
    const char* const className = ExtGroupCimClass[group];
    OWB_TRACE("OWB_getGroup", 250, "className: '%s' q_p->size: %ld\n", className, q->size);
    try {
        CIMClient* const client = OWB_connect(0);
        if (!client) {
            OWB_TRACE("OWB_getGroup", 263, "no client connection\n");
            return OWB_NO_CONNECTION;
        }
        readInstances(*client, group, className, q);
    } catch (const Exception& e) {
        OWB_TRACE_EXCEPTION("OWB_getGroup", 287, "ERROR", e);
        return OWB_EXCEPTION;
    }
    return OWB_DONE;
}
