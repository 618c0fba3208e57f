// A C++ agent that passes objects of the client library: it hands an instance over and finds the value in the
// queue.
#include <OW_CIMClient.hpp>
#include <OW_CIMInstance.hpp>
#include <OW_CIMProperty.hpp>
#include <OW_CIMValue.hpp>

#include <cstring>
#include <owb.h>

int main() {
    _qHead queue;
    queue.first = queue.last = queue.cursor = reinterpret_cast<_qItem*>(&queue);
    queue.size = 0;
    OpenWBEM::CIMInstance instance("QAV_System");
    instance.setProperty(OpenWBEM::CIMProperty("PrimaryOwnerContact", OpenWBEM::CIMValue("ops")));
    return OWB_getInstanceData(2, instance, 0, &queue) == OWB_DONE && queue.size == 1 &&
                   std::strcmp(queue.first->val, "ops") == 0
               ? 0
               : 1;
}
