#include "commands/Metrics.hpp"

#include "arguments/Names.hpp"
#include "commands/Report.hpp"
#include "metrics/Naming.hpp"
#include "metrics/Scrape.hpp"
#include "output/Deadline.hpp"
#include "util/Descriptor.hpp"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <set>
#include <sys/stat.h>
#include <system_error>

namespace owbctl {

const std::vector<std::string> metricsFormatNames = {"text", "openmetrics"};

namespace {

std::vector<long> groupsOf(const MetricsRequest& request) {
    std::set<long> groups;
    for (const std::string& name : request.groups) {
        const std::vector<long> named = metrics::measuredGroupsNamed(name);
        groups.insert(named.begin(), named.end());
    }
    if (groups.empty()) {
        const std::vector<long> all = metrics::measuredGroups();
        groups.insert(all.begin(), all.end());
    }
    return {groups.begin(), groups.end()};
}

/** Reads a group with a limit for the wait. */
metrics::Measured measureWaiting(long group) {
    const Waiting waiting(group);
    return metrics::measure(group);
}

/** Reads the groups of a scrape, and appends the lines of their metrics. Returns the exit status. */
int readGroups(metrics::Scrape& scrape, metrics::Format format, std::string& text) {
    Progress progress;
    int status = 0;
    bool isUnreachable = false;
    for (const long group : scrape.groups) {
        progress.show("owbctl: reading group " + std::to_string(group));
        const metrics::Measured measured = measureWaiting(group);
        progress.clear();
        text += metrics::linesOf(measured.families, format);
        scrape.readings.push_back(measured.reading);
        const long result = measured.reading.status;
        if (result == OWB_DONE)
            continue;
        reportFailure({group, agent::classOf(group).name, result, {}, measured.failure});
        isUnreachable = isUnreachable || measured.failure.isOfConnection;
        status = status == 0 ? exitStatus(result) : status;
    }
    if (isUnreachable)
        hintAtDoctor();
    return status;
}

/** A file that takes its name only when it is complete. */
class ReplacedFile {
public:
    explicit ReplacedFile(std::string path)
        : m_path(std::move(path))
        , m_newPath(m_path + ".XXXXXX") // does not end in .prom: the collector ignores it
        , m_file(::mkostemp(m_newPath.data(), O_CLOEXEC)) {
        if (!m_file.isOpen())
            fail();
    }
    ~ReplacedFile() {
        if (!m_newPath.empty())
            ::unlink(m_newPath.c_str());
    }
    ReplacedFile(const ReplacedFile&) = delete;
    ReplacedFile& operator=(const ReplacedFile&) = delete;

    void replaceBy(std::string_view content) {
        while (!content.empty()) {
            const ssize_t size = ::write(m_file.number(), content.data(), content.size());
            if (size < 0)
                fail();
            content.remove_prefix(static_cast<std::size_t>(size));
        }
        // The collector may be another user.
        if (::fchmod(m_file.number(), 0644) != 0 || ::fsync(m_file.number()) != 0 ||
            std::rename(m_newPath.c_str(), m_path.c_str()) != 0)
            fail();
        m_newPath.clear();
    }

private:
    [[noreturn]] void fail() const {
        throw std::system_error(errno, std::generic_category(), "cannot write " + m_path);
    }

    const std::string m_path;
    std::string m_newPath; // empty: has taken its name
    util::Descriptor m_file;
};

} // namespace

std::string checkMeasured(const std::string& group) {
    return metrics::measuredGroupsNamed(group).empty() ? "'" + group + "' names no group that has metrics"
                                                       : std::string();
}

int writeMetrics(const MetricsRequest& request, Output& output) {
    const metrics::Format format =
        request.format == metricsFormatNames.back() ? metrics::Format::openMetrics : metrics::Format::text;
    if (!request.textfile.empty() && format != metrics::Format::text)
        throw UsageError("--textfile: the collector reads no other format than text");
    metrics::Scrape scrape{groupsOf(request), {}, std::chrono::system_clock::now(), {}, {}};
    const auto begin = std::chrono::steady_clock::now();
    std::string text;
    const int status = readGroups(scrape, format, text);
    scrape.duration =
        std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - begin);
    text += metrics::linesOf(metrics::familiesOf(scrape), format) + metrics::endOf(format);
    if (request.textfile.empty())
        output.write(text);
    else
        ReplacedFile(request.textfile + "/owb.prom").replaceBy(text);
    return status;
}

} // namespace owbctl
