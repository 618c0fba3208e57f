#ifndef OWBCTL_FORMATS_LINEFORMAT_HPP
#define OWBCTL_FORMATS_LINEFORMAT_HPP

#include "formats/Format.hpp"
#include "output/Output.hpp"

namespace owbctl {

/**
 * One value on each line, after its full address, for grep(1) and similar programs:
 * "7 QAV_TCPProtocolEndpoint[2].LocalPort = 80". Several values of an array have an index, as in
 * "Parameters[1]". After the first sample only changed values are printed.
 */
class LineFormat : public Format {
public:
    /** `output` must outlive the format. */
    explicit LineFormat(Output& output)
        : m_output(output) {}

    void writeCatalogue(const std::vector<long>& groups) override;
    void writeGroup(const agent::Group& group) override;
    void endGroups() override {}
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
};

} // namespace owbctl
#endif
