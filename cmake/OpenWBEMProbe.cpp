// Uses all that the bridge needs of a client library; FindOpenWBEM.cmake compiles and links it.
#if __has_include(<OW_vector.hpp>)
#include <OW_vector.hpp>
#endif
#include <OW_Array.hpp>
#include <OW_CIMClass.hpp>
#include <OW_CIMClient.hpp>
#include <OW_CIMDataType.hpp>
#include <OW_CIMDateTime.hpp>
#include <OW_CIMFwd.hpp>
#include <OW_CIMInstance.hpp>
#include <OW_CIMInstanceEnumeration.hpp>
#include <OW_CIMName.hpp>
#include <OW_CIMObjectPath.hpp>
#include <OW_CIMProperty.hpp>
#include <OW_CIMValue.hpp>
#include <OW_ClientAuthCBIFC.hpp>
#include <OW_DateTime.hpp>
#include <OW_Exception.hpp>
#include <OW_String.hpp>
#include <OW_Types.hpp>
#include <OW_URL.hpp>
#include <OW_WBEMFlags.hpp>

using namespace OpenWBEM;

namespace {

struct Process {
    String name;
    Array<String> parameters;
};

Array<Process> processes() {
    Array<Process> result;
    result.push_back(Process());
    result[0].parameters.push_back(String("-x"));
    return result;
}

bool isKnown(CIMValue value) {
    Array<UInt16> numbers;
    if (value.isArray() && value.getType() == CIMDataType::UINT16)
        value.get(numbers);
    return value && numbers.size() == 0 && !value.toString().empty();
}

void write(CIMClient& client, const CIMInstance& old) {
    CIMInstance changed = CIMClass(CIMName(old.getClassName())).newInstance();
    changed.setProperty(CIMName("Name"), old.getPropertyValue("Name"));
    client.modifyInstance(changed);
}

long read() {
    CIMClient client(URL(String("ipc://localhost")).host, "root", ClientAuthCBIFCRef());
    CIMInstanceEnumeration found =
        client.enumInstancesE("Any", WBEMFlags::E_DEEP, WBEMFlags::E_NOT_LOCAL_ONLY);
    while (found.hasMoreElements())
        write(client, found.nextElement());
    const CIMInstance instance = client.getInstance(CIMObjectPath::parse("Any.Name=\"x\""));
    const CIMPropertyArray properties = instance.getProperties(CIMDataType::INVALID);
    for (CIMPropertyArray::const_iterator i = properties.begin(); i != properties.end(); ++i)
        if (*i && isKnown(i->getValue()))
            return static_cast<long>(i->getName().length());
    return static_cast<long>(DateTime(String("19700101000000.000000+000")).get()) +
           static_cast<long>(CIMDateTime(String("00000001000000.000000:000")).getDays());
}

} // namespace

int main() {
    try {
        return read() != 0 && processes().size() == 1 ? 0 : 1;
    } catch (const Exception& e) {
        return e.getLine() + *e.type() + *e.getFile() + *e.getMessage();
    }
}
