#include "support/Prometheus.hpp"

#include "support/HttpClient.hpp"

#include <chrono>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <thread>

namespace support {
namespace {

const std::string tools = PROMETHEUS_TOOLS;

std::string percentEncoded(const std::string& text) {
    const char* const digits = "0123456789abcdef";
    std::string encoded;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        encoded += {'%', digits[byte >> 4U], digits[byte & 0xfU]};
    }
    return encoded;
}

} // namespace

std::string prometheusMissing() {
    return std::filesystem::exists(tools + "/packages")
               ? std::string()
               : "Prometheus is not in " + tools + ": run scripts/unpack prometheus";
}

std::string prometheusProgram(const std::string& name) {
    return tools + "/usr/bin/" + name;
}

Prometheus::Prometheus(const std::string& scrapeConfigs, const std::vector<std::string>& options) {
    m_directory.write("prometheus.yml",
                      "global: {scrape_interval: 1s, scrape_timeout: 1s}\nscrape_configs:\n" + scrapeConfigs);
    std::vector<std::string> command = {
        prometheusProgram("prometheus"), "--config.file=" + m_directory.file("prometheus.yml"),
        "--storage.tsdb.path=" + m_directory.file("data"), "--web.listen-address=127.0.0.1:0"};
    command.insert(command.end(), options.begin(), options.end());
    m_process.emplace(command);

    const std::string listening = "\"Listening on\" address=127.0.0.1:";
    std::string log;
    for (bool isReady = false; !isReady || m_port == 0;) {
        const std::string line = m_process->nextErrorLine();
        log += line + "\n";
        if (line.empty() || line == "(no line within a minute)")
            throw std::runtime_error("Prometheus does not start: " + log);
        isReady = isReady || line.find("Server is ready") != std::string::npos;
        if (const std::size_t at = line.find(listening); at != std::string::npos)
            m_port = static_cast<std::uint16_t>(std::stoul(line.substr(at + listening.size())));
    }
}

std::string Prometheus::get(const std::string& path) const {
    HttpClient client(m_port);
    const HttpReply reply = client.exchange("GET " + path + " HTTP/1.1\r\nHost: localhost\r\n\r\n");
    if (reply.status != 200)
        throw std::runtime_error(path + ": " + reply.bytes);
    return reply.body;
}

nlohmann::json Prometheus::data(const std::string& path) const {
    return nlohmann::json::parse(get("/api/v1/" + path)).at("data");
}

std::vector<Series> Prometheus::query(const std::string& expression) const {
    const nlohmann::json reply = data("query?query=" + percentEncoded(expression));
    std::vector<Series> all;
    for (const nlohmann::json& each : reply.at("result"))
        all.push_back({each.at("metric"), std::stod(each.at("value").at(1).get<std::string>())});
    return all;
}

std::vector<Series> Prometheus::await(const std::string& expression) const {
    for (int i = 0; i < 200; ++i) {
        std::vector<Series> all = query(expression);
        if (!all.empty())
            return all;
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    throw std::runtime_error(expression + " has no result. Last error: " + lastError());
}

std::string Prometheus::lastError() const {
    const nlohmann::json targets = data("targets");
    std::string errors;
    for (const nlohmann::json& each : targets.at("activeTargets"))
        errors += each.at("lastError").get<std::string>();
    return errors;
}

} // namespace support
