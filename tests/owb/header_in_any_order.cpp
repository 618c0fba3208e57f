// The public header before and after those of the client library, within extern "C", and without them: it
// declares all functions for a C++ agent.
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
