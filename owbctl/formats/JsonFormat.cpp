#include "formats/JsonFormat.hpp"

#include "output/Text.hpp"

#include <utility>

namespace owbctl {

using namespace agent;

namespace {

using Json = nlohmann::ordered_json;

// Incremented when a key changes its meaning or is removed. New keys do not change it.
constexpr int formatVersion = 1;

Json textOrNull(const std::string& text) {
    return text.empty() ? Json() : Json(text);
}

/** The names of values, in their order; null for a value without a name. */
Json meanings(const Property& property) {
    Json names = Json::array();
    for (const std::string& value : property.values) {
        const char* const name = property.attribute->values.find(value);
        names.push_back(name == nullptr ? Json() : Json(name));
    }
    return names;
}

Json toJson(const Property& property) {
    const Attribute& attribute = *property.attribute;
    return {{"name", attribute.property},     {"nominator", attribute.nominator},
            {"kind", wordOf(attribute.kind)}, {"unit", textOrNull(attribute.unit)},
            {"values", property.values},      {"meaning", meanings(property)}};
}

Json toJson(const Row& row) {
    Json properties = Json::array();
    for (const Property& property : row.properties)
        properties.push_back(toJson(property));
    return {{"row", row.number}, {"properties", std::move(properties)}};
}

Json toJson(const SampledRow& row) {
    Json properties = Json::array();
    for (const SampledProperty& sampled : row.properties) {
        Json property = toJson(sampled.property);
        property["changed"] = sampled.isChanged;
        property["per_second"] = sampled.perSecond ? Json(*sampled.perSecond) : Json();
        properties.push_back(std::move(property));
    }
    return {{"row", row.number}, {"properties", std::move(properties)}};
}

Json nominators(long group) {
    Json result = Json::array();
    for (const Attribute* attribute : attributesByNominator(group))
        result.push_back({{"nominator", attribute->nominator},
                          {"name", attribute->property},
                          {"counter", attribute->kind == Kind::counter},
                          {"kind", wordOf(attribute->kind)},
                          {"unit", textOrNull(attribute->unit)},
                          {"settable", attribute->isSettable()},
                          {"description", attribute->description}});
    return result;
}

Json toJson(const Change& change) {
    return {{"name", change.attribute->property},
            {"nominator", change.attribute->nominator},
            {"asked", change.requested.has_value()},
            {"before", change.before},
            {"after", change.after}};
}

template <class Predicate>
Json namesWhere(const std::vector<Change>& changes, Predicate applies) {
    Json names = Json::array();
    for (const Change& change : changes) {
        if (applies(change))
            names.push_back(change.attribute->property);
    }
    return names;
}

Json toJson(const ProcessInformation& information) {
    return {{"name", information.name},
            {"module_path", information.modulePath},
            {"parameters", information.parameters},
            {"run_type", information.runType},
            {"execution_state", information.executionState}};
}

Json toJson(const ProcessStatistics& statistics) {
    return {{"total_cpu_time", statistics.cpuTime},
            {"real_text", statistics.text},
            {"real_data", statistics.data},
            {"real_stack", statistics.stack}};
}

template <class Part>
Json partOrNull(const std::optional<Part>& part) {
    return part ? toJson(*part) : Json();
}

std::string dumped(const Json& document, int indent) {
    return document.dump(indent, ' ', false, Json::error_handler_t::replace) + '\n';
}

} // namespace

JsonFormat::JsonFormat(Output& output, std::string url)
    : m_output(output)
    , m_url(std::move(url)) {}

void JsonFormat::writeCatalogue(const std::vector<long>& groups) {
    Json all = Json::array();
    for (const long group : groups)
        all.push_back({{"group", group},
                       {"name", classOf(group).shortName},
                       {"class", classOf(group).name},
                       {"description", classOf(group).subject},
                       {"keys", classOf(group).writeKeys},
                       {"properties", nominators(group)}});
    write({{"format_version", formatVersion}, {"groups", std::move(all)}});
}

void JsonFormat::writeGroup(const Group& group) {
    Json rows = Json::array();
    for (const Row& row : group.rows)
        rows.push_back(toJson(row));
    m_groups.push_back({{"group", group.number},
                        {"class", group.className},
                        {"status", group.status},
                        {"error", textOrNull(group.failure.text)},
                        {"rows", std::move(rows)}});
}

void JsonFormat::endGroups() {
    write({{"format_version", formatVersion}, {"url", m_url}, {"groups", std::move(m_groups)}});
}

void JsonFormat::writeWrite(const Write& write) {
    Json changed = Json::array();
    for (const Change& change : write.changes) {
        if (change.isChanged())
            changed.push_back(toJson(change));
    }
    const auto isRejected = [](const Change& change) { return change.isRejected(); };
    const auto isCleared = [](const Change& change) { return change.isCleared(); };
    this->write({{"format_version", formatVersion},
                 {"url", m_url},
                 {"group", write.group},
                 {"class", classOf(write.group).name},
                 {"row", write.row},
                 {"status", write.status},
                 {"error", textOrNull(write.error)},
                 {"reason", textOrNull(write.failure.text)},
                 {"changes", std::move(changed)},
                 {"not_taken", namesWhere(write.changes, isRejected)},
                 {"cleared", namesWhere(write.changes, isCleared)}});
}

void JsonFormat::writeConversion(const Conversion& conversion) {
    write({{"format_version", formatVersion},
           {"text", conversion.text},
           {"unit", conversion.unit},
           {"value", conversion.number ? Json(*conversion.number) : Json()},
           {"error", textOrNull(conversion.error)}});
}

void JsonFormat::writeProcesses(const std::vector<Process>& processes) {
    Json all = Json::array();
    for (const Process& process : processes)
        all.push_back({{"handle", process.handle},
                       {"information", partOrNull(process.information)},
                       {"statistics", partOrNull(process.statistics)}});
    write({{"format_version", formatVersion}, {"processes", std::move(all)}});
}

void JsonFormat::writeSample(const Sample& sample) {
    Json rows = Json::array();
    for (const SampledRow& row : sample.rows)
        rows.push_back(toJson(row));
    Json vanished = Json::array();
    for (const Row& row : sample.vanished)
        vanished.push_back(toJson(row));
    m_output.write(dumped({{"format_version", formatVersion},
                           {"url", m_url},
                           {"sample", sample.number},
                           {"time", utc(sample.time)},
                           {"group", sample.group.number},
                           {"class", sample.group.className},
                           {"status", sample.group.status},
                           {"error", textOrNull(sample.group.failure.text)},
                           {"rows", std::move(rows)},
                           {"vanished", std::move(vanished)}},
                          -1));
}

void JsonFormat::writeCheck(const Check& check) {
    m_checks.push_back({{"name", check.name},
                        {"result", wordOf(check.result)},
                        {"finding", check.finding},
                        {"advice", textOrNull(check.advice)}});
}

void JsonFormat::endChecks() {
    write({{"format_version", formatVersion}, {"url", m_url}, {"checks", std::move(m_checks)}});
}

void JsonFormat::writeVersions(const std::vector<Version>& versions) {
    Json all = Json::array();
    for (const Version& version : versions)
        all.push_back({{"name", version.name}, {"version", version.version}});
    write({{"format_version", formatVersion}, {"versions", std::move(all)}});
}

void JsonFormat::write(const Json& document) {
    m_output.write(dumped(document, 2));
}

std::string jsonError(const std::string& why, int exitStatus) {
    return dumped({{"format_version", formatVersion}, {"error", why}, {"exit_status", exitStatus}}, 2);
}

} // namespace owbctl
