#ifndef OWBCTL_JSONFORMAT_HPP
#define OWBCTL_JSONFORMAT_HPP

#include "Format.hpp"
#include "Output.hpp"

#include <nlohmann/json.hpp>

#include <string>

namespace owbctl {

/**
 * One JSON document (RFC 8259) for programs. Every key is always present and arrays are always arrays. Values
 * are the item texts as strings; in them each byte sequence that is not UTF-8 is replaced by U+FFFD.
 */
class JsonFormat : public Format {
public:
    /** `output` must outlive the format; `url` is shown in the document. */
    JsonFormat(Output& output, std::string url);

    void writeCatalogue() override;
    void writeGroup(const Group& group) override;
    void endGroups() override;
    void writeWrite(const Write& write) override;
    void writeConversion(const Conversion& conversion) override;
    void writeProcesses(const std::vector<Process>& processes) override;

private:
    void write(const nlohmann::ordered_json& document);

    Output& m_output;
    std::string m_url;
    nlohmann::ordered_json m_groups = nlohmann::ordered_json::array();
};

} // namespace owbctl
#endif
