#ifndef OWBCTL_FORMATS_CSVFORMAT_HPP
#define OWBCTL_FORMATS_CSVFORMAT_HPP

#include "formats/Format.hpp"
#include "output/Output.hpp"

#include <vector>

namespace owbctl {

/**
 * Comma-separated values (RFC 4180, lines ended by a line feed): one header, then one record a line. What is
 * not there is an empty field, an empty text is "". The values of an array stand in one field, a line feed
 * between them. Bytes that are not UTF-8 are replaced by U+FFFD.
 */
class CsvFormat : public Format {
public:
    /** `output` must outlive the format. */
    explicit CsvFormat(Output& output)
        : m_output(output) {}

    void writeCatalogue(const std::vector<long>& groups) override;
    /** All groups make one table: a record is a row, a column each property that one of the groups has. */
    void writeGroup(const Group& group) override;
    void endGroups() override;
    void writeSample(const Sample& sample) override;
    void writeWrite(const Write& write) override;
    void writeConversion(const Conversion& conversion) override;
    void writeProcesses(const std::vector<Process>& processes) override;
    void writeCheck(const Check& check) override;
    void endChecks() override {}
    void writeVersions(const std::vector<Version>& versions) override;

private:
    Output& m_output;
    std::vector<Group> m_groups;
};

} // namespace owbctl
#endif
