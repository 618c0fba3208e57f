#include "metrics/Scrape.hpp"

#include "metrics/Decimal.hpp"

#include <owb.h>

#include <algorithm>
#include <string>
#include <utility>

namespace metrics {

using std::chrono::duration_cast;
using std::chrono::microseconds;

namespace {

Family gauge(const char* name, const char* help, const char* unit = "") {
    return {name, Type::gauge, unit, help, {}};
}

Family gauge(const char* name, const char* help, const char* unit, std::string value) {
    Family family = gauge(name, help, unit);
    family.samples.push_back({{}, std::move(value)});
    return family;
}

Labels groupLabel(long group) {
    return {{"group", std::to_string(group)}};
}

std::string seconds(microseconds time) {
    return withPoint(std::to_string(time.count()), 6);
}

bool isRead(const Scrape& scrape, long group) {
    return std::any_of(scrape.readings.begin(), scrape.readings.end(), [group](const Reading& reading) {
        return reading.group == group && reading.status == OWB_DONE;
    });
}

/** Of all groups, read or not. */
Family successes(const Scrape& scrape) {
    Family family = gauge("owb_group_read_success", "Whether the group was read.");
    for (const long group : scrape.groups)
        family.samples.push_back({groupLabel(group), isRead(scrape, group) ? "1" : "0"});
    return family;
}

Family durations(const Scrape& scrape) {
    Family family = gauge("owb_group_read_seconds", "Time that the reading of the group took.", "seconds");
    for (const Reading& reading : scrape.readings)
        family.samples.push_back({groupLabel(reading.group), seconds(reading.duration)});
    return family;
}

std::size_t droppedRows(const Scrape& scrape) {
    std::size_t rows = 0;
    for (const Reading& reading : scrape.readings)
        rows += reading.droppedRows;
    return rows;
}

bool isComplete(const Scrape& scrape) {
    return std::all_of(scrape.groups.begin(), scrape.groups.end(),
                       [&scrape](long group) { return isRead(scrape, group); });
}

} // namespace

Measured measure(long group) {
    const auto begin = std::chrono::steady_clock::now();
    const agent::Group read = agent::readGroup(group);
    GroupFamilies converted = familiesOf(read);
    const auto time = duration_cast<microseconds>(std::chrono::steady_clock::now() - begin);
    return {{group, read.status, time, converted.droppedRows}, std::move(converted.families), read.failure};
}

std::vector<Family> familiesOf(const Scrape& scrape) {
    const auto begin = duration_cast<microseconds>(scrape.begin.time_since_epoch());
    std::vector<Family> families = {
        successes(scrape),
        durations(scrape),
        gauge("owb_scrape_success", "Whether all groups were read.", "", isComplete(scrape) ? "1" : "0"),
        gauge("owb_scrape_timestamp_seconds", "Time at which the reading of the groups began.", "seconds",
              seconds(begin)),
        gauge("owb_scrape_read_seconds", "Time that the reading of all groups took.", "seconds",
              seconds(scrape.duration)),
        gauge("owb_scrape_dropped_rows",
              "Rows left out because an earlier row of their group has the same labels.", "",
              std::to_string(droppedRows(scrape))),
    };
    if (scrape.age)
        families.push_back(gauge("owb_scrape_age_seconds",
                                 "Time since the reading of the groups began: the age of the values.",
                                 "seconds", seconds(*scrape.age)));
    Family build{"owb_build", Type::info, "", "Version of the library.", {}};
    build.samples.push_back({{{"version", OWB_version(nullptr, nullptr)}}, "1"});
    families.push_back(std::move(build));
    return families;
}

} // namespace metrics
