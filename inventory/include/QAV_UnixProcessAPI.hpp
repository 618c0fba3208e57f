/*
 * QAV_UnixProcessAPI.hpp - the processes of the local Linux system, read from /proc
 *
 * PURPOSE
 *   A table of processes. init() fills it in one of two modes: what describes each process, or what each
 *   process uses. A cursor iterates over it:
 *
 *       QAV_UnixProcessAPI processes;
 *       OpenWBEM::String name;
 *
 *       processes.init(QAV_UnixProcessAPI::eProcessInformation);
 *       processes.begin();
 *       while (processes.hasNext()) {
 *           processes.next();
 *           processes.getName(name);
 *       }
 *       processes.end();
 *
 * WHAT IS LEFT OUT
 *   A process that ends while it is being read. A process with a file that cannot be opened, for lack of
 *   permission, descriptors or memory. A process whose name contains a ")", such as "(sd-pam)": the name ends
 *   there, and the fields of the stat line after it are missing. If the rest of the name looks like these
 *   fields, the process appears with wrong numbers.
 *
 *   Of a stat file and of a cmdline file, only the first 511 bytes of the first line are read. A line of a
 *   status file that is longer than 511 bytes counts as several.
 *
 * ERRORS
 *   None are reported. Without /proc the table is empty. Exceptions of the client library's types and
 *   std::bad_alloc pass through without leaks.
 *
 * THREADS
 *   One thread at a time may use an object. init() in the mode eProcessInformation runs a program, waits for
 *   it, at most 30 s, and reaps it.
 */
#ifndef QAV_UNIX_PROCESS_API_HPP
#define QAV_UNIX_PROCESS_API_HPP

/* OpenWBEM 3.x needs OW_vector.hpp before OW_Array.hpp, for an Array of a user-defined type. */
#ifdef __has_include
#if __has_include(<OW_vector.hpp>)
#include <OW_vector.hpp>
#endif
#endif
#include <OW_Array.hpp>
#include <OW_CIMDateTime.hpp>
#include <OW_String.hpp>

class QAV_UnixProcessAPI {
public:
    /* What a fill of the table reads, besides handle and name. */
    enum tProcessInfoType {
        eStatisticalInformation = 0, /* processor time, sizes of text, data and stack */
        eProcessInformation = 1      /* parent, state, parameters, program, kind, user, group */
    };

    /*
     * One process. Fields of the other mode are empty or 0.
     *
     *   handle           process ID, decimal
     *   name             command name, proc(5): 15 bytes at most, 63 of a kernel thread
     *   modulePath       path of the program, at most 512 bytes; empty without permission to read it, and
     *                    for kernel threads
     *   parameters       arguments after the program name, see readRunParameters()
     *   runType          RFC 2790, hrSWRunType: 2 operating system, 3 device driver, 4 application
     *   executionState   CIM_Process.ExecutionState: 2 ready (it sleeps), 3 running, 4 blocked
     *                    (stopped), 5 suspended blocked (waiting for a disk), 7 terminated (a
     *                    zombie), 0 unknown
     *   parentProcessID  decimal
     *   realUserID       effective user ID, despite the field's name
     *   processGroupID   effective group ID, despite the field's name
     *   totalCpuTime     interval: user and system time. A clock tick counts as 10 ms.
     *   realText         kB: the program and its libraries
     *   realData         kB
     *   realStack        kB
     */
    struct tUnixProcess {
        OpenWBEM::String handle;
        OpenWBEM::String name;
        OpenWBEM::String modulePath;
        OpenWBEM::Array<OpenWBEM::String> parameters;
        unsigned short runType;
        unsigned short executionState;
        OpenWBEM::String parentProcessID;
        unsigned long long realUserID;
        unsigned long long processGroupID;
        OpenWBEM::CIMDateTime totalCpuTime;
        unsigned long long realText;
        unsigned long long realData;
        unsigned long long realStack;
    };

    /* An empty table. */
    QAV_UnixProcessAPI();
    ~QAV_UnixProcessAPI();

    /* Replaces the contents of the table by all processes, in the order of the directory /proc. */
    void init(tProcessInfoType type);

    /*
     * Appends the process whose ID is `handle` to the table. The cursor stays. Returns 1, or 0 if the process
     * does not exist or cannot be read completely.
     */
    int init(tProcessInfoType type, const OpenWBEM::String& handle);

    /* Sets the cursor before the first process. */
    void begin();

    /* Moves the cursor to the next process, at most to the 32,768th. */
    void next();

    /*
     * 1 if there is a process after the cursor, else 0. The cursor has 16 bits: an iteration ends with the
     * 32,768th process, even if the table has more.
     */
    int hasNext();

    /* Ends an iteration. Does nothing. */
    void end();

    /*
     * Copy one field of the process at the cursor and return 1. Without a process at the cursor, return 0 and
     * leave the argument unchanged.
     */
    int getHandle(OpenWBEM::String& handle) const;
    int getName(OpenWBEM::String& name) const;
    int getModulePath(OpenWBEM::String& modulePath) const;
    int getParameters(OpenWBEM::Array<OpenWBEM::String>& parameters) const;
    int getRunType(unsigned short& runType) const;
    int getExecutionState(unsigned short& executionState) const;
    int getParentProcessID(OpenWBEM::String& parentProcessID) const;
    int getRealUserID(unsigned long long& realUserID) const;
    int getProcessGroupID(unsigned long long& processGroupID) const;
    int getTotalCpuTime(OpenWBEM::CIMDateTime& totalCpuTime) const;
    int getRealText(unsigned long long& realText) const;
    int getRealData(unsigned long long& realData) const;
    int getRealStack(unsigned long long& realStack) const;

    /*
     * Reads one process and appends it to the table, like init(), but keeps the output of the software
     * inventory until the next init(). After an init() that ran the inventory, the run type is 4, see
     * determineSWType().
     */
    int internalInit(tProcessInfoType type, const OpenWBEM::String& handle);

    /*
     * Run type of a program by its command name: 2, 3 or 4, as runType. Runs the program /kq/bin/softinv, at
     * most once after each init(). Of the output lines that begin with the name, the last one decides by its
     * fourth word: "Driver" or a prefix of it is 3, "Operating" or a prefix of it is 2, any other word is 4.
     * A line that begins with the name and has no fourth word ends the search with 4. The result is also 4 if
     * the program is missing or prints nothing. An init() that ran the program discards the output at its
     * end: from then on the result is 4 for every name.
     */
    unsigned short determineSWType(const OpenWBEM::String& name);

    /*
     * Replaces the parameters of a record by the texts of a cmdline file, proc(5), without the first one.
     * Reads at most 511 bytes, up to the end of the first line or the first empty text. Returns 1. If the
     * file cannot be opened, returns 0 and leaves the record unchanged.
     */
    static int readRunParameters(const char* path, tUnixProcess& record);

private:
    QAV_UnixProcessAPI(const QAV_UnixProcessAPI&);
    QAV_UnixProcessAPI& operator=(const QAV_UnixProcessAPI&);

    const tUnixProcess* current() const;

    char** m_swInventory; /* lines of the software inventory, null-terminated; null if not read */
    bool m_swInventoryRead;
    OpenWBEM::Array<tUnixProcess> m_processes;
    short m_current; /* -1: before the first */
};

#endif
