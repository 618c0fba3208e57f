/* An agent in C89: compiles the header, walks the queue, frees items. Exits with 0 if all checks pass. */
#include "owb.h"

typedef char time_unit_is_signed[(OWB_TIME_UNIT)-1 < 0 ? 1 : -1];

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static int failures = 0;

static void check(int condition, const char* what) {
    if (!condition) {
        fprintf(stderr, "c_agent: %s\n", what);
        ++failures;
    }
}

static void freeItems(_qHead* q) {
    _qItem* item = q->first;
    while (item != (_qItem*)q) {
        _qItem* next = item->next;
        free(item->val);
        free(item);
        item = next;
    }
}

int main(void) {
    _qHead queue;
    const ExtItem* row = ExtItemList;
    char path[] = "QAV_System.Name=\"host\"";
    char date[] = "19700101000001.000000+000";
    char interval[] = "00000000000100.500000:000";

    queue.first = queue.last = queue.cursor = (_qItem*)&queue;
    queue.size = 0;
    queue.agent = 0;
    check(OWB_itemAdd(&queue, 0, 1, 2, 3, "-5") == 1, "an item is added");
    check(OWB_itemExists(&queue, 0, 1, 2, 3) == 1 && queue.cursor == queue.first, "the item is found");
    check(queue.first->lval == -5 && queue.first->uval == (unsigned long)-5L, "its numbers are read");
    check(OWB_getGroup(OWB_MAX_GROUP + 1, &queue) == OWB_BAD_ARGUMENT, "a bad group is rejected");
    check(OWB_setGroup(OWB_MAX_GROUP + 1, &queue) == OWB_BAD_ARGUMENT, "a bad group is not written");
    check(OWB_getInstance(2, path, -1, &queue) == OWB_BAD_ARGUMENT, "a bad row is rejected");
    check(OWB_calcTimeEpoch(date) == 1, "a date is converted");
    check(OWB_calcTimeInterval(interval, OWB_TIME_HUNDREDTHS) == 6050, "an interval is converted");
    check(strcmp(OWB_propertyName(0, 1), "Model") == 0, "a property has a name");
    check(strcmp(ExtGroupCimClass[4], "QAV_OperatingSystem") == 0, "a group has a class");
    check(strcmp(ExtCimKeyArray[0][0].name, "Tag") == 0, "a group has keys");
    while (row->group >= 0)
        ++row;
    check(row - ExtItemList == 216, "the table has 216 rows");
    check(OWB_URLSet("owbinary.wbem://localhost:x") == 1 && owbUrl_p == OWB_URLGet(), "the URL is set");
    check(strcmp(OWB_version(NULL, NULL), "v1.12") == 0, "the version is known");
    OWB_Debug((char*)"c_agent.c", (char*)"main", 1UL, (char*)"%s\n", "traced");
    freeItems(&queue);
    return failures != 0;
}
