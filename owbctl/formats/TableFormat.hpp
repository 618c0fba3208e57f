#ifndef OWBCTL_FORMATS_TABLEFORMAT_HPP
#define OWBCTL_FORMATS_TABLEFORMAT_HPP

#include "formats/Format.hpp"
#include "output/Output.hpp"

namespace owbctl {

/** Tables for people, made to fit the terminal: each group under a heading, a group of a single row with one
 * property a line. On a terminal a sample takes the place of the one before. */
class TableFormat : public Format {
public:
    /** `output` must outlive the format. */
    explicit TableFormat(Output& output)
        : m_output(output) {}

    void writeCatalogue(const std::vector<long>& groups) override;
    void writeGroup(const Group& group) override;
    void endGroups() override {}
    void writeSample(const Sample& sample) override;
    void writeWrite(const Write& write) override;
    void writeConversion(const Conversion& conversion) override;
    void writeProcesses(const std::vector<Process>& processes) override;
    void writeCheck(const Check& check) override;
    void endChecks() override {}
    void writeVersions(const std::vector<Version>& versions) override;

private:
    /** The blank line between two parts: empty in front of the first one. */
    const char* separator();

    Output& m_output;
    bool m_first = true;
};

} // namespace owbctl
#endif
