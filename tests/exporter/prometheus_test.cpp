// Prometheus scrapes the exporter.
#include "RunningExporter.hpp"
#include "support/Prometheus.hpp"
#include "support/Relay.hpp"

#include <chrono>
#include <nlohmann/json.hpp>
#include <sys/socket.h>
#include <thread>

using namespace std::chrono_literals;
using support::Prometheus;
using support::Series;

namespace {

/** Values by name and labels. */
using Values = std::map<std::string, double>;

std::string identityOf(const std::string& name, const std::map<std::string, std::string>& labels) {
    std::string identity = name;
    for (const auto& [label, value] : labels) {
        if (label != "__name__" && label != "instance" && label != "job")
            identity += '\0' + label + '\0' + value;
    }
    return identity;
}

/** Whether a metric differs between two readings of a host that does not change. */
bool isOfReading(const std::string& name) {
    return name == "owb_group_read_seconds" || name.compare(0, 11, "owb_scrape_") == 0 ||
           name == "owb_system_clock_timestamp_seconds";
}

Values valuesOf(const std::vector<Series>& all) {
    Values values;
    for (const Series& each : all) {
        const std::string& name = each.labels.at("__name__");
        if (!isOfReading(name))
            values[identityOf(name, each.labels)] = each.value;
    }
    return values;
}

Values valuesOf(const exposition::Text& text) {
    Values values;
    for (const exposition::Sample& each : text.samples) {
        if (!isOfReading(each.name))
            values[identityOf(each.name, each.labels)] = std::stod(each.value);
    }
    return values;
}

std::string scrapeConfig(std::uint16_t port) {
    return "- {job_name: owb, static_configs: [{targets: ['127.0.0.1:" + std::to_string(port) + "']}]}\n";
}

/** A client passes through it that no longer asks for OpenMetrics. */
void pumpWithoutOpenMetrics(int client, int server) {
    const std::string type = "application/openmetrics-text";
    for (;;) {
        char bytes[64 * 1024];
        const support::Readable readable = support::awaitEither(client, server);
        const ssize_t n = ::recv(readable.first ? client : server, bytes, sizeof bytes, 0);
        if (n <= 0)
            return;
        std::string part(bytes, static_cast<std::size_t>(n));
        if (readable.first) {
            for (std::size_t at = part.find(type); at != std::string::npos; at = part.find(type))
                part.replace(at, type.size(), "application/unknown");
        }
        ::send(readable.first ? server : client, part.data(), part.size(), MSG_NOSIGNAL);
    }
}

class WithPrometheus : public RunningExporter {
protected:
    void SetUp() override {
        if (const std::string reason = support::prometheusMissing(); !reason.empty())
            GTEST_SKIP() << reason;
    }

    exposition::Text readByOwbctl() {
        const support::ProgramResult result =
            support::runProgram({OWBCTL, "--url", manager().url(), "metrics"});
        EXPECT_EQ(0, result.exitCode) << result.err;
        return exposition::read(result.out, metrics::Format::text);
    }

    /** All values of a healthy scrape by Prometheus are those that owbctl reads. */
    void expectValues(const Prometheus& prometheus) {
        prometheus.await("owb_scrape_success == 1");
        EXPECT_EQ(1U, prometheus.query("up == 1").size());
        EXPECT_EQ("", prometheus.lastError());
        const Values values = valuesOf(readByOwbctl());
        EXPECT_LT(50U, values.size());
        EXPECT_EQ(values, valuesOf(prometheus.query("{__name__=~'owb_.*'}")));
    }
};

/** A host with an interface and a chassis whose names are hostile. */
class WithHostileTexts : public WithPrometheus {
protected:
    void SetUp() override {
        WithPrometheus::SetUp();
        if (IsSkipped())
            return;
        writeInterface("a\"b\\c\xff{}\t'\xe2\x82", 5);
        writeInterface("line\nfeed\n# EOF", 6);
        directory().write(
            "site/chassis.json",
            R"({"QAV_K70Chassis": [{"Tag": "t", "CreationClassName": "QAV_K70Chassis", "SerialNumber": )" +
                nlohmann::json(m_serialNumber).dump() + "}]}");
        startManager({"--instances", directory().file("site")});
        startExporter();
    }

    void expectHostileTexts(const Prometheus& prometheus) {
        expectValues(prometheus);
        EXPECT_EQ(3U, prometheus.query("owb_network_info").size());
        EXPECT_EQ(1U, prometheus.query(R"(owb_network_info{device="line\nfeed\n# EOF"})").size());
        const std::vector<Series> chassis = prometheus.query("owb_chassis_info{serial_number!=''}");
        ASSERT_EQ(1U, chassis.size());
        EXPECT_EQ(m_serialNumber, chassis.front().labels.at("serial_number"));
    }

private:
    const std::string m_serialNumber = "line\nfeed" + std::string(64 * 1024, 'm');
};

std::string typeOfInfo(const Prometheus& prometheus) {
    return prometheus.data("targets/metadata?metric=owb_host_info").dump() +
           prometheus.data("targets/metadata?metric=owb_host").dump();
}

} // namespace

TEST_F(WithPrometheus, OpenMetricsHasTheValuesThatOwbctlReads) {
    start();
    const Prometheus prometheus(scrapeConfig(port()));
    expectValues(prometheus);
    EXPECT_NE(std::string::npos, typeOfInfo(prometheus).find("\"type\":\"info\"")) << typeOfInfo(prometheus);
}

TEST_F(WithPrometheus, TextHasTheValuesThatOwbctlReads) {
    start();
    const support::Relay relay(port(), pumpWithoutOpenMetrics);
    const Prometheus prometheus(scrapeConfig(relay.port()));
    expectValues(prometheus);
    EXPECT_NE(std::string::npos, typeOfInfo(prometheus).find("\"type\":\"gauge\"")) << typeOfInfo(prometheus);
}

TEST_F(WithHostileTexts, OpenMetricsIsValid) {
    const Prometheus prometheus(scrapeConfig(port()));
    expectHostileTexts(prometheus);
}

TEST_F(WithHostileTexts, TextIsValid) {
    const support::Relay relay(port(), pumpWithoutOpenMetrics);
    const Prometheus prometheus(scrapeConfig(relay.port()));
    expectHostileTexts(prometheus);
}

TEST_F(WithPrometheus, AnInterfaceThatGoesLeavesNoSeries) {
    start({"--max-age", "0"});
    const Prometheus prometheus(scrapeConfig(port()));
    prometheus.await("owb_network_info{device='eth0'}");
    writeInterface("eth1", 5);
    prometheus.await("owb_network_info{device='eth1'}");
    removeInterface("eth0");
    prometheus.await("absent(owb_network_info{device='eth0'}) == 1");
    EXPECT_EQ("", prometheus.lastError());
}

TEST_F(WithPrometheus, EachScrapeIsValidWhileAnInterfaceComesAndGoes) {
    start({"--max-age", "0"});
    const Prometheus prometheus(scrapeConfig(port()));
    prometheus.await("owb_network_info{device='eth0'}");
    const std::string eth0 = "eth0: 1 2 0 0 0 0 0 0 3 4 0 0 0 0 0 0\n";
    const std::string eth1 = "eth1: 1 2 0 0 0 0 0 0 3 4 0 0 0 0 0 0\n";
    for (unsigned i = 0; i < 300; ++i) { // five scrapes
        writeInterface("eth1", 5 + i);
        writeCounters(eth0 + eth1);
        std::this_thread::sleep_for(10ms);
        removeInterface("eth1");
        writeCounters(eth0);
        std::this_thread::sleep_for(10ms);
    }
    writeInterface("eth1", 1000);
    prometheus.await("owb_network_info{device='eth1'}");
    EXPECT_EQ("", prometheus.lastError());
    EXPECT_EQ(1U, prometheus.query("count_over_time(up[1m]) >= 5").size());
    EXPECT_EQ(1U, prometheus.query("min_over_time(up[1m]) == 1").size());
    EXPECT_EQ(1U, prometheus.query("min_over_time(owb_scrape_success[1m]) == 1").size());
}

TEST_F(WithPrometheus, AnUnreachableObjectManagerIsNoFailedScrape) {
    startExporter();
    const Prometheus prometheus(scrapeConfig(port()));
    prometheus.await("max(owb_group_read_success) == 0");
    EXPECT_EQ(1U, prometheus.query("up == 1").size());
    EXPECT_EQ(0U, prometheus.query("owb_host_info").size());
}

// A template that fails gets status 500.
TEST_F(WithPrometheus, TheConsolesShowTheHost) {
    start();
    const Prometheus prometheus(scrapeConfig(port()),
                                {"--web.console.templates=" PROMETHEUS_FILES "/consoles",
                                 "--web.console.libraries=" PROMETHEUS_FILES "/console_libraries"});
    const std::string instance = "127.0.0.1:" + std::to_string(port());
    EXPECT_NE(std::string::npos, prometheus.get("/consoles/owb.html").find("has no target"));
    prometheus.await("owb_host_info");
    EXPECT_NE(std::string::npos, prometheus.get("/consoles/owb.html").find("\">" + instance + "</a>"));
    const std::string page = prometheus.get("/consoles/owb-host.html?instance=" + instance);
    for (const char* const part : {"<h1>box ", "<td>eth0</td>", "No alert fires."})
        EXPECT_NE(std::string::npos, page.find(part)) << part;
    for (const char* const other : {"", "?instance=%22%3Cscript%3E"}) {
        const std::string none = prometheus.get(std::string("/consoles/owb-host.html") + other);
        EXPECT_NE(std::string::npos, none.find("no target of the job")) << other;
        EXPECT_EQ(std::string::npos, none.find("\"<script>")) << other;
    }
}

TEST_F(WithPrometheus, PromtoolFindsNothingToComplainAbout) {
    start();
    directory().write("metrics", get("/metrics").body);
    const support::ProgramResult result =
        support::runProgram({"/bin/sh", "-c", "exec \"$0\" check metrics <\"$1\"",
                             support::prometheusProgram("promtool"), directory().file("metrics")});
    EXPECT_EQ(0, result.exitCode);
    EXPECT_EQ("", result.out + result.err);
}
