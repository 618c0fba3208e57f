#ifndef OWBCTL_FORMATS_FORMAT_HPP
#define OWBCTL_FORMATS_FORMAT_HPP

#include "agent/Change.hpp"
#include "agent/Conversion.hpp"
#include "agent/Group.hpp"
#include "agent/Processes.hpp"
#include "agent/Sample.hpp"
#include "doctor/Check.hpp"

#include <string>
#include <vector>

namespace owbctl {

/** A component and its version. */
struct Version {
    std::string name;
    std::string version;
};

/** An output format. Each function throws std::system_error if writing fails. */
class Format {
public:
    virtual ~Format() = default;

    /** Writes groups from the catalogue: class, nominators and properties. */
    virtual void writeCatalogue(const std::vector<long>& groups) = 0;

    /** Writes the result of one read. Call endGroups() after the last one. */
    virtual void writeGroup(const agent::Group& group) = 0;
    virtual void endGroups() = 0;

    /** Writes one of a series of samples. Call endSamples() after those of all groups that were read in turn.
     */
    virtual void writeSample(const agent::Sample& sample) = 0;
    virtual void endSamples() = 0;

    /** Writes the result of writing a row: the properties that changed, or the error. */
    virtual void writeWrite(const agent::Write& write) = 0;

    virtual void writeConversion(const agent::Conversion& conversion) = 0;

    virtual void writeProcesses(const std::vector<agent::Process>& processes) = 0;

    /** Writes one check. Call endChecks() after the last one. */
    virtual void writeCheck(const Check& check) = 0;
    virtual void endChecks() = 0;

    virtual void writeVersions(const std::vector<Version>& versions) = 0;
};

} // namespace owbctl
#endif
