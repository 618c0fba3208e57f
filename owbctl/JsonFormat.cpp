#include "JsonFormat.hpp"

#include "Catalogue.hpp"
#include "Status.hpp"

#include <utility>

namespace owbctl {
namespace {

using Json = nlohmann::ordered_json;

// Goes up when a key changes its meaning or goes away; new keys may come at any time.
constexpr int formatVersion = 1;

Json toJson(const Property& property) {
    return {{"name", property.description->property},
            {"nominator", property.description->nom},
            {"values", property.values}};
}

Json toJson(const Row& row) {
    Json properties = Json::array();
    for (const Property& property : row.properties)
        properties.push_back(toJson(property));
    return {{"row", row.number}, {"properties", std::move(properties)}};
}

Json nominators(long group) {
    Json result = Json::array();
    for (const ExtItem* item : propertiesOf(group))
        result.push_back({{"nominator", item->nom}, {"name", item->property}});
    return result;
}

Json toJson(const Change& change) {
    return {{"name", change.description->property},
            {"nominator", change.description->nom},
            {"asked", change.asked.has_value()},
            {"before", change.before},
            {"after", change.after}};
}

template <class Predicate>
Json namesWhere(const std::vector<Change>& changes, Predicate applies) {
    Json names = Json::array();
    for (const Change& change : changes) {
        if (applies(change))
            names.push_back(change.description->property);
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

Json textOrNull(const std::string& text) {
    return text.empty() ? Json() : Json(text);
}

} // namespace

JsonFormat::JsonFormat(Output& output, std::string url)
    : m_output(output)
    , m_url(std::move(url)) {}

void JsonFormat::writeCatalogue() {
    Json groups = Json::array();
    for (long group = 0; group <= OWB_MAX_GROUP; ++group)
        groups.push_back(
            {{"group", group}, {"class", ExtGroupCimClass[group]}, {"properties", nominators(group)}});
    write({{"format_version", formatVersion}, {"groups", std::move(groups)}});
}

void JsonFormat::writeGroup(const Group& group) {
    Json rows = Json::array();
    for (const Row& row : group.rows)
        rows.push_back(toJson(row));
    const Json error = group.status == OWB_DONE ? Json() : Json(failureText(group.status, m_url));
    m_groups.push_back({{"group", group.number},
                        {"class", group.className},
                        {"status", group.status},
                        {"error", error},
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
    const auto isRefused = [](const Change& change) { return change.isRefused(); };
    const auto isCleared = [](const Change& change) { return change.isCleared(); };
    this->write({{"format_version", formatVersion},
                 {"url", m_url},
                 {"group", write.group},
                 {"class", ExtGroupCimClass[write.group]},
                 {"row", write.row},
                 {"status", write.status},
                 {"error", textOrNull(write.error)},
                 {"changes", std::move(changed)},
                 {"not_taken", namesWhere(write.changes, isRefused)},
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

void JsonFormat::write(const Json& document) {
    m_output.write(document.dump(2, ' ', false, Json::error_handler_t::replace) + '\n');
}

} // namespace owbctl
