/*
 * A small agent: reads the data of a CIM object manager through libowb, writes one value, and reads one
 * object.
 *
 *     agent [URL] [CONTACT]
 *
 * The object manager is the one at URL, or else at the URL in the environment variable OWB_URL, or else the
 * library's default. CONTACT, when given, becomes the host's contact (PrimaryOwnerContact of its QAV_System).
 */
#include <owb.h>

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

/* Groups and nominators that this agent names; `owbctl groups` lists them all. */
enum { SYSTEM = 2, SYSTEM_CONTACT = 3 };
enum { OPERATING_SYSTEM = 4, LAST_BOOT_UP_TIME = 0, LOCAL_DATE_TIME = 1 };
enum { NETWORK_PORT_LINKS = 8, DEPENDENT = 0 };
enum { NETWORK_INTERFACES = 9 };

/* An empty queue: both ends are the head itself. */
static void setUp(_qHead* queue) {
    queue->first = queue->last = queue->cursor = (_qItem*)queue;
    queue->size = 0;
    queue->agent = 0;
}

/* The items are the agent's to free, each with its text. The queue is empty afterwards. */
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

/* The text of a row's value, or null. What the object manager has no value for makes no item. */
static char* valueOf(_qHead* queue, long group, long nom, long row) {
    return OWB_itemExists(queue, group, nom, row, 0) ? queue->cursor->val : NULL;
}

/* Whether a request was carried out; says what is wrong otherwise. */
static int isDone(const char* request, long status) {
    const char* why = "unknown status";
    switch (status) {
    case OWB_DONE:
        return 1;
    case OWB_NO_INSTANCE:
        why = "the object manager gave no instance";
        break;
    case OWB_BAD_ARGUMENT:
        why = "bad argument";
        break;
    case OWB_NO_CONNECTION:
        why = "no connection";
        break;
    case OWB_EXCEPTION: /* nobody answers, or the object manager refuses: the trace tells, see owb.h */
        why = "the request failed";
        break;
    }
    fprintf(stderr, "agent: %s: %s (status %ld)\n", request, why, status);
    return 0;
}

/* Reads a group, shows it, and turns its times into numbers. */
static int showOperatingSystem(_qHead* queue) {
    char* boot;
    char* now;
    if (!isDone("reading the operating system", OWB_getGroup(OPERATING_SYSTEM, queue)))
        return 0;
    printf("%s:\n", ExtGroupCimClass[OPERATING_SYSTEM]);
    printItems(queue);
    boot = valueOf(queue, OPERATING_SYSTEM, LAST_BOOT_UP_TIME, 0);
    now = valueOf(queue, OPERATING_SYSTEM, LOCAL_DATE_TIME, 0);
    if (boot && now) /* both are local times with their offset: their difference is right in any time zone */
        printf("Up for %ld seconds, since %ld.\n", OWB_calcTimeEpoch(now) - OWB_calcTimeEpoch(boot),
               OWB_calcTimeEpoch(boot));
    freeItems(queue);
    return 1;
}

/* Lengths of time have a form of their own: days, hours, minutes, seconds, microseconds. */
static void showInterval(void) {
    char interval[] = "00000001020304.500000:000";
    printf("%s is %ld seconds, or %ld hundredths.\n", interval,
           OWB_calcTimeInterval(interval, OWB_TIME_SECONDS),
           OWB_calcTimeInterval(interval, OWB_TIME_HUNDREDTHS));
}

/* OWB_setGroup() tells that the value was sent. Whether it was taken is known from reading it again. */
static int writeContact(_qHead* queue, const char* contact) {
    const char* taken;
    int isTaken;
    if (!OWB_itemAdd(queue, SYSTEM, SYSTEM_CONTACT, 0, 0, contact)) {
        fprintf(stderr, "agent: out of memory\n");
        return 0;
    }
    if (!isDone("writing the contact", OWB_setGroup(SYSTEM, queue)))
        return 0;
    freeItems(queue);
    if (!isDone("reading the contact", OWB_getGroup(SYSTEM, queue)))
        return 0;
    taken = valueOf(queue, SYSTEM, SYSTEM_CONTACT, 0);
    isTaken = taken && strcmp(taken, contact) == 0;
    if (isTaken)
        printf("The contact is now %s.\n", taken);
    else
        fprintf(stderr, "agent: the contact was not taken; it is %s\n", taken ? taken : "not set");
    freeItems(queue);
    return isTaken;
}

/* Reads the one object that a reference names: the value of a reference is the path of the object. */
static int showFirstInterface(_qHead* queue) {
    _qHead links;
    char* path;
    int isRead = 0;
    setUp(&links);
    if (isDone("reading the links", OWB_getGroup(NETWORK_PORT_LINKS, &links))) {
        path = valueOf(&links, NETWORK_PORT_LINKS, DEPENDENT, 0);
        if (!path) {
            puts("There is no network interface.");
            isRead = 1;
        } else if (isDone(path, OWB_getInstance(NETWORK_INTERFACES, path, 0, queue))) {
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

    OWB_URLSet(getenv("OWB_URL")); /* null changes nothing */
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
    freeItems(&queue); /* of a request that failed half-way */
    return isDoneAll ? EXIT_SUCCESS : EXIT_FAILURE;
}
