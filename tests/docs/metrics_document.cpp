// Prints docs/metrics.md from the tables of metrics/.
#include "metrics/Naming.hpp"
#include "metrics/Scrape.hpp"
#include "metrics/Value.hpp"

#include <owb.h>

#include <iostream>
#include <string>
#include <vector>

using namespace metrics;
using agent::Attribute;

namespace {

const char* const introduction =
    R"(<!-- Written by tests/docs/metrics_document.cpp: cmake --build --preset release --target update_metrics -->
# Metrics

`owbctl metrics` and [owb-exporter(8)](man/owb-exporter.8) write the [groups](groups.md) of an object manager as metrics for
Prometheus, in its text format 0.0.4 or in OpenMetrics 1.0.

- A name is `owb_<subject>_<quantity>_<unit>`. Units are base units: bytes and seconds. A counter ends in `_total`, a date in
  `_timestamp_seconds`, the number of seconds from 1970.
- A metric that ends in `_info` has the value 1, and texts as labels. Join it by the labels that other metrics of its subject
  have: `owb_disk_size_bytes * on (instance, device_index) group_left (description) owb_device_info`.
- A value that the object manager does not have, or that is no number, is absent. A label without a text is absent.
- A code is the number that [groups](groups.md) lists. A label has its meaning, in lower case with underscores.
- There is no series for a process, a TCP connection or a package: they are counted and summed up. A code without a known meaning
  is counted as `other`, a row without a code as `unknown`.
- If two rows of a group have the same labels, the first one is written; `owb_scrape_dropped_rows` counts the others.
- Numbers are exact, whatever their size: counters of 64 bits, sizes in blocks times the size of a block.

Group 17 has no metrics because it repeats group 4; groups 8, 23, 24, 25, 28 and 29 have none because they only connect
instances.

The column *source* has group and nominator.
)";

const char* const scrapeTitle = R"(
## The scrape

These metrics say how the groups were read. A group that was not read in time has no metrics, and
`owb_group_read_success` 0.
)";

const char* const tableHead = "\n| metric | type | labels | source | meaning |\n|---|---|---|---|---|\n";

std::string sampleNameOf(const Family& family) {
    const char* const suffix = family.type == Type::counter ? "_total"
                               : family.type == Type::info  ? "_info"
                                                            : "";
    return family.name + suffix;
}

const char* wordOf(Type type) {
    return type == Type::counter ? "counter" : type == Type::info ? "info" : "gauge";
}

void printRow(const Family& family, const std::string& labels, const std::string& source) {
    std::cout << "| `" << sampleNameOf(family) << "` | " << wordOf(family.type) << " | " << labels << " | "
              << source << " | " << family.help << " |\n";
}

std::string labelsWith(long group, const std::vector<Use>& uses) {
    std::string labels;
    for (const Use use : uses) {
        for (const Attribute* attribute : agent::attributesOf(group)) {
            if (useOf(*attribute) == use)
                labels += (labels.empty() ? "`" : ", `") + labelOf(*attribute) + '`';
        }
    }
    return labels;
}

std::string sourceOf(const Attribute& attribute) {
    return std::to_string(attribute.group) + '/' + std::to_string(attribute.nominator);
}

void printGroup(long group) {
    const Subject& subject = *subjectOf(group);
    std::cout << "\n## Group " << group << ": " << agent::classOf(group).subject << '\n' << tableHead;
    if (subject.shape != Shape::sums && !labelsWith(group, {Use::label}).empty())
        printRow(infoFamilyOf(subject), labelsWith(group, {Use::key, Use::label}), std::to_string(group));
    for (const Count& count : countsOf(group)) {
        const std::string label = *count.label == '\0' ? "" : "`" + std::string(count.label) + "`";
        const std::string nominator = count.nominator < 0 ? "" : "/" + std::to_string(count.nominator);
        printRow({count.name, Type::gauge, "", count.help, {}}, label, std::to_string(group) + nominator);
    }
    for (const Attribute* attribute : agent::attributesOf(group)) {
        if (useOf(*attribute) == Use::value)
            printRow(familyOf(*attribute), labelsWith(group, {Use::key}), sourceOf(*attribute));
    }
}

void printScrape() {
    Scrape scrape{{0}, {{0, OWB_DONE, {}, 0}}, {}, {}, std::chrono::microseconds(0)};
    std::cout << scrapeTitle << tableHead;
    for (const Family& family : familiesOf(scrape)) {
        const Labels& labels = family.samples.front().labels;
        printRow(family, labels.empty() ? "" : "`" + labels.front().name + "`", "");
    }
}

} // namespace

int main() {
    std::cout << introduction;
    for (const long group : measuredGroups())
        printGroup(group);
    printScrape();
}
