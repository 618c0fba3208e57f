#ifndef OWBCTL_FORMAT_HPP
#define OWBCTL_FORMAT_HPP

#include "Conversion.hpp"
#include "Group.hpp"
#include "Processes.hpp"
#include "Write.hpp"

#include <vector>

namespace owbctl {

/** A form of the program's data on standard output. Each function throws std::system_error when writing
 * fails. */
class Format {
public:
    virtual ~Format() = default;

    /** Writes the whole catalogue: every group with its class, nominators and property names. */
    virtual void writeCatalogue() = 0;

    /** Writes what one read gave. After the last one call endGroups(). */
    virtual void writeGroup(const Group& group) = 0;
    virtual void endGroups() = 0;

    /** Writes what came of writing a row: the properties that changed, or the error. */
    virtual void writeWrite(const Write& write) = 0;

    virtual void writeConversion(const Conversion& conversion) = 0;

    virtual void writeProcesses(const std::vector<Process>& processes) = 0;
};

} // namespace owbctl
#endif
