// The traces of appending and converting.
#include "OW_CIMInstance.hpp"
#include "OW_CIMProperty.hpp"
#include "OW_CIMValue.hpp"

#include "owb.h"

#include "Instances.hpp"
#include "TestQueue.hpp"
#include "TraceLog.hpp"

#include <gtest/gtest.h>

namespace {

using namespace OpenWBEM;

TEST(QueueTrace, AnAppendedItemIsTracedWithTheNewSize) {
    TraceLog trace;
    trace.run([] {
        TestQueue q;
        OWB_itemAdd(q.head(), 0, 1, 2, 3, "K70");
        OWB_itemAdd(q.head(), 99, 1, 2, 3, "");
    });
    EXPECT_EQ(
        (Lines{
            "../../owb/src/OWB_getInstanceData.cpp:OWB_itemAdd:197: Add item 1: 'Model' group: 0 nom: 1 row: "
            "2 array: 3 val 'K70'",
            "../../owb/src/OWB_getInstanceData.cpp:OWB_itemAdd:197: Add item 2: 'NOT FOUND' group: 99 nom: 1 "
            "row: 2 array: 3 val ''"}),
        trace.lines());
}

TEST(QueueTrace, AFailureIsTracedWithTheArguments) {
    TraceLog trace;
    trace.run([] {
        TestQueue q;
        OWB_itemAdd(nullptr, 0, 1, 2, 3, "x");
        OWB_itemAdd(q.head(), 30, 1, -2, 3, nullptr);
    });
    EXPECT_EQ(
        (Lines{
            "../../owb/src/OWB_getInstanceData.cpp:OWB_itemAdd:203: Failed to add item: 'Model' group: 0 "
            "nominator: 1 row: 2 array: 3",
            "../../owb/src/OWB_getInstanceData.cpp:OWB_itemAdd:203: Failed to add item: 'LocnXruType' group: "
            "30 nominator: 1 row: -2 array: 3"}),
        trace.lines());
}

Lines tracedBy(long group, std::initializer_list<CIMProperty> properties) {
    TraceLog trace;
    trace.run([&] {
        TestQueue q;
        CIMInstance instance = instanceOf(properties);
        OWB_getInstanceData(group, instance, 0, q.head());
    });
    return trace.lines();
}

std::string line(const std::string& message) {
    return "../../owb/src/OWB_getInstanceData.cpp:OWB_getInstanceData:" + message;
}

TEST(InstanceDataTrace, HasTheNumberOfProperties) {
    EXPECT_EQ(Lines{line("229: got array of properties - size: 0")}, tracedBy(0, {}));
}

TEST(InstanceDataTrace, NamesANullProperty) {
    EXPECT_EQ((Lines{line("229: got array of properties - size: 1"), line("240: ERROR: prop == NULL")}),
              tracedBy(0, {CIMProperty(CIMNULL)}));
}

TEST(InstanceDataTrace, NamesAnUnknownPropertyInTheCaseOfTheInstance) {
    EXPECT_EQ((Lines{line("229: got array of properties - size: 1"), line("263: Not handled: 'modeL2'")}),
              tracedBy(0, {CIMProperty("modeL2", CIMValue("x"))}));
}

TEST(InstanceDataTrace, WarnsOfANullValueInTheCaseOfTheInstance) {
    EXPECT_EQ((Lines{line("229: got array of properties - size: 1"),
                     line("328: WARNING: value for property modeL is invalid")}),
              tracedBy(0, {CIMProperty("modeL", CIMDataType(CIMDataType::STRING, -1))}));
}

TEST(InstanceDataTrace, NamesAnArrayInTheCaseOfTheTableAndReportsAnUnsupportedType) {
    EXPECT_EQ((Lines{line("229: got array of properties - size: 1"),
                     line("273: Property 'Model' is an array"), line("316: array type not handled")}),
              tracedBy(0, {CIMProperty("modeL", CIMValue(arrayOf<UInt32>({1})))}));
}

TEST(InstanceDataTrace, NamesAnEmptyArrayOnly) {
    EXPECT_EQ(
        (Lines{line("229: got array of properties - size: 1"), line("273: Property 'Model' is an array")}),
        tracedBy(0, {CIMProperty("Model", CIMValue(StringArray()))}));
}

TEST(InstanceDataTrace, ShowsTheItemsBetweenTheProperties) {
    EXPECT_EQ((Lines{line("229: got array of properties - size: 2"),
                     "../../owb/src/OWB_getInstanceData.cpp:OWB_itemAdd:197: Add item 1: 'Model' group: 0 "
                     "nom: 1 row: 0 "
                     "array: 0 val 'm'",
                     line("263: Not handled: 'X'")}),
              tracedBy(0, {CIMProperty("Model", CIMValue("m")), CIMProperty("X", CIMValue("x"))}));
}

} // namespace
