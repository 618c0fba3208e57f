#ifndef OWBCTL_FORMATS_JSONFORMAT_HPP
#define OWBCTL_FORMATS_JSONFORMAT_HPP

#include "formats/Format.hpp"
#include "output/Output.hpp"

#include <nlohmann/json.hpp>

#include <string>

namespace owbctl {

/**
 * One JSON document (RFC 8259) for programs. Every key is always present, and arrays are always arrays.
 * Values are the item texts as strings; U+FFFD replaces each byte sequence that is not UTF-8.
 */
class JsonFormat : public Format {
public:
    /** `output` must outlive the format. `url` appears in the document: pass it without password. */
    JsonFormat(Output& output, std::string url);

    void writeCatalogue(const std::vector<long>& groups) override;
    void writeGroup(const agent::Group& group) override;
    void endGroups() override;
    /** Each sample is one document on one line. */
    void writeSample(const agent::Sample& sample) override;
    void endSamples() override {}
    void writeWrite(const agent::Write& write) override;
    void writeConversion(const agent::Conversion& conversion) override;
    void writeProcesses(const std::vector<agent::Process>& processes) override;
    void writeCheck(const Check& check) override;
    void endChecks() override;
    void writeVersions(const std::vector<Version>& versions) override;

private:
    void write(const nlohmann::ordered_json& document);

    Output& m_output;
    std::string m_url;
    nlohmann::ordered_json m_groups = nlohmann::ordered_json::array();
    nlohmann::ordered_json m_checks = nlohmann::ordered_json::array();
};

/** The document of a command that failed before it had data, with a line feed. */
std::string jsonError(const std::string& why, int exitStatus);

} // namespace owbctl
#endif
