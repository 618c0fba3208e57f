#ifndef INVENTORY_PROCESSES_HPP
#define INVENTORY_PROCESSES_HPP
/* Reads processes into a table. QAV_UnixProcessAPI.hpp documents the fields and what is left out. */
#include "QAV_UnixProcessAPI.hpp"

#include <functional>
#include <string>

namespace inventory {

typedef QAV_UnixProcessAPI::tUnixProcess Process;

/* The sources of a table. */
struct Sources {
    /* The directory of the processes, proc(5), without a slash at its end. */
    std::string procDirectory;
    /*
     * Run type of a program by its command name, RFC 2790, hrSWRunType. Called only in the mode
     * eProcessInformation, once for each process whose command line can be read.
     */
    std::function<unsigned short(const OpenWBEM::String& name)> runType;
};

/*
 * Appends all processes to a table, in the order of the directory; none if it cannot be opened. Exceptions
 * of Sources::runType and std::bad_alloc pass through; processes appended before stay in the table.
 */
void readProcesses(const Sources& sources, QAV_UnixProcessAPI::tProcessInfoType type,
                   OpenWBEM::Array<Process>& table);

/*
 * Appends the process whose ID is `handle` to a table. Returns false and leaves the table unchanged if the
 * process does not exist or cannot be read completely. Exceptions as above.
 */
bool readProcess(const Sources& sources, QAV_UnixProcessAPI::tProcessInfoType type,
                 const OpenWBEM::String& handle, OpenWBEM::Array<Process>& table);

/* As QAV_UnixProcessAPI::readRunParameters(). */
bool readParameters(const char* path, OpenWBEM::StringArray& parameters);

} // namespace inventory

#endif
