#ifndef OWBCTL_TABLEFORMAT_HPP
#define OWBCTL_TABLEFORMAT_HPP

#include "Format.hpp"
#include "Output.hpp"

namespace owbctl {

/** Tables for people: each group under a heading, a group of a single row with one property a line. */
class TableFormat : public Format {
public:
    /** `output` must outlive the format. */
    explicit TableFormat(Output& output)
        : m_output(output) {}

    void writeCatalogue() override;
    void writeGroup(const Group& group) override;
    void endGroups() override {}
    void writeWrite(const Write& write) override;
    void writeConversion(const Conversion& conversion) override;
    void writeProcesses(const std::vector<Process>& processes) override;

private:
    Output& m_output;
    bool m_first = true;
};

} // namespace owbctl
#endif
