// The items of an instance with arbitrary names, types and texts, with the trace enabled.
#if __has_include("OW_vector.hpp") // an Array of numbers needs it before OW_Array.hpp
#include "OW_vector.hpp"
#endif
#include "OW_Array.hpp"
#include "OW_Bool.hpp"
#include "OW_CIMClient.hpp"
#include "OW_CIMDateTime.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMName.hpp"
#include "OW_CIMObjectPath.hpp"
#include "OW_CIMProperty.hpp"
#include "OW_CIMValue.hpp"
#include "OW_Char16.hpp"
#include "OW_Exception.hpp"
#include "OW_String.hpp"
#include "OW_Types.hpp"

#include "support/Bytes.hpp"
#include "support/Directory.hpp"

#include <owb.h>

#include <cstdlib>
#include <unistd.h>

using namespace OpenWBEM;

namespace {

/** Enables the trace of this process, to /dev/null. */
bool enableTrace() {
    const fuzz::Directory directory;
    directory.write("vdxDebug", "/dev/null\n");
    if (::chdir(directory.path().c_str()) != 0)
        std::abort();
    OWB_URLSet("owbinary.wbem://localhost:%2fnowhere");
    return ::chdir("/") == 0;
}

String text(fuzz::Bytes& bytes) {
    const std::string taken = bytes.text();
    return String(taken.data(), taken.size());
}

template <class Element, class Make>
CIMValue arrayOf(fuzz::Bytes& bytes, Make make) {
    Array<Element> elements;
    for (std::uint8_t count = bytes.next() % 8; count > 0; --count)
        elements.append(make());
    return CIMValue(elements);
}

CIMValue value(fuzz::Bytes& bytes) {
    switch (bytes.next() % 18) {
    case 0:
        return CIMValue(text(bytes));
    case 1:
        return CIMValue(static_cast<UInt8>(bytes.next()));
    case 2:
        return CIMValue(static_cast<Int8>(bytes.next()));
    case 3:
        return CIMValue(static_cast<UInt16>(bytes.number()));
    case 4:
        return CIMValue(static_cast<Int16>(bytes.number()));
    case 5:
        return CIMValue(static_cast<UInt32>(bytes.number()));
    case 6:
        return CIMValue(static_cast<Int32>(bytes.number()));
    case 7:
        return CIMValue(static_cast<UInt64>(bytes.number()));
    case 8:
        return CIMValue(static_cast<Int64>(bytes.number()));
    case 9:
        return CIMValue(bytes.real());
    case 10:
        return CIMValue(static_cast<Real32>(bytes.real()));
    case 11:
        return CIMValue(Bool(bytes.next() % 2 != 0));
    case 12:
        return CIMValue(CIMDateTime(text(bytes)));
    case 13:
        return CIMValue(Char16(static_cast<UInt16>(bytes.number())));
    case 14:
        return arrayOf<String>(bytes, [&bytes] { return text(bytes); });
    case 15:
        return arrayOf<UInt16>(bytes, [&bytes] { return static_cast<UInt16>(bytes.number()); });
    case 16:
        return arrayOf<UInt64>(bytes, [&bytes] { return static_cast<UInt64>(bytes.number()); });
    default:
        return CIMValue(CIMObjectPath(text(bytes), "root"));
    }
}

/** Usually a name of the group. */
String name(fuzz::Bytes& bytes, long group) {
    const std::uint8_t choice = bytes.next();
    std::uint8_t index = 0;
    for (const ExtItem& item : ExtItemList) {
        if (item.group == group && index++ == choice)
            return item.property;
    }
    return text(bytes);
}

CIMInstance instance(fuzz::Bytes& bytes, long group) {
    CIMInstance result(CIMName("QAV_Any"));
    while (!bytes.isEmpty()) {
        const CIMProperty property(CIMName(name(bytes, group)), value(bytes));
        result.setProperty(property);
    }
    return result;
}

void check(bool is) {
    if (!is)
        std::abort();
}

/** Frees the items of a queue and checks its links. */
void release(_qHead& queue) {
    _qItem* const end = reinterpret_cast<_qItem*>(&queue);
    long count = 0;
    for (_qItem* item = queue.first; item != end; ++count) {
        _qItem* const next = item->next;
        check(next->prev == item);
        std::free(item->val);
        std::free(item);
        item = next;
    }
    check(count == queue.size);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const bool isTracing = enableTrace();
    check(isTracing);
    fuzz::Bytes bytes(data, size);
    const long group = bytes.next() % (OWB_MAX_GROUP + 1);
    _qHead queue{};
    queue.first = queue.last = queue.cursor = reinterpret_cast<_qItem*>(&queue);
    try {
        CIMInstance any = instance(bytes, group);
        OWB_getInstanceData(group, any, 0, &queue);
    } catch (const Exception&) {
    }
    release(queue);
    return 0;
}
