// The public header before the client library's, after them, within extern "C" and alone: a C++ agent has all
// functions.
#if defined(OWB_FIRST)
#include "OW_CIMClient.hpp"
#include "owb.h"
#elif defined(OWB_LAST)
#include "OW_CIMInstance.hpp"
#include "owb.h"
#elif defined(OWB_WITHIN_EXTERN_C)
extern "C" {
#include "owb.h"
}
#else
#include "owb.h"
#endif

OpenWBEM::CIMClient* (*volatile connect)(unsigned char) = OWB_connect;
int (*volatile instanceData)(long, OpenWBEM::CIMInstance&, long, _qHead*) = OWB_getInstanceData;

int main() {
    return connect != nullptr && instanceData != nullptr ? 0 : 1;
}
