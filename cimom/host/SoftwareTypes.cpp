#include "host/SoftwareTypes.hpp"

#include "SoftwareType.hpp"
#include "system/Program.hpp"

namespace cimom {
namespace {

const char* const program = "/kq/bin/softinv";

std::vector<std::string> linesOf(const std::string& text) {
    const std::vector<std::string_view> all = lines(text);
    return std::vector<std::string>(all.begin(), all.end());
}

} // namespace

SoftwareTypes::SoftwareTypes(const std::string& printed)
    : m_lines(linesOf(printed)) {
    for (const std::string& line : m_lines)
        m_texts.push_back(line.c_str());
    m_texts.push_back(nullptr);
}

unsigned short SoftwareTypes::of(const OpenWBEM::String& name) const {
    return inventory::softwareType(m_texts.data(), name);
}

std::shared_ptr<const SoftwareTypes> SoftwareTypeSource::types() {
    const std::optional<FileVersion> version = m_host.fileVersion(program);
    if (!version)
        return nullptr;
    const std::string path = m_host.realPath(program);
    // What a program that fails has printed counts, as for the library's own inventory.
    const auto printed = m_answer.get({version}, [path] { return outputOf({path}).text; });
    return printed ? std::make_shared<const SoftwareTypes>(*printed) : nullptr;
}

} // namespace cimom
