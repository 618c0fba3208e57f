// Tables of reads that failed after some rows. No answer over the wire causes that.
#include "formats/TableFormat.hpp"

#include "support/Child.hpp"
#include "support/TempDir.hpp"

#include <gtest/gtest.h>

namespace owbctl {

using namespace agent;

namespace {

std::string tableOf(const Group& group) {
    const support::TempDir directory;
    return support::inChild(directory.path(), [&group] {
        Output output;
        TableFormat format(output);
        format.writeGroup(group);
        format.endGroups();
    });
}

TEST(TableFormat, RowsThatArrivedBeforeAFailureAreShownAsIncomplete) {
    const Row row{0, {{attributesOf(2).front(), {"one"}}}};
    EXPECT_EQ(tableOf({2, "QAV_System", OWB_EXCEPTION, {row}}),
              "Group 2  QAV_System  (1 row, 1 item, incomplete)\nSystemName  one\n");
}

TEST(TableFormat, AFailureWithoutRowsIsNotShownAsAnEmptyGroup) {
    EXPECT_EQ(tableOf({2, "QAV_System", OWB_EXCEPTION, {}}), "");
}

} // namespace
} // namespace owbctl
