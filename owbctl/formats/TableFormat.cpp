#include "formats/TableFormat.hpp"

#include "formats/GroupTable.hpp"
#include "formats/ProcessTable.hpp"
#include "formats/Table.hpp"
#include "output/Text.hpp"

#include <ctime>

namespace owbctl {

using namespace agent;

namespace {

std::string name(long group) {
    return "Group " + std::to_string(group) + "  " + classOf(group).name;
}

/** Narrower terminals show no classes in the list of groups: the descriptions need the columns. */
constexpr std::size_t leastWidthForClasses = 100;

std::string overview(const std::vector<long>& groups, std::size_t limit, bool isWide) {
    const bool hasClasses = isWide || limit == 0 || limit >= leastWidthForClasses;
    std::vector<std::string> header = {"Group", "Name", "Description"};
    if (hasClasses)
        header.insert(header.begin() + 2, "Class");
    Table table(header, Table::Fit::wrapLast);
    for (const long group : groups) {
        const GroupClass& described = classOf(group);
        std::vector<std::string> cells = {std::to_string(group), described.shortName, described.subject};
        if (hasClasses)
            cells.insert(cells.begin() + 2, described.name);
        table.add(std::move(cells));
    }
    return table.text(limit);
}

std::string descriptionOf(const Attribute& attribute) {
    return *attribute.unit == '\0' ? attribute.description
                                   : std::string(attribute.description) + " Unit: " + attribute.unit + ".";
}

std::string inFull(long group, std::size_t limit) {
    const GroupClass& described = classOf(group);
    Table table({"No.", "Property", "Kind", "Set", "Description"}, Table::Fit::wrapLast);
    for (const Attribute* attribute : attributesByNominator(group))
        table.add({std::to_string(attribute->nominator), attribute->property, wordOf(attribute->kind),
                   attribute->isSettable() ? "yes" : Table::absent, descriptionOf(*attribute)});
    const std::vector<std::string>& keys = described.writeKeys;
    return "Group " + std::to_string(group) + "  " + described.shortName + "  " + described.name + '\n' +
           wrapped(described.subject, 0, limit) + ".\n" + table.text(limit) +
           "Keys of a write: " + (keys.empty() ? "none" : cell(keys)) + '\n';
}

// Empty if nothing changed.
std::string changed(const std::vector<Change>& changes, std::size_t limit) {
    Table table({"Property", "Asked for", "Before", "After"});
    bool any = false;
    for (const Change& change : changes) {
        if (!change.isChanged())
            continue;
        table.add({change.attribute->property, change.requested ? "yes" : "no", cell(change.before),
                   cell(change.after)});
        any = true;
    }
    return any ? table.text(limit) : std::string();
}

std::string clock(std::chrono::system_clock::time_point moment) {
    const std::time_t time = std::chrono::system_clock::to_time_t(moment);
    char text[16];
    std::tm local{};
    std::strftime(text, sizeof text, "%H:%M:%S", localtime_r(&time, &local));
    return text + milliseconds(moment);
}

/** What the samples of a group show below their heading. */
std::string sampleText(const Sample& sample, std::size_t limit, const Style& style) {
    if (sample.group.status != OWB_DONE && sample.group.rows.empty())
        return "no answer\n";
    std::string text;
    if (!sample.rows.empty() || !sample.isReduced)
        text = sampleTable(sample, limit, style);
    for (const Row& row : sample.vanished)
        text += vanishedText(row) + '\n';
    return text.empty() ? "no change\n" : text;
}

std::string checkLines(const Check& check, std::size_t limit) {
    constexpr std::size_t resultWidth = 6;
    constexpr std::size_t indent = resultWidth + longestCheckName + 2;
    std::string text = wordOf(check.result);
    text.resize(resultWidth, ' ');
    text += check.name;
    text.resize(indent, ' ');
    text += wrapped(printable(check.finding), indent, limit) + '\n';
    if (!check.advice.empty())
        text += std::string(indent, ' ') + wrapped(printable(check.advice), indent, limit) + '\n';
    return text;
}

} // namespace

void TableFormat::writeCatalogue(const std::vector<long>& groups) {
    const std::size_t limit = m_output.terminalWidth();
    if (groups == everyGroup()) {
        m_output.write(overview(groups, limit, m_style.isWide));
        return;
    }
    for (const long group : groups)
        m_output.write(separator() + inFull(group, limit));
}

void TableFormat::writeGroup(const Group& group) {
    if (group.status != OWB_DONE && group.rows.empty())
        return; // the message on standard error is enough
    m_output.write(separator() + name(group.number) + "  " + extent(group) + '\n' +
                   groupTable(group, m_output.terminalWidth(), m_style));
}

void TableFormat::writeSample(const Sample& sample) {
    const bool isEmpty = sample.rows.empty() && sample.vanished.empty();
    if (sample.isReduced && isEmpty && !m_output.canRedraw() && sample.group.status == OWB_DONE)
        return; // only a screen shows that nothing changed
    const bool failed = sample.group.status != OWB_DONE && sample.group.rows.empty();
    const std::string heading = name(sample.group.number) + "  " + clock(sample.time) + "  sample " +
                                std::to_string(sample.number) + (failed ? "" : "  " + extent(sample.group)) +
                                '\n';
    const std::string text = heading + sampleText(sample, m_output.terminalWidth(), m_style);
    if (m_output.canRedraw())
        m_screen += (m_screen.empty() ? "" : "\n") + text;
    else
        m_output.write(separator() + text);
}

void TableFormat::endSamples() {
    if (m_output.canRedraw())
        m_output.redraw(m_screen);
    m_screen.clear();
}

void TableFormat::writeWrite(const Write& write) {
    if (!write.error.empty())
        return; // the message on standard error is enough
    const std::string table = changed(write.changes, m_output.terminalWidth());
    m_output.write(name(write.group) + "  (row " + std::to_string(write.row) + ")\n" +
                   (table.empty() ? "no change\n" : table));
}

void TableFormat::writeConversion(const Conversion& conversion) {
    if (conversion.number)
        m_output.write(std::to_string(*conversion.number) + '\n');
}

void TableFormat::writeProcesses(const std::vector<Process>& processes) {
    m_output.write(processTable(processes, m_style.isWide).text(m_output.terminalWidth()));
}

void TableFormat::writeCheck(const Check& check) {
    m_output.write(checkLines(check, m_output.terminalWidth()));
}

void TableFormat::writeVersions(const std::vector<Version>& versions) {
    std::string text;
    for (const Version& version : versions)
        text += version.name + ' ' + version.version + '\n';
    m_output.write(text);
}

const char* TableFormat::separator() {
    const bool first = m_first;
    m_first = false;
    return first ? "" : "\n";
}

} // namespace owbctl
