/*
 * owb.h - the data of a CIM object manager, for an agent that thinks in groups, rows and items
 *
 * PURPOSE
 *   A management agent addresses its data by numbers: a group (a kind of managed object), a nominator (an
 *   attribute of the group), a row (one object) and an array position (one element of a multi-valued
 *   attribute). A CIM object manager (CIMOM) addresses the same data by class, property and instance. The
 *   library maps one to the other: OWB_getGroup() enumerates the class of a group and appends one item
 *   for each value to the agent's queue, OWB_setGroup() sends the items of a queue back, and
 *   OWB_getInstance() reads one object that the agent names. Two functions turn CIM times into counts.
 *
 * OBJECTS
 *   _qHead   the agent's item queue: a circular, doubly linked list whose head is its own sentinel.
 *   _qItem   one value: its address (group, nominator, row, array position) and its text.
 *   ExtGroupCimClass, ExtItemList, ExtCimKeyArray
 *            the constant tables behind the mapping; the agent may read them.
 *
 *   An agent sets up a queue and reads a group like this:
 *
 *       _qHead queue;
 *       _qItem* item;
 *
 *       queue.first = queue.last = (_qItem*)&queue;
 *       queue.size = 0;
 *       queue.agent = 0;
 *       queue.cursor = (_qItem*)&queue;
 *       if (OWB_getGroup(4, &queue) == OWB_DONE)
 *           for (item = queue.first; item != (_qItem*)&queue; item = item->next)
 *               printf("%s = %s\n", OWB_propertyName(item->group, item->nom), item->val);
 *
 *   and writes attribute 3 of row 0 of group 2, with a queue that was set up in the same way:
 *
 *       if (OWB_itemAdd(&queue, 2, 3, 0, 0, "ops@example.net"))
 *           OWB_setGroup(2, &queue);
 *
 * OWNERSHIP
 *   The agent owns the head and every item. The library appends items, each allocated with malloc() together
 *   with its own malloc()ed value text; the agent unlinks an item and frees first `val`, then the item. Texts
 *   returned by the library (class and property names, the URL, the version) are the library's and are never
 *   freed or changed by the agent.
 *
 * THREADS
 *   The library starts none and locks nothing. It keeps one client connection for the life of the
 *   process, so call it from one thread at a time. It touches no signal disposition, and its descriptors
 *   are closed on exec; an installed OpenWBEM in place of the bundled client library ignores SIGPIPE.
 *
 * ERRORS
 *   Request functions return a status: OWB_DONE, OWB_NO_INSTANCE, OWB_BAD_ARGUMENT, OWB_NO_CONNECTION or
 *   OWB_EXCEPTION. Why a request failed is told by the trace. The trace is off unless a file named
 *   "vdxDebug" in the current directory, or else "/tmp/vdxDebug", exists when the library traces for the
 *   first time; its first line names the log file.
 *   Exceptions of the client library never reach the agent from a function declared for C; the two functions
 *   for C++ agents at the end say what they let out. Exceptions of other types (std::bad_alloc, say) pass
 *   through.
 *   The library writes to standard output in one case only: a duplicate item, see OWB_itemAdd().
 *
 * LINK LINE
 *   C, and C++ without the client library's classes:
 *       cc -m32 agent.c -lowb
 *   C++ that catches or passes those classes names the client library as well. The bundled one is in
 *   folders of its own, PREFIX/include/owb/openwbem and owb below the folder of libowb.so, LIBDIR, where the
 *   dynamic linker does not look by itself:
 *       c++ -m32 agent.cpp -IPREFIX/include/owb/openwbem -LLIBDIR/owb -lowb -lowclient -Wl,-rpath,LIBDIR/owb
 *   pkg-config knows the options under the names owb and owb-client.
 *
 * The header serves C89 and C++. The target is 32-bit Linux: every long and pointer below
 * is one 32-bit word there.
 */
#ifndef OWB_H
#define OWB_H

#ifdef __cplusplus
extern "C" {
#endif

/* Status of a request function. 1 is not used. */
#define OWB_DONE 0          /* finished */
#define OWB_NO_INSTANCE 2   /* the CIMOM gave no instance */
#define OWB_BAD_ARGUMENT 3  /* a bad argument; nothing was done and nothing traced */
#define OWB_NO_CONNECTION 4 /* there is no client connection */
#define OWB_EXCEPTION 5     /* an exception of the client library was caught; the trace names it */

/* Highest group number that a request accepts. */
#define OWB_MAX_GROUP 30

/* Unit of a length of time, see OWB_calcTimeInterval(). A signed type. */
typedef enum OWB_TIME_UNIT {
    OWB_TIME_INVALID = -1,     /* no unit; makes the type signed */
    OWB_TIME_SECONDS = 1,      /* whole seconds; what is left of a second is dropped */
    OWB_TIME_HUNDREDTHS = 2,   /* hundredths of a second, rounded, halves away from zero */
    OWB_TIME_MILLISECONDS = 3, /* rounded likewise */
    OWB_TIME_MICROSECONDS = 4
} OWB_TIME_UNIT;

typedef struct _qItem _qItem;
typedef struct _qHead _qHead;

/*
 * One value of one property. Ten words; made by OWB_itemAdd(), freed by the agent.
 */
struct _qItem {
    _qItem* next;       /* next item, or the head when this is the last */
    _qItem* prev;       /* previous item, or the head when this is the first */
    long row;           /* row: number of the instance within the group, from 0 */
    long array;         /* position within an array value, from 0; 0 for a single value */
    long group;         /* group: index into ExtGroupCimClass */
    long nom;           /* nominator: number of the attribute within the group */
    long selected;      /* mark of the group write; OWB_itemAdd() leaves it unset */
    unsigned long uval; /* val as strtoul(val, NULL, 10) reads it */
    long lval;          /* val as strtol(val, NULL, 10) reads it */
    char* val;          /* the item's own copy of the value text, NUL-terminated */
};

/*
 * The agent's queue. Five words. The first two stand where an item has `next` and `prev`, so that the head
 * serves as the sentinel of its own list. An empty queue has first and last pointing at the head and size 0;
 * the agent sets that up, the library never does.
 */
struct _qHead {
    _qItem* first;  /* first item, or the head itself when the queue is empty */
    _qItem* last;   /* last item, or the head itself when the queue is empty */
    long size;      /* number of items; the library adds 1 for each item it appends */
    long agent;     /* the agent's own word; the library neither reads nor writes it */
    _qItem* cursor; /* scan position, see OWB_itemExists() */
};

/* One row of ExtItemList: the property behind a nominator of a group. */
typedef struct ExtItem {
    long group;           /* group number; -1 in the end row */
    long nom;             /* nominator within the group; -1 in the end row */
    const char* property; /* CIM property name, or a pseudo-name of the agent's, beginning with "_" */
} ExtItem;

/* One key of ExtCimKeyArray. */
typedef struct ExtCimKey {
    const char* name;  /* key property; may be the empty text; null ends the keys of a group */
    const char* value; /* always the empty text, null in the end pair; no function reads it */
} ExtCimKey;

/* CIM class of each group, 0 to 30. Entry 31 is "INVALID"; no request accepts group 31. */
extern const char* const ExtGroupCimClass[32];

/*
 * Property of each (group, nominator) pair: 216 rows and the end row (-1, -1, ""). No pair occurs twice, and
 * no property occurs twice within a group, whatever the case of its letters.
 */
extern const ExtItem ExtItemList[217];

/* Keys that name an instance when groups 0 to 7 are written: at most two each, ended by a null name. */
extern const ExtCimKey ExtCimKeyArray[8][3];

/* The URL last given to OWB_URLSet(), owned by the library, or null. Read it through OWB_URLGet(). */
extern char* owbUrl_p;

/*
 * Appends one item at the tail of a queue.
 *
 *   q      the queue; null fails
 *   group, nom, row, array
 *          the item's address; any numbers
 *   val    the value text, NUL-terminated, copied; null fails
 *
 * Returns 1 when the item was appended, 0 when it was not (null argument, or no memory): the queue's items
 * are then as before. Moves q->cursor as OWB_itemExists() does, except for a null val, which leaves it. An
 * item with the same address is reported by two lines on standard output, and the new item is appended all
 * the same.
 *
 * An append of the agent's own searches the whole queue, so filling a queue of n items in this way takes time
 * in proportion to n squared. The reading functions search what they have appended for the present row,
 * unless the queue already holds a row of the group that is as high.
 */
long OWB_itemAdd(_qHead* q, long group, long nom, long row, long array, const char* val);

/*
 * Looks for an item by its address.
 *
 * Returns 1 and leaves q->cursor on the match nearest to the front, or returns 0 and leaves q->cursor on the
 * head (also for an empty queue). Returns 0 for a null q. Takes time in proportion to the number of items.
 */
long OWB_itemExists(_qHead* q, long group, long nom, long row, long array);

/*
 * Name of the CIM property behind (group, nominator): the first match in ExtItemList, else "NOT FOUND". Never
 * null.
 */
const char* OWB_propertyName(long group, long nom);

/*
 * Sets the URL of the CIMOM: scheme://[user[:password]@]host[:port]. The port of a Unix-domain socket is its
 * path, percent-encoded: "owbinary.wbem://localhost:%2ftmp%2fOpenWBEM_UDS", which is the default. A number as
 * port means TCP. A scheme that begins with "owbinary" means the binary protocol, any other CIM-XML.
 *
 *   url    copied; null leaves the URL as it is. OWB_URLGet()'s own result is allowed.
 *
 * Returns 1 always; when there is no memory for the copy the default applies. A client that exists keeps its
 * URL: the new one is used from the next OWB_connect(1) on, or when the first client is made.
 */
long OWB_URLSet(const char* url);

/*
 * The URL set by OWB_URLSet(), else the default. Never null; valid until the next OWB_URLSet().
 */
const char* OWB_URLGet(void);

/*
 * Version of the library, "v1.12". The arguments are only tested against null and never written through.
 */
const char* OWB_version(char* date, char* time);

/*
 * Writes one line to the trace log, if tracing is on: time, file, function, line and the formatted message.
 *
 *   file, function, line
 *           where the message comes from; not changed
 *   format  a printf format for the arguments that follow, with its own "\n" at the end
 *
 * Message and finished line are each cut to 1023 characters; a line that was cut ends in "\n" like any other.
 * A log file that cannot be opened loses the line silently. Whether tracing is on is decided by the first
 * call of the process and never again.
 *
 * The library calls OWB_Debug() through its symbol: an agent that defines its own receives every diagnostic,
 * and the library then looks for no switch file.
 */
void OWB_Debug(char* file, char* function, unsigned long line, char* format, ...)
#ifdef __GNUC__
    __attribute__((format(printf, 4, 5)))
#endif
    ;

/*
 * Reads a whole group: enumerates the instances of its class, subclasses included, and appends the values of
 * each instance to the queue as rows 0, 1, 2 and so on, in the order in which the CIMOM delivers them.
 *
 *   group  0 to OWB_MAX_GROUP
 *   q      the queue; items in it stay. Functions that an agent interposes may append to it until the call
 *          returns, but take nothing out.
 *
 * Returns
 *   OWB_DONE           the enumeration ran to its end. The class may have no instances, and an instance
 *                      that could not be converted has been traced and passed over; its row number is
 *                      not used again.
 *   OWB_BAD_ARGUMENT   group out of range or q null
 *   OWB_NO_CONNECTION  there is no client
 *   OWB_EXCEPTION      connecting, enumerating or the CIMOM failed. Items appended before stay. The client
 *                      is kept and connects again by itself.
 *
 * Blocks until the reply is complete. The client library bounds the CIMOM's silence (60 s to connect, 600 s
 * to send and to receive).
 */
long OWB_getGroup(long group, _qHead* q);

/*
 * Reads one instance and appends its values to the queue.
 *
 *   group       0 to OWB_MAX_GROUP: the group that the items belong to. It selects the properties that become
 *               items; the class is the one that the path names, whatever the class of the group.
 *   objectPath  names the instance by its class and keys: [namespace:]Class.Key="value",Key2="value2". A
 *               quote or backslash within a value stands behind a backslash. A namespace is needed when a
 *               value holds a colon, and is otherwise of no effect: the instance is looked for in
 *               "root/cimv2".
 *   row         stored in every item; not negative
 *   q           the queue; items in it stay
 *
 * Returns
 *   OWB_DONE           the instance was read; it may have no property that the group knows
 *   OWB_NO_INSTANCE    the CIMOM answered without an instance. One that it does not have is an
 *                      OWB_EXCEPTION.
 *   OWB_BAD_ARGUMENT   group out of range, row negative, objectPath or q null
 *   OWB_NO_CONNECTION  there is no client
 *   OWB_EXCEPTION      the path cannot be parsed, connecting or the CIMOM failed, or a property could not be
 *                      converted; the items of the others have then been appended
 *
 * Blocks as OWB_getGroup() does.
 */
long OWB_getInstance(long group, char* objectPath, long row, _qHead* q);

/*
 * Writes items into the CIMOM: enumerates the instances of a group's class, numbers them as OWB_getGroup()
 * does, and sends for each instance whose row has items in the queue one request to modify it. The request
 * names the instance by the keys that ExtCimKeyArray lists for the group, and carries the text of each item
 * as a string, whatever the type of the property.
 *
 *   group  0 to OWB_MAX_GROUP; items of other groups are left out
 *   q      the queue. Items and their order stay. When instances were visited, each item's `selected`
 *          has been overwritten and the cursor is on the head. Of two items for one property the later
 *          one counts; the array position has no part in a write. A nominator that the group does not
 *          have is traced and left out.
 *
 * Returns
 *   OWB_DONE           every instance was visited, or the queue is empty. This does not say that the CIMOM
 *                      accepted the values: a request that fails is traced and passed over. Read the group
 *                      again to know.
 *   OWB_NO_INSTANCE    the class has no instances
 *   OWB_BAD_ARGUMENT   group out of range or q null
 *   OWB_NO_CONNECTION  there is no client
 *   OWB_EXCEPTION      connecting or enumerating failed
 *
 * Only groups 0 and 2 have keys that name an instance. For groups 1 and 3 to 7 the request carries a property
 * of no name and no value in their place, for the groups above none. CIMOMs that need keys refuse such a
 * request. Some CIMOMs take a request for the whole instance and clear what it does not carry.
 *
 * The bundled client library never repeats a request that was sent, so after a broken connection it is not
 * known whether it was carried out. Blocks as OWB_getGroup() does, for each request.
 */
long OWB_setGroup(long group, _qHead* q);

/*
 * Seconds from 1970-01-01 00:00:00 UTC to a CIM date.
 *
 *   text   yyyymmddhhmmss.mmmmmmsutc (DSP0004): local time, microseconds, the sign and minutes of its
 *          offset from UTC. An asterisk counts as 0, which no month and no day may be. English dates
 *          like "Thu Jan 1 00:00:00 UTC 1970" are taken as well. Microseconds are dropped.
 *
 * Returns 0, with a trace, for null, for a text that is no date, and for a moment before 1970 or from
 * 2038-01-19 03:14:08 UTC on.
 */
long OWB_calcTimeEpoch(char* text);

/*
 * Length of a CIM interval.
 *
 *   text   ddddddddhhmmss.mmmmmm:000 (DSP0004): days, hours, minutes, seconds, microseconds. Fields are
 *          not checked: blanks and a sign may stand in front, and what is no digit ends one. A CIM date
 *          is taken too, its day of the month as days.
 *   unit   of the result
 *
 * The result is cut to 32 bits, so it wraps: microseconds beyond 2147.483647 seconds, milliseconds beyond
 * 24.8 days, hundredths beyond 248 days, seconds beyond 68 years. Returns 0, with a trace, for null, another
 * unit, and a text that is neither interval nor date; 0 without one for the empty text.
 */
long OWB_calcTimeInterval(char* text, OWB_TIME_UNIT unit);

/*
 * Appends the running software of this host, read from /proc and not from the CIMOM: for each process a row
 * of group 16 (name, handle, path, parameters, run type, execution state), then for each a row of group 22
 * (handle, sizes in kB of stack, data and text, processor time). The rows of group 22 follow those of group
 * 16: with n rows of the one, the first of the other is row n. A process is the same in both groups by its
 * handle, the process ID, alone.
 *
 *   q      the queue; items in it stay. Null gives nothing.
 *
 * Returns 1. Processes that cannot be read whole are left out, and so are those whose name holds a ")", see
 * QAV_UnixProcessAPI.hpp; of more than 32,768 processes the others are left out. std::bad_alloc and
 * exceptions of the client library's types pass through.
 *
 * Runs the program /kq/bin/softinv and waits for it, at most 30 s. The child is reaped; a SIGCHLD handler of
 * the agent's sees it.
 */
int OWB_getSWRun(_qHead* q);

#ifdef __cplusplus
} /* extern "C" */

/*
 * Cleans a text: strips blank, tab, line feed, carriage return and form feed at both ends and turns each
 * double quote into a single quote.
 *
 *   src  the text, may be null
 *   dst  where the result goes, with room for all of src; null cleans src in place
 *
 * Returns dst, or src when cleaning in place. A null or empty src makes dst empty and returns dst, so the
 * result is null when dst is null too.
 */
char* owbStringClean(char* src, char* dst);

/* Two functions take objects of the OpenWBEM client library: C++ agents have them where its headers can be
 * found. */
#ifdef __has_include
#if __has_include(<OW_CIMClient.hpp>) && __has_include(<OW_CIMInstance.hpp>)
extern "C++" { /* this header may be included within extern "C" */
#if __has_include(<OW_vector.hpp>)
#include <OW_vector.hpp> /* OpenWBEM 3.x: before OW_Array.hpp, for Arrays of types of one's own */
#endif
#include <OW_CIMClient.hpp>
#include <OW_CIMInstance.hpp>

/*
 * The one client of the process, made on the first call. Never null.
 *
 *   kill  not 0 drops the client first and makes a new one for the URL that is set now
 *
 * The library owns the client. An exception of its constructor (a malformed URL, an unknown host) reaches the
 * caller and leaves no client; the next call tries again. Nothing is connected until the first request.
 */
OpenWBEM::CIMClient* OWB_connect(unsigned char kill);

/*
 * Appends the values of one instance to a queue: one item for each scalar value, one for each element of a
 * string, uint16 or uint64 array. Properties that the group does not list, null values and arrays of other
 * types make no item.
 *
 *   group     selects the rows of ExtItemList; names are compared without regard to case
 *   instance  is not changed
 *   row       stored in every item
 *   q         the queue
 *
 * Returns OWB_DONE, or OWB_EXCEPTION when a property threw an OpenWBEM::Exception; the other properties are
 * handled all the same. An exception of the instance as a whole, for a null one, reaches the caller.
 */
int OWB_getInstanceData(long group, OpenWBEM::CIMInstance& instance, long row, _qHead* q);
} /* extern "C++" */
#endif
#endif
#endif /* __cplusplus */

#endif /* OWB_H */
