#include "state/SiteValues.hpp"

#include "json/Document.hpp"

#include <nlohmann/json.hpp>
#include <stdexcept>
#include <utility>

namespace cimom {
namespace {

using json::Value;

// To be increased if an old program would misread a new file.
const int formatVersion = 1;

const Value& checked(const Value& value, Value::Kind kind, const char* what) {
    if (value.kind != kind)
        throw json::Error(value.line, std::string("not ") + what);
    return value;
}

SiteValues::Values values(const Value& object) {
    SiteValues::Values result;
    for (const auto& [property, value] :
         checked(object, Value::Kind::object, "an object of values").members) {
        if (value.kind == Value::Kind::null)
            result[property] = std::nullopt;
        else
            result[property] = checked(value, Value::Kind::string, "a string or null").text;
    }
    return result;
}

std::map<std::string, SiteValues::Values> instances(const Value& object) {
    std::map<std::string, SiteValues::Values> result;
    for (const auto& [instance, written] :
         checked(object, Value::Kind::object, "an object of instances").members)
        result[instance] = values(written);
    return result;
}

/** An unknown member is an error: the next write of the file would lose it. */
std::map<std::string, SiteValues::Values> read(const std::string& document) {
    const Value root = json::parse(document);
    checked(root, Value::Kind::object, "an object with \"format_version\" and \"instances\"");
    std::map<std::string, SiteValues::Values> result;
    bool hasVersion = false;
    for (const auto& [name, value] : root.members) {
        if (name == "format_version") {
            hasVersion = true;
            if (value.kind != Value::Kind::number || value.text != std::to_string(formatVersion))
                throw json::Error(value.line, "format_version is not " + std::to_string(formatVersion));
        } else if (name == "instances") {
            result = instances(value);
        } else {
            throw json::Error(value.line, "unknown member \"" + name + "\"");
        }
    }
    if (!hasVersion)
        throw json::Error(root.line, "no \"format_version\"");
    return result;
}

std::string document(const std::map<std::string, SiteValues::Values>& all) {
    nlohmann::json instances = nlohmann::json::object();
    for (const auto& [instance, values] : all) {
        nlohmann::json& written = instances[instance];
        for (const auto& [property, value] : values)
            written[property] = value ? nlohmann::json(*value) : nlohmann::json();
    }
    return nlohmann::json{{"format_version", formatVersion}, {"instances", std::move(instances)}}.dump(2) +
           "\n";
}

} // namespace

SiteValues::SiteValues(std::unique_ptr<StateFile> file)
    : m_file(std::move(file)) {
    const std::optional<std::string> content = m_file->read();
    if (!content)
        return;
    try {
        m_values = read(*content);
    } catch (const json::Error& e) {
        throw std::runtime_error(m_file->path() + ":" + std::to_string(e.line()) + ": " + e.what());
    }
}

const SiteValues::Values* SiteValues::find(const std::string& instance) const {
    const auto found = m_values.find(instance);
    return found == m_values.end() ? nullptr : &found->second;
}

void SiteValues::write(const std::string& instance, const Values& changes) {
    if (changes.empty())
        return;
    std::map<std::string, Values> changed = m_values;
    for (const auto& [property, value] : changes)
        changed[instance][property] = value;
    if (m_file)
        m_file->replace(document(changed));
    m_values.swap(changed);
}

} // namespace cimom
