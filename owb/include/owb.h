/*
 * owb.h - the data of a CIM object manager as the numbered items of a management agent
 *
 * PURPOSE
 *   A management agent addresses its data by numbers: a group (a kind of managed object), a nominator (an
 *   attribute of the group), a row (one object) and an array index (one element of a multi-valued
 *   attribute). A CIM object manager (CIMOM) addresses the same data by class, property and instance. The
 *   library maps one to the other: OWB_getGroup() enumerates the class of a group and appends one item
 *   for each value to the agent's queue, OWB_setGroup() sends the items of a queue back, and
 *   OWB_getInstance() reads one object that the agent names. Two functions convert CIM times to numbers.
 *
 * OBJECTS
 *   _qHead   the agent's item queue: a circular, doubly linked list whose head is its own sentinel.
 *   _qItem   one value: its address (group, nominator, row, array index) and its text.
 *   ExtGroupCimClass, ExtItemList, ExtCimKeyArray
 *            the constant tables of the mapping; the agent may read them.
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
 *   With a queue that is set up in the same way, it writes attribute 3 of row 0 of group 2:
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
 *   process, so call it from one thread at a time. It changes no signal disposition, and its descriptors
 *   are closed on exec. An installed OpenWBEM client library ignores SIGPIPE.
 *
 * ERRORS
 *   Request functions return a status: OWB_DONE, OWB_NO_INSTANCE, OWB_BAD_ARGUMENT, OWB_NO_CONNECTION or
 *   OWB_EXCEPTION. The trace says why a request failed. It is on if a file named "vdxDebug" in the current
 *   directory, or else "/tmp/vdxDebug", exists when the library traces for the first time; the first line of
 *   that file names the log file.
 *   Exceptions of the client library never leave a function declared for C; the two functions for C++ agents
 *   at the end state which exceptions leave them. Exceptions of other types, such as std::bad_alloc, pass
 *   through every function.
 *   The library writes to standard output in one case only: a duplicate item, see OWB_itemAdd().
 *
 * LINK LINE
 *   C, and C++ without the client library's classes:
 *       cc -m32 agent.c -lowb
 *   C++ that uses these classes links the client library as well. The bundled one has its headers in
 *   PREFIX/include/owb/openwbem and its library in LIBDIR/owb, where LIBDIR is the directory of libowb.so.
 * The dynamic linker does not search that directory by default: c++ -m32 agent.cpp
 * -IPREFIX/include/owb/openwbem -LLIBDIR/owb -lowb -lowclient -Wl,-rpath,LIBDIR/owb pkg-config has these
 * options under the names owb and owb-client.
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
#define OWB_NO_INSTANCE 2   /* the CIMOM returned no instance */
#define OWB_BAD_ARGUMENT 3  /* a bad argument; nothing was done and nothing traced */
#define OWB_NO_CONNECTION 4 /* there is no client connection */
#define OWB_EXCEPTION 5     /* an exception of the client library was caught; the trace names it */

/* Highest group number that a request accepts. */
#define OWB_MAX_GROUP 30

/* Unit of a length of time, see OWB_calcTimeInterval(). A signed type. */
typedef enum OWB_TIME_UNIT {
    OWB_TIME_INVALID = -1,     /* no unit; makes the type signed */
    OWB_TIME_SECONDS = 1,      /* whole seconds; fractions are dropped */
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
    long array;         /* array index: element of an array value, from 0; 0 for a single value */
    long group;         /* group: index into ExtGroupCimClass */
    long nom;           /* nominator: number of the attribute within the group */
    long selected;      /* used by OWB_setGroup(); OWB_itemAdd() does not set it */
    unsigned long uval; /* val as strtoul(val, NULL, 10) reads it */
    long lval;          /* val as strtol(val, NULL, 10) reads it */
    char* val;          /* the item's own copy of the value text, NUL-terminated */
};

/*
 * The agent's queue. Five words. The first two have the offsets of `next` and `prev` of an item, so that the
 * head serves as the sentinel of its list. The agent sets up an empty queue: first and last point to the
 * head, and size is 0. The library never does that.
 */
struct _qHead {
    _qItem* first;  /* first item, or the head itself when the queue is empty */
    _qItem* last;   /* last item, or the head itself when the queue is empty */
    long size;      /* number of items; the library adds 1 for each item it appends */
    long agent;     /* for the agent; the library neither reads nor writes it */
    _qItem* cursor; /* scan position, see OWB_itemExists() */
};

/* One row of ExtItemList: the property of a nominator of a group. */
typedef struct ExtItem {
    long group;           /* group number; -1 in the end row */
    long nom;             /* nominator within the group; -1 in the end row */
    const char* property; /* name of the CIM property; "_" begins a name that CIM does not define */
} ExtItem;

/* One key of ExtCimKeyArray. */
typedef struct ExtCimKey {
    const char* name;  /* key property, may be empty; null ends the keys of a group */
    const char* value; /* always empty, null in the end pair; no function reads it */
} ExtCimKey;

/* CIM class of each group, 0 to 30. Entry 31 is "INVALID"; no request accepts group 31. */
extern const char* const ExtGroupCimClass[32];

/*
 * Property of each (group, nominator) pair: 216 rows and the end row (-1, -1, ""). Each pair occurs once.
 * Within a group each property occurs once, compared without case.
 */
extern const ExtItem ExtItemList[217];

/* Keys that identify an instance in a write of groups 0 to 7: at most two each, ended by a null name. */
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
 * Returns 1 if the item was appended. Returns 0 for a null argument, or if out of memory: the queue's items
 * are then unchanged. Moves q->cursor as OWB_itemExists() does; a null val leaves it. If the queue already
 * has an item with the same address, two lines on standard output report it, and the new item is still
 * appended.
 *
 * A call by the agent searches the whole queue for a duplicate, so appending n items takes time in proportion
 * to n squared. The reading functions search only the items of the current row, unless the queue already has
 * a row of the group that is as high.
 */
long OWB_itemAdd(_qHead* q, long group, long nom, long row, long array, const char* val);

/*
 * Looks for an item by its address.
 *
 * Returns 1 and sets q->cursor to the first match. Without a match, also for an empty queue, returns 0 and
 * sets q->cursor to the head. Returns 0 for a null q. Takes time in proportion to the number of items.
 */
long OWB_itemExists(_qHead* q, long group, long nom, long row, long array);

/*
 * Name of the CIM property of (group, nominator): the first match in ExtItemList, else "NOT FOUND". Never
 * null.
 */
const char* OWB_propertyName(long group, long nom);

/*
 * Sets the URL of the CIMOM: scheme://[user[:password]@]host[:port]. The port of a Unix-domain socket is its
 * path, percent-encoded: "owbinary.wbem://localhost:%2ftmp%2fOpenWBEM_UDS", which is the default. A numeric
 * port selects TCP. A scheme that begins with "owbinary" selects the binary protocol, any other CIM-XML. A
 * scheme that ends in "s", such as https, selects TLS: the bundled client library verifies the CIMOM, as the
 * environment variables OWB_TLS_CA, OWB_TLS_CERT, OWB_TLS_KEY and OWB_TLS_VERIFY say (OWB_URLSet(3)).
 *
 *   url    copied; null leaves the URL unchanged. The result of OWB_URLGet() is allowed.
 *
 * Always returns 1. If out of memory, the default URL applies. An existing client keeps its URL: the new one
 * takes effect with the next OWB_connect(1), or with the first client.
 */
long OWB_URLSet(const char* url);

/*
 * The URL set by OWB_URLSet(), else the default. Never null; valid until the next OWB_URLSet().
 */
const char* OWB_URLGet(void);

/*
 * Version of the library, "v1.12". The arguments have no effect; the library does not write to them.
 */
const char* OWB_version(char* date, char* time);

/*
 * Writes one line to the trace log, if tracing is on: time, file, function, line and the formatted message.
 *
 *   file, function, line
 *           the origin of the message; not changed
 *   format  a printf format for the arguments that follow; it includes the final "\n"
 *
 * The message and the whole line are each truncated to 1023 characters; a truncated line still ends in "\n".
 * If the log file cannot be opened, the line is lost without an error. The first call in a process decides
 * whether tracing is on.
 *
 * An agent may interpose OWB_Debug(): its definition receives every diagnostic, and the library then does not
 * look for a switch file.
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
 *   q      the queue; items in it stay. Functions that an agent interposes may append to it during the call,
 *          but must not remove items.
 *
 * Returns
 *   OWB_DONE           the enumeration is complete. The class may have no instances. An instance that fails
 *                      to convert is traced and still uses up its row.
 *   OWB_BAD_ARGUMENT   group out of range or q null
 *   OWB_NO_CONNECTION  there is no client
 *   OWB_EXCEPTION      connecting or enumerating failed, or the CIMOM reported an error. Items appended
 *                      before stay. The client is kept; the next request reconnects.
 *
 * Blocks until the reply is complete. The client library limits each wait for the CIMOM: 60 s to connect,
 * 600 s to send and to receive.
 */
long OWB_getGroup(long group, _qHead* q);

/*
 * Reads one instance and appends its values to the queue.
 *
 *   group       0 to OWB_MAX_GROUP: the group of the items. It selects the properties that become items. The
 *               class is that of the path, even if the group has another one.
 *   objectPath  class and keys of the instance: [namespace:]Class.Key="value",Key2="value2". A backslash
 *               precedes each quote or backslash within a value. A value with a colon requires a namespace;
 *               otherwise the namespace has no effect, and the CIMOM looks in "root/cimv2".
 *   row         stored in every item; not negative
 *   q           the queue; items in it stay
 *
 * Returns
 *   OWB_DONE           the instance was read; it may have no property of the group
 *   OWB_NO_INSTANCE    the reply contains no instance. If the CIMOM does not have the instance, it reports an
 *                      error: OWB_EXCEPTION.
 *   OWB_BAD_ARGUMENT   group out of range, row negative, objectPath or q null
 *   OWB_NO_CONNECTION  there is no client
 *   OWB_EXCEPTION      the path cannot be parsed, connecting failed, the CIMOM reported an error, or a
 * property failed to convert; the items of the other properties have then been appended
 *
 * Blocks as OWB_getGroup() does.
 */
long OWB_getInstance(long group, char* objectPath, long row, _qHead* q);

/*
 * Writes items into the CIMOM: enumerates the instances of a group's class, numbers them as OWB_getGroup()
 * does, and sends one request to modify each instance whose row has items in the queue. The request
 * identifies the instance by the keys that ExtCimKeyArray lists for the group, and contains the text of each
 * item as a string, even if the property has another type.
 *
 *   group  0 to OWB_MAX_GROUP; items of other groups are ignored
 *   q      the queue. Items and their order stay. If the class has instances, the call overwrites each item's
 *          `selected` and leaves the cursor on the head. Of two items for one property the later one
 *          counts; the array index is ignored. A nominator that the group does not have is traced and
 *          left out.
 *
 * Returns
 *   OWB_DONE           every instance was visited, or the queue is empty. The CIMOM may have rejected values:
 *                      a failed request is traced, and the next one follows. Read the group again to check.
 *   OWB_NO_INSTANCE    the class has no instances
 *   OWB_BAD_ARGUMENT   group out of range or q null
 *   OWB_NO_CONNECTION  there is no client
 *   OWB_EXCEPTION      connecting or enumerating failed
 *
 * Only groups 0 and 2 have keys that identify an instance. For groups 1 and 3 to 7 the request contains one
 * property without name and value instead of keys; for the groups above it contains nothing instead. CIMOMs
 * that need keys reject such a request. Some CIMOMs treat the request as the whole instance and clear every
 * property that is not in it.
 *
 * The bundled client library never sends a write twice: if the connection breaks, the outcome is unknown.
 * Blocks as OWB_getGroup() does, for each request.
 */
long OWB_setGroup(long group, _qHead* q);

/*
 * Seconds from 1970-01-01 00:00:00 UTC to a CIM date.
 *
 *   text   yyyymmddhhmmss.mmmmmmsutc (DSP0004): local time, microseconds, sign and minutes of its offset
 *          from UTC. An asterisk counts as 0, which is not a valid month or day. English dates like
 *          "Thu Jan 1 00:00:00 UTC 1970" are accepted as well. Microseconds are dropped.
 *
 * Returns 0 and traces an error for null, for a text that is not a date, and for a time before 1970 or from
 * 2038-01-19 03:14:08 UTC on.
 */
long OWB_calcTimeEpoch(char* text);

/*
 * Length of a CIM interval.
 *
 *   text   ddddddddhhmmss.mmmmmm:000 (DSP0004): days, hours, minutes, seconds, microseconds. Fields are
 *          not validated: spaces and a sign may precede a number, and any other character ends it. A CIM
 *          date is accepted, too; its day of the month counts as days.
 *   unit   of the result
 *
 * The result has 32 bits and wraps: microseconds beyond 2147.483647 seconds, milliseconds beyond 24.8 days,
 * hundredths beyond 248 days, seconds beyond 68 years. Returns 0 and traces an error for null, an invalid
 * unit, and a text that is neither interval nor date. Returns 0 without a trace for the empty text.
 */
long OWB_calcTimeInterval(char* text, OWB_TIME_UNIT unit);

/*
 * Appends the running software of this host, read from /proc and not from the CIMOM. Each process has a row
 * of group 16 (name, handle, path, parameters, run type, execution state) and a row of group 22 (handle,
 * sizes in kB of stack, data and text, processor time). The row numbers of group 22 continue those of group
 * 16: after n rows of group 16, group 22 starts with row n. Match the two rows of a process by the handle,
 * which is the process ID.
 *
 *   q      the queue; items in it stay. Null appends nothing.
 *
 * Returns 1. Leaves out processes that cannot be read completely, processes whose name contains a ")", see
 * QAV_UnixProcessAPI.hpp, and all after the 32,768th. std::bad_alloc and exceptions of the client library's
 * types pass through.
 *
 * Runs the program /kq/bin/softinv and waits for it, at most 30 s. The library reaps the child; a SIGCHLD
 * handler of the agent is called.
 */
int OWB_getSWRun(_qHead* q);

#ifdef __cplusplus
} /* extern "C" */

/*
 * Cleans a text: strips space, tab, line feed, carriage return and form feed at both ends and replaces each
 * double quote by a single quote.
 *
 *   src  the text, may be null
 *   dst  buffer for the result, at least as large as src; null cleans src in place
 *
 * Returns dst, or src when cleaning in place. For a null or empty src, sets dst to the empty text and returns
 * dst; if dst is null too, returns null.
 */
char* owbStringClean(char* src, char* dst);

/* Two functions use classes of the OpenWBEM client library. They are declared if its headers can be found. */
#ifdef __has_include
#if __has_include(<OW_CIMClient.hpp>) && __has_include(<OW_CIMInstance.hpp>)
extern "C++" { /* this header may be included within extern "C" */
#if __has_include(<OW_vector.hpp>)
#include <OW_vector.hpp> /* OpenWBEM 3.x needs it before OW_Array.hpp, for an Array of a user-defined type */
#endif
#include <OW_CIMClient.hpp>
#include <OW_CIMInstance.hpp>

/*
 * The one client of the process, created by the first call. Never null.
 *
 *   kill  if not 0, deletes the client and creates one for the current URL
 *
 * The library owns the client. Exceptions of its constructor (a malformed URL, an unknown host) reach the
 * caller and leave no client; the next call tries again. The client connects with the first request.
 */
OpenWBEM::CIMClient* OWB_connect(unsigned char kill);

/*
 * Appends the values of one instance to a queue: one item for each scalar value, and one for each element of
 * a string, uint16 or uint64 array. Properties that the group does not list, null values and arrays of other
 * types give no item.
 *
 *   group     selects the rows of ExtItemList; names are compared without case
 *   instance  not changed
 *   row       stored in every item
 *   q         the queue
 *
 * Returns OWB_DONE, or OWB_EXCEPTION if a property threw an OpenWBEM::Exception; the other properties are
 * still converted. For a null instance the exception reaches the caller.
 */
int OWB_getInstanceData(long group, OpenWBEM::CIMInstance& instance, long row, _qHead* q);
} /* extern "C++" */
#endif
#endif
#endif /* __cplusplus */

#endif /* OWB_H */
