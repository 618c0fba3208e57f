/*
 * Prints docs/groups.md: the library's tables, and what owbcimomd declares of each property, which
 * served_properties hands to its standard input.
 */
#include <owb.h>

#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <strings.h>

/* One line of standard input. */
typedef struct Served {
    char className[64];
    char property[64];
    char type[32];
    char role[8];
} Served;

static Served served[1024];
static size_t servedCount;

/* What each group is about. */
static const char* const subjects[OWB_MAX_GROUP + 1] = {
    "The enclosure of the host: model, manufacturer, serial number, location",
    "When the name of the host or of its system last changed",
    "The host: name, contact, place, services, version of its system",
    "Memory, swap space and local file systems as storage: sizes and use, in allocation units",
    "The running system: boot time and what it was booted from, numbers of users and processes",
    "TCP: its settings",
    "TCP: its counters",
    "TCP: each connection and listener",
    "Which network interface (group 9) belongs to which counters (group 10)",
    "Network interfaces: address, state, speed",
    "Network interfaces: their counters",
    "ICMP: its counters",
    "IP version 4: its settings",
    "IP version 4: its counters",
    "UDP: its counters",
    "Installed packages",
    "Processes: name, program, parameters, kind and state",
    "Boot time and local time, as in group 4",
    "Disks",
    "Partitions of disks",
    "Mounted file systems that keep files",
    "Devices in one list: processors, disks, network interfaces",
    "Processes: processor time and sizes",
    "Which file system (group 20) is on which partition (group 19)",
    "Which file system (group 20) is on which storage (group 3)",
    "Which device (group 21) a network interface is",
    "Further enclosures",
    "Modules: memory modules and expansion cards",
    "Which module (group 27) is in which enclosure (group 0)",
    "Which place (group 30) a module (group 27) is in",
    "Places of modules",
};

static const char introduction[] =
    "<!-- Written by tests/docs/groups_document.c: cmake --build --preset release --target update_groups "
    "-->\n"
    "# Groups\n"
    "\n"
    "A **CIMOM**, a CIM object manager, is a server that answers questions about a host: it has classes of "
    "things, and of\n"
    "each class instances with named properties. Here it is `owbcimomd`, but any that speaks one of the "
    "[protocols](protocols.md)\n"
    "will do.\n"
    "\n"
    "A **group** is a kind of thing as an agent numbers it, 0 to 30. Behind each stands one CIM class; two "
    "groups may share\n"
    "one and show different properties of it.\n"
    "\n"
    "A **nominator** is the number of an attribute within a group. Behind each stands one property of the "
    "group's class; a\n"
    "name that begins with `_` is the agent's own, for what the common model has no property for.\n"
    "\n"
    "A **row** is the number of an instance within a group: 0 is the first that the CIMOM delivers, 1 the "
    "second, and so on.\n"
    "It is a place in this one reading and no name, so the same row may be another instance the next time.\n"
    "\n"
    "An item has one number more, its array position: the elements of a property with several values count "
    "from 0, of any\n"
    "other it is 0.\n"
    "\n"
    "## All groups\n"
    "\n"
    "| group | class | what it is about |\n"
    "|---:|---|---|\n";

static const char columns[] = "\n"
                              "## Nominators\n"
                              "\n"
                              "Type and keys are those that `owbcimomd` declares; items hold texts whatever "
                              "the type. A key names the instance and\n"
                              "never changes; keys without a nominator stand above the table. `owbctl set` "
                              "and `OWB_setGroup` change what has *yes* under\n"
                              "written. *Others* may be changed, but not by the library: its request does "
                              "not carry the class's keys, which other CIM\n"
                              "clients send.\n";

static int fail(const char* what, const char* why) {
    fprintf(stderr, "groups_document: %s: %s\n", what, why);
    return EXIT_FAILURE;
}

/* Returns 0 when standard input is not what served_properties prints. */
static int readServed(void) {
    const size_t room = sizeof served / sizeof *served;
    int fields = 0;
    for (; servedCount < room; ++servedCount) {
        Served* const next = &served[servedCount];
        fields = scanf("%63s %63s %31s %7s", next->className, next->property, next->type, next->role);
        if (fields != 4)
            break;
    }
    return fields == EOF && servedCount > 0;
}

static int isOf(const Served* line, long group) {
    return strcmp(line->className, ExtGroupCimClass[group]) == 0;
}

static int isKey(const Served* line) {
    return strcmp(line->role, "key") == 0;
}

/* The line of a property of a group's class, or null. */
static const Served* find(long group, const char* property) {
    size_t i;
    for (i = 0; i < servedCount; ++i)
        if (isOf(&served[i], group) && strcasecmp(served[i].property, property) == 0)
            return &served[i];
    return NULL;
}

/* Whether a write of the group carries a key. */
static int isSent(long group, const char* key) {
    const long groups = sizeof ExtCimKeyArray / sizeof *ExtCimKeyArray;
    const ExtCimKey* sent;
    if (group >= groups)
        return 0;
    for (sent = ExtCimKeyArray[group]; sent->name; ++sent)
        if (strcasecmp(sent->name, key) == 0)
            return 1;
    return 0;
}

/* Whether a write of the group names an instance. */
static int namesInstance(long group) {
    size_t i;
    for (i = 0; i < servedCount; ++i)
        if (isOf(&served[i], group) && isKey(&served[i]) && !isSent(group, served[i].property))
            return 0;
    return 1;
}

static int hasNominator(long group, const char* property) {
    const ExtItem* item;
    for (item = ExtItemList; item->group != -1; ++item)
        if (item->group == group && strcasecmp(item->property, property) == 0)
            return 1;
    return 0;
}

static void printItem(long group, long nom) {
    const char* const property = OWB_propertyName(group, nom);
    const Served* const line = find(group, property);
    const char* type = "not served";
    const char* key = "";
    const char* written = "";
    if (line) {
        type = line->type;
        key = isKey(line) ? "yes" : "";
        if (strcmp(line->role, "site") == 0)
            written = namesInstance(group) ? "yes" : "others";
    }
    printf("| %ld | `%s` | %s | %s | %s |\n", nom, property, type, key, written);
}

/* The items of a group in the order of their nominators. */
static void printItems(long group) {
    long nom;
    const ExtItem* item;
    long last = 0;
    for (item = ExtItemList; item->group != -1; ++item)
        if (item->group == group && item->nom > last)
            last = item->nom;
    printf("\n| nominator | property | type | key | written |\n|---:|---|---|---|---|\n");
    for (nom = 0; nom <= last; ++nom)
        if (strcmp(OWB_propertyName(group, nom), "NOT FOUND") != 0)
            printItem(group, nom);
}

static void printOtherKeys(long group) {
    const char* separator = "\nKeys without a nominator: ";
    size_t i;
    for (i = 0; i < servedCount; ++i) {
        if (!isOf(&served[i], group) || !isKey(&served[i]) || hasNominator(group, served[i].property))
            continue;
        printf("%s`%s`", separator, served[i].property);
        separator = ", ";
    }
    if (strcmp(separator, ", ") == 0)
        printf(".\n");
}

int main(void) {
    long group;
    if (!readServed())
        return fail("standard input", "not what served_properties prints");
    fputs(introduction, stdout);
    for (group = 0; group <= OWB_MAX_GROUP; ++group)
        printf("| %ld | `%s` | %s |\n", group, ExtGroupCimClass[group], subjects[group]);
    fputs(columns, stdout);
    for (group = 0; group <= OWB_MAX_GROUP; ++group) {
        printf("\n### Group %ld, `%s`\n\n%s.\n", group, ExtGroupCimClass[group], subjects[group]);
        printOtherKeys(group);
        printItems(group);
    }
    return fflush(stdout) == 0 ? EXIT_SUCCESS : fail("standard output", "cannot be written");
}
