/*
 * A small agent: reads a group from a CIM object manager through libowb, converts its times, writes one
 * value, and reads one object by its path.
 *
 *     agent [URL] [CONTACT]
 *
 * URL selects the object manager; the default is the environment variable OWB_URL, then the default of the
 * library. CONTACT becomes the contact of the host (PrimaryOwnerContact of its QAV_System).
 */
#include <owb.h>

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

/* The groups and nominators that this agent uses; `owbctl groups` lists all. */
enum { SYSTEM = 2, SYSTEM_CONTACT = 3 };
enum { OPERATING_SYSTEM = 4, LAST_BOOT_UP_TIME = 0, LOCAL_DATE_TIME = 1 };
enum { NETWORK_PORT_LINKS = 8, DEPENDENT = 0 };
enum { NETWORK_INTERFACES = 9 };

/* Sets up an empty queue: first and last point to the head. */
static void setUp(_qHead* queue) {
    queue->first = queue->last = queue->cursor = (_qItem*)queue;
    queue->size = 0;
    queue->agent = 0;
}

/* Frees all items, each with its text. Leaves an empty queue. */
static void freeItems(_qHead* queue) {
    _qItem* item = queue->first;
    while (item != (_qItem*)queue) {
        _qItem* const next = item->next;
        free(item->val);
        free(item);
        item = next;
    }
    setUp(queue);
}

static void printItems(const _qHead* queue) {
    const _qItem* item;
    for (item = queue->first; item != (const _qItem*)queue; item = item->next)
        printf("  row %ld  %s = %s\n", item->row, OWB_propertyName(item->group, item->nom), item->val);
}

/* The text of a value, or null: a property without a value has no item. */
static char* valueOf(_qHead* queue, long group, long nom, long row) {
    return OWB_itemExists(queue, group, nom, row, 0) ? queue->cursor->val : NULL;
}

/* Whether a request succeeded; prints an error if not. */
static int isDone(const char* request, long status) {
    const char* why = "unknown status";
    switch (status) {
    case OWB_DONE:
        return 1;
    case OWB_NO_INSTANCE:
        why = "no instance";
        break;
    case OWB_BAD_ARGUMENT:
        why = "bad argument";
        break;
    case OWB_NO_CONNECTION:
        why = "no connection";
        break;
    case OWB_EXCEPTION: /* no connection, or an error response; the trace says which, see owb.h */
        why = "request failed";
        break;
    }
    fprintf(stderr, "agent: cannot %s: %s (status %ld)\n", request, why, status);
    return 0;
}

/* Reads a group, prints it, and converts its times to numbers. */
static int showOperatingSystem(_qHead* queue) {
    char* boot;
    char* now;
    if (!isDone("read operating system", OWB_getGroup(OPERATING_SYSTEM, queue)))
        return 0;
    printf("%s:\n", ExtGroupCimClass[OPERATING_SYSTEM]);
    printItems(queue);
    boot = valueOf(queue, OPERATING_SYSTEM, LAST_BOOT_UP_TIME, 0);
    now = valueOf(queue, OPERATING_SYSTEM, LOCAL_DATE_TIME, 0);
    if (boot && now) /* both texts contain the offset from UTC, so the difference holds in any time zone */
        printf("Up for %ld seconds, since %ld.\n", OWB_calcTimeEpoch(now) - OWB_calcTimeEpoch(boot),
               OWB_calcTimeEpoch(boot));
    freeItems(queue);
    return 1;
}

/* The format of an interval: days, hours, minutes, seconds, microseconds. */
static void showInterval(void) {
    char interval[] = "00000001020304.500000:000";
    printf("%s is %ld seconds, or %ld hundredths.\n", interval,
           OWB_calcTimeInterval(interval, OWB_TIME_SECONDS),
           OWB_calcTimeInterval(interval, OWB_TIME_HUNDREDTHS));
}

/* OWB_setGroup() reports only that it sent the value, so the agent reads it again. */
static int writeContact(_qHead* queue, const char* contact) {
    const char* current;
    int isWritten;
    if (!OWB_itemAdd(queue, SYSTEM, SYSTEM_CONTACT, 0, 0, contact)) {
        fprintf(stderr, "agent: cannot write contact: out of memory\n");
        return 0;
    }
    if (!isDone("write contact", OWB_setGroup(SYSTEM, queue)))
        return 0;
    freeItems(queue);
    if (!isDone("read contact", OWB_getGroup(SYSTEM, queue)))
        return 0;
    current = valueOf(queue, SYSTEM, SYSTEM_CONTACT, 0);
    isWritten = current && strcmp(current, contact) == 0;
    if (isWritten)
        printf("The contact is now %s.\n", current);
    else
        fprintf(stderr, "agent: cannot write contact: rejected, current %s\n", current ? current : "not set");
    freeItems(queue);
    return isWritten;
}

/* Reads the object of a reference: the value of a reference is the path of an object. */
static int showFirstInterface(_qHead* queue) {
    _qHead links;
    char* path;
    int isRead = 0;
    setUp(&links);
    if (isDone("read network port links", OWB_getGroup(NETWORK_PORT_LINKS, &links))) {
        path = valueOf(&links, NETWORK_PORT_LINKS, DEPENDENT, 0);
        if (!path) {
            puts("There is no network interface.");
            isRead = 1;
        } else if (isDone("read network interface", OWB_getInstance(NETWORK_INTERFACES, path, 0, queue))) {
            printf("%s:\n", path);
            printItems(queue);
            isRead = 1;
        }
        freeItems(queue);
    }
    freeItems(&links);
    return isRead;
}

int main(int argc, char** argv) {
    const char* contact = NULL;
    _qHead queue;
    int isDoneAll;
    int i;

    OWB_URLSet(getenv("OWB_URL")); /* null keeps the default */
    for (i = 1; i < argc; ++i) {
        if (strstr(argv[i], "://"))
            OWB_URLSet(argv[i]);
        else
            contact = argv[i];
    }
    printf("libowb %s, object manager at %s\n", OWB_version(NULL, NULL), OWB_URLGet());

    setUp(&queue);
    isDoneAll = showOperatingSystem(&queue);
    showInterval();
    if (isDoneAll && contact)
        isDoneAll = writeContact(&queue, contact);
    if (isDoneAll)
        isDoneAll = showFirstInterface(&queue);
    freeItems(&queue); /* a failed request may have appended items */
    return isDoneAll ? EXIT_SUCCESS : EXIT_FAILURE;
}
