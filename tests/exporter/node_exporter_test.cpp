// The values of this host, compared with those of Prometheus' node_exporter.
#include "ExpositionReader.hpp"
#include "support/HttpClient.hpp"
#include "support/Manager.hpp"
#include "support/Prometheus.hpp"

#include <algorithm>
#include <cctype>
#include <memory>
#include <optional>

namespace {

using Labels = std::map<std::string, std::string>;

/** A quantity that both have. */
struct Pair {
    std::string ours;
    Labels ourLabels;
    std::string theirs;
    Labels theirLabels;
};

exposition::Text read(const std::string& text) {
    return exposition::read(text, metrics::Format::text);
}

/** Letters and digits in lower case. */
std::string squeezed(const std::string& name) {
    std::string letters;
    for (const char c : name) {
        if (c != '_')
            letters += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return letters;
}

class NodeExporter : public testing::Test {
protected:
    void SetUp() override {
        if (const std::string reason = support::prometheusMissing(); !reason.empty())
            GTEST_SKIP() << reason;
        m_manager = std::make_unique<support::Manager>();
        m_process.emplace(std::vector<std::string>{
            support::prometheusProgram("prometheus-node-exporter"), "--web.listen-address=127.0.0.1:0",
            "--collector.disable-defaults", "--collector.netdev", "--collector.netdev.device-exclude=",
            "--collector.netclass", "--collector.filesystem", "--collector.meminfo", "--collector.stat",
            "--collector.time", "--collector.netstat", "--collector.netstat.fields=^(Ip|Icmp|Tcp|Udp)_",
            "--collector.textfile", "--collector.textfile.directory=" + m_directory.path()});
        const std::string listening = "\"Listening on\" address=127.0.0.1:";
        std::string line;
        do {
            line = m_process->nextErrorLine();
            ASSERT_FALSE(line.empty());
        } while (line.find(listening) == std::string::npos);
        m_port = static_cast<std::uint16_t>(std::stoul(line.substr(line.find(listening) + listening.size())));
    }

    exposition::Text theirs() const {
        const support::HttpReply reply = support::HttpClient(m_port).exchange(
            "GET /metrics HTTP/1.1\r\nHost: localhost\r\nAccept: text/plain\r\n\r\n");
        EXPECT_EQ(200U, reply.status);
        return read(reply.body);
    }

    support::ProgramResult owbctl(const std::vector<std::string>& options = {}) const {
        std::vector<std::string> command = {OWBCTL, "--url", m_manager->url(), "metrics"};
        command.insert(command.end(), options.begin(), options.end());
        return support::runProgram(command);
    }
    exposition::Text ours() const { return read(owbctl().out); }
    const support::TempDir& directory() const { return m_directory; }

    /** Each of our values is between two readings of theirs: values may change meanwhile, up and down, so
     * several attempts are made. */
    void expectBetween(std::vector<Pair> pairs) const {
        std::string differences;
        for (int attempt = 0; attempt < 20 && !pairs.empty(); ++attempt) {
            const exposition::Text before = theirs();
            const exposition::Text now = ours();
            const exposition::Text after = theirs();
            differences.clear();
            pairs.erase(
                std::remove_if(pairs.begin(), pairs.end(),
                               [&](const Pair& pair) {
                                   const std::string value = now.value(pair.ours, pair.ourLabels);
                                   const std::string first = before.value(pair.theirs, pair.theirLabels);
                                   const std::string last = after.value(pair.theirs, pair.theirLabels);
                                   differences += pair.ours + " " + value + " is not between " + first +
                                                  " and " + last + "\n";
                                   if (value == "(none)" || first == "(none)" || last == "(none)")
                                       return false;
                                   const double one = std::stod(first);
                                   const double other = std::stod(last);
                                   const double ours = std::stod(value);
                                   return std::min(one, other) <= ours && ours <= std::max(one, other);
                               }),
                pairs.end());
        }
        EXPECT_EQ(0U, pairs.size()) << pairs.front().ours << "\n" << differences;
    }

private:
    support::TempDir m_directory;
    std::unique_ptr<support::Manager> m_manager;
    std::optional<support::Daemon> m_process;
    std::uint16_t m_port = 0;
};

} // namespace

TEST_F(NodeExporter, HasTheSameInterfaces) {
    const exposition::Text text = ours();
    std::vector<Pair> pairs;
    for (const exposition::Sample& sample : text.samples) {
        if (sample.name != "owb_network_info")
            continue;
        const Labels device = {{"device", sample.labels.at("device")}};
        for (const auto& [mine, other] :
             std::map<std::string, std::string>{{"mtu_bytes", "mtu_bytes"},
                                                {"receive_bytes_total", "receive_bytes_total"},
                                                {"receive_discards_total", "receive_drop_total"},
                                                {"receive_errors_total", "receive_errs_total"},
                                                {"transmit_bytes_total", "transmit_bytes_total"},
                                                {"transmit_discards_total", "transmit_drop_total"},
                                                {"transmit_errors_total", "transmit_errs_total"}})
            pairs.push_back({"owb_network_" + mine, device, "node_network_" + other, device});
    }
    EXPECT_LE(7U, pairs.size());
    EXPECT_EQ(text.count("owb_network_info"), theirs().count("node_network_mtu_bytes"));
    expectBetween(pairs);
}

TEST_F(NodeExporter, HasTheSameFileSystems) {
    const exposition::Text text = ours();
    std::vector<Pair> pairs;
    const exposition::Text other = theirs();
    for (const exposition::Sample& sample : other.samples) {
        if (sample.name != "node_filesystem_size_bytes")
            continue;
        const Labels theirLabels = {{"mountpoint", sample.labels.at("mountpoint")}};
        pairs.push_back({"owb_storage_size_bytes",
                         {{"description", theirLabels.at("mountpoint")}},
                         sample.name,
                         theirLabels});
        pairs.push_back({"owb_filesystem_read_only", theirLabels, "node_filesystem_readonly", theirLabels});
    }
    EXPECT_LE(2U, pairs.size());
    expectBetween(pairs);
}

TEST_F(NodeExporter, HasTheSameMemoryTimesAndProcesses) {
    expectBetween({
        {"owb_storage_size_bytes", {{"type", "memory"}}, "node_memory_MemTotal_bytes", {}},
        {"owb_system_boot_timestamp_seconds", {}, "node_boot_time_seconds", {}},
        {"owb_system_clock_timestamp_seconds", {}, "node_time_seconds", {}},
    });
}

// Their names are those of the kernel, in other letters than ours.
TEST_F(NodeExporter, HasTheSameCountersOfProtocols) {
    std::map<std::string, std::string> theirNames;
    const exposition::Text other = theirs();
    for (const exposition::Sample& sample : other.samples) {
        if (sample.name.compare(0, 13, "node_netstat_") == 0)
            theirNames["owb" + squeezed(sample.name.substr(13)) + "total"] = sample.name;
    }
    theirNames["owbipforwarding"] = "node_netstat_Ip_Forwarding";
    theirNames["owbipdefaultttl"] = "node_netstat_Ip_DefaultTTL";
    std::vector<Pair> pairs;
    const exposition::Text text = ours();
    for (const exposition::Sample& sample : text.samples) {
        if (const auto found = theirNames.find(squeezed(sample.name)); found != theirNames.end())
            pairs.push_back({sample.name, {}, found->second, {}});
    }
    EXPECT_LE(50U, pairs.size());
    expectBetween(pairs);
}

TEST_F(NodeExporter, ReadsTheFileForItsCollector) {
    const support::ProgramResult result = owbctl({"--textfile", directory().path()});
    EXPECT_EQ(0, result.exitCode) << result.err;
    const exposition::Text written = read(support::readFile(directory().file("owb.prom")));
    const exposition::Text served = theirs();
    EXPECT_EQ("0", served.value("node_textfile_scrape_error"));
    for (const exposition::Sample& sample : written.samples) {
        const std::string value = served.value(sample.name, sample.labels);
        ASSERT_NE("(none)", value) << sample.name;
        ASSERT_DOUBLE_EQ(std::stod(sample.value), std::stod(value)) << sample.name;
    }
}
