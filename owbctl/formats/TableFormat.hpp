#ifndef OWBCTL_FORMATS_TABLEFORMAT_HPP
#define OWBCTL_FORMATS_TABLEFORMAT_HPP

#include "formats/Format.hpp"
#include "formats/Style.hpp"
#include "output/Output.hpp"

#include <string>

namespace owbctl {

/** Tables for people that fit the terminal. Each group has a heading; a group of one row has one property on
 * each line. On a terminal that can move its cursor each sample replaces the previous one. */
class TableFormat : public Format {
public:
    /** `output` must outlive the format. */
    explicit TableFormat(Output& output, const Style& style = {})
        : m_output(output)
        , m_style(style) {}

    void writeCatalogue(const std::vector<long>& groups) override;
    void writeGroup(const agent::Group& group) override;
    void endGroups() override {}
    void writeSample(const agent::Sample& sample) override;
    void endSamples() override;
    void writeWrite(const agent::Write& write) override;
    void writeConversion(const agent::Conversion& conversion) override;
    void writeProcesses(const std::vector<agent::Process>& processes) override;
    void writeCheck(const Check& check) override;
    void endChecks() override {}
    void writeVersions(const std::vector<Version>& versions) override;

private:
    /** A blank line, except before the first part. */
    const char* separator();

    Output& m_output;
    Style m_style;
    bool m_first = true;
    /** The samples that the screen shows next. */
    std::string m_screen;
};

} // namespace owbctl
#endif
