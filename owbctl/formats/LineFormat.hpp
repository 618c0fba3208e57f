#ifndef OWBCTL_FORMATS_LINEFORMAT_HPP
#define OWBCTL_FORMATS_LINEFORMAT_HPP

#include "formats/Format.hpp"
#include "output/Output.hpp"

namespace owbctl {

/**
 * One value a line, with its whole address in front, for grep(1) and its kin:
 * "7 QAV_TCPProtocolEndpoint[2].LocalPort = 80". The elements of an array of several are numbered as in
 * "Parameters[1]". Of a series of samples the later ones show what changed.
 */
class LineFormat : public Format {
public:
    /** `output` must outlive the format. */
    explicit LineFormat(Output& output)
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
    Output& m_output;
};

} // namespace owbctl
#endif
