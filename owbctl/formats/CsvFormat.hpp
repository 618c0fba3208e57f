#ifndef OWBCTL_FORMATS_CSVFORMAT_HPP
#define OWBCTL_FORMATS_CSVFORMAT_HPP

#include "formats/Format.hpp"
#include "output/Output.hpp"

#include <vector>

namespace owbctl {

/**
 * Comma-separated values (RFC 4180, lines ended by a line feed): one header, then one record on each line. An
 * empty field means no value, "" an empty text. The values of an array share one field, separated by line
 * feeds. U+FFFD replaces bytes that are not UTF-8.
 */
class CsvFormat : public Format {
public:
    /** `output` must outlive the format. */
    explicit CsvFormat(Output& output)
        : m_output(output) {}

    void writeCatalogue(const std::vector<long>& groups) override;
    /** All groups form one table: one record for each row, one column for each property of the groups. */
    void writeGroup(const agent::Group& group) override;
    void endGroups() override;
    void writeSample(const agent::Sample& sample) override;
    void endSamples() override {}
    void writeWrite(const agent::Write& write) override;
    void writeConversion(const agent::Conversion& conversion) override;
    void writeProcesses(const std::vector<agent::Process>& processes) override;
    void writeCheck(const Check& check) override;
    void endChecks() override {}
    void writeVersions(const std::vector<Version>& versions) override;

private:
    Output& m_output;
    std::vector<agent::Group> m_groups;
};

} // namespace owbctl
#endif
