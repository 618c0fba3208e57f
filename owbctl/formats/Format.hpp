#ifndef OWBCTL_FORMATS_FORMAT_HPP
#define OWBCTL_FORMATS_FORMAT_HPP

#include "agent/Conversion.hpp"
#include "agent/Group.hpp"
#include "agent/Processes.hpp"
#include "agent/Sample.hpp"
#include "agent/Write.hpp"
#include "doctor/Check.hpp"

#include <string>
#include <vector>

namespace owbctl {

/** A component and its version. */
struct Version {
    std::string name;
    std::string version;
};

/** A form of the program's data on standard output. Each function throws std::system_error when writing
 * fails. */
class Format {
public:
    virtual ~Format() = default;

    /** Writes what the tables of the library say of groups: class, nominators and property names. */
    virtual void writeCatalogue(const std::vector<long>& groups) = 0;

    /** Writes what one read gave. After the last one call endGroups(). */
    virtual void writeGroup(const Group& group) = 0;
    virtual void endGroups() = 0;

    /** Writes one of a series of samples. */
    virtual void writeSample(const Sample& sample) = 0;

    /** Writes what came of writing a row: the properties that changed, or the error. */
    virtual void writeWrite(const Write& write) = 0;

    virtual void writeConversion(const Conversion& conversion) = 0;

    virtual void writeProcesses(const std::vector<Process>& processes) = 0;

    /** Writes one check. After the last one call endChecks(). */
    virtual void writeCheck(const Check& check) = 0;
    virtual void endChecks() = 0;

    virtual void writeVersions(const std::vector<Version>& versions) = 0;
};

} // namespace owbctl
#endif
