/* The conversion of one CIM instance into items. */
#include "OW_Array.hpp"
#include "OW_CIMDataType.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMProperty.hpp"
#include "OW_CIMValue.hpp"
#include "OW_Exception.hpp"
#include "OW_String.hpp"
#include "OW_Types.hpp"

#include "owb.h"

#include "OWB_trace.hpp"

#include <cstdio>

using namespace OpenWBEM;

namespace {

const char traceFile[] = "../../owb/src/OWB_getInstanceData.cpp";

/* The rows of ExtItemList for a group, which stand together; the end of the list for a group without rows. */
const ExtItem* rowsOf(long group) {
    const ExtItem* row = ExtItemList;
    while (row->group >= 0 && row->group != group)
        ++row;
    return row;
}

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

/* Whether two names are the same but for their case. The table is ASCII, and strcasecmp() would ask the
 * agent's locale: in a Turkish one "I" is no capital "i". */
bool isSameName(const char* a, const char* b) {
    while (*a && lower(*a) == lower(*b)) {
        ++a;
        ++b;
    }
    return *a == *b;
}

/* The first of a group's rows for a property name, or null. */
const ExtItem* findProperty(const ExtItem* rows, const char* name) {
    for (const ExtItem* row = rows; row->group >= 0 && row->group == rows->group; ++row)
        if (isSameName(name, row->property))
            return row;
    return NULL;
}

/* Where the values of one property go. */
struct Target {
    _qHead* queue;
    long group;
    long nom;
    long row;

    void add(long array, const char* text) const { OWB_itemAdd(queue, group, nom, row, array, text); }
};

void addElement(const Target& target, long array, UInt16 element) {
    char text[128];
    std::snprintf(text, sizeof text, "%u", static_cast<unsigned>(element));
    target.add(array, text);
}

void addElement(const Target& target, long array, UInt64 element) {
    char text[128];
    std::snprintf(text, sizeof text, "%llu", static_cast<unsigned long long>(element));
    target.add(array, text);
}

void addElement(const Target& target, long array, const String& element) {
    target.add(array, element.c_str());
}

template <class Element>
void addElements(const CIMValue& value, const Target& target) {
    Array<Element> taken;
    value.get(taken);
    const Array<Element>& elements = taken; /* reading through const takes no copy of shared elements */
    for (size_t i = 0; i < elements.size(); ++i)
        addElement(target, static_cast<long>(i), elements[i]);
}

void addArray(const CIMValue& value, const Target& target) {
    switch (value.getType()) {
    case CIMDataType::UINT16:
        addElements<UInt16>(value, target);
        break;
    case CIMDataType::UINT64:
        addElements<UInt64>(value, target);
        break;
    case CIMDataType::STRING:
        addElements<String>(value, target);
        break;
    default:
        OWB_TRACE("OWB_getInstanceData", 316, "array type not handled\n");
    }
}

void addProperty(const CIMProperty& property, const ExtItem* rows, long row, _qHead* q) {
    if (!property) {
        OWB_TRACE("OWB_getInstanceData", 240, "ERROR: prop == NULL\n");
        return;
    }
    const String name = property.getName();
    const ExtItem* const known = findProperty(rows, name.c_str());
    if (!known) {
        OWB_TRACE("OWB_getInstanceData", 263, "Not handled: '%s'\n", name.c_str());
        return;
    }
    const CIMValue value = property.getValue();
    if (!value) {
        OWB_TRACE("OWB_getInstanceData", 328, "WARNING: value for property %s is invalid\n", name.c_str());
        return;
    }
    const Target target = {q, known->group, known->nom, row};
    if (!value.isArray()) {
        target.add(0, value.toString().c_str());
        return;
    }
    OWB_TRACE("OWB_getInstanceData", 273, "Property '%s' is an array\n", known->property);
    addArray(value, target);
}

} // namespace

int OWB_getInstanceData(long group, CIMInstance& instance, long row, _qHead* q) {
    int result = OWB_DONE;
    const CIMPropertyArray properties = instance.getProperties(CIMDataType::INVALID);
    OWB_TRACE("OWB_getInstanceData", 229, "got array of properties - size: %i\n",
              static_cast<int>(properties.size()));
    const ExtItem* const rows = rowsOf(group);
    for (CIMPropertyArray::const_iterator it = properties.begin(); it != properties.end(); ++it) {
        try {
            addProperty(*it, rows, row, q);
        } catch (const Exception& e) {
            OWB_TRACE_EXCEPTION("OWB_getInstanceData", 337, "ERROR", e);
            result = OWB_EXCEPTION;
        }
    }
    return result;
}
