/* The URL of the object manager, and the one client that all calls share. */
#include "OW_CIMClient.hpp"
#include "OW_ClientAuthCBIFC.hpp"

#include "owb.h"

#include "OWB_trace.hpp"

#include <cstdlib>
#include <cstring>

using namespace OpenWBEM;

extern "C" {

char* owbUrl_p = NULL;
}

namespace {

/* Readers of logs know the lines of the connection by this file. */
const char traceFile[] = "../../owb/src/OWB_getGroup.cpp";
const char defaultUrl[] = "owbinary.wbem://localhost:%2ftmp%2fOpenWBEM_UDS";
const char cimNameSpace[] = "/root/cimv2";

} // namespace

extern "C" long OWB_URLSet(const char* url) {
    if (!url)
        return 1;
    char* const copy = strdup(url); /* before the old text goes: url may be that text */
    if (!copy)
        return 1;
    std::free(owbUrl_p);
    owbUrl_p = copy;
    OWB_TRACE("OWB_URLSet", 149, "Set URL: '%s'\n", owbUrl_p);
    return 1;
}

extern "C" const char* OWB_URLGet(void) {
    return owbUrl_p ? owbUrl_p : defaultUrl;
}

CIMClient* OWB_connect(unsigned char kill) {
    static CIMClient* owbCIMClient_p = NULL;
    if (kill && owbCIMClient_p) {
        OWB_TRACE("OWB_connect", 190, "kill\n");
        delete owbCIMClient_p;
        owbCIMClient_p = NULL;
    }
    if (owbCIMClient_p) {
        OWB_TRACE("OWB_connect", 211, "use existing connection\n");
        return owbCIMClient_p;
    }
    OWB_TRACE("OWB_connect", 206, "new connection, URL: %s namespace: %s\n", OWB_URLGet(), cimNameSpace);
    owbCIMClient_p = new CIMClient(OWB_URLGet(), cimNameSpace, ClientAuthCBIFCRef());
    return owbCIMClient_p;
}
