#ifndef OWBCTL_FORMATS_JSONFORMAT_HPP
#define OWBCTL_FORMATS_JSONFORMAT_HPP

#include "formats/Format.hpp"
#include "output/Output.hpp"

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

    void writeCatalogue(const std::vector<long>& groups) override;
    void writeGroup(const Group& group) override;
    void endGroups() override;
    /** Each sample is a document on a line of its own. */
    void writeSample(const Sample& sample) override;
    void writeWrite(const Write& write) override;
    void writeConversion(const Conversion& conversion) override;
    void writeProcesses(const std::vector<Process>& processes) override;
    void writeCheck(const Check& check) override;
    void endChecks() override;
    void writeVersions(const std::vector<Version>& versions) override;

private:
    void write(const nlohmann::ordered_json& document);
    nlohmann::ordered_json error(long status) const;

    Output& m_output;
    std::string m_url;
    nlohmann::ordered_json m_groups = nlohmann::ordered_json::array();
    nlohmann::ordered_json m_checks = nlohmann::ordered_json::array();
};

/** The document, with its line feed, of a command that came to no other one. */
std::string jsonError(const std::string& why, int exitStatus);

} // namespace owbctl
#endif
