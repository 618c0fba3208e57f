#include "RunningExporter.hpp"

#include <chrono>
#include <filesystem>
#include <sstream>
#include <thread>

using namespace std::chrono_literals;

RunningExporter::RunningExporter() {
    m_directory.write("host/proc/sys/kernel/hostname", "box\n");
    writeInterface("eth0", 4);
    writeCounters("eth0: 18446744073709551615 2 0 0 0 0 0 0 3 4 0 0 0 0 0 0\n");
}

void RunningExporter::startManager(std::vector<std::string> options) {
    options.insert(options.end(), {"--root", m_directory.file("host")});
    m_manager = std::make_unique<support::Manager>(options);
}

void RunningExporter::startExporter(const std::vector<std::string>& options) {
    std::vector<std::string> all = {"--listen", "0"};
    all.insert(all.end(), options.begin(), options.end());
    startListening(all);
}

void RunningExporter::startListening(const std::vector<std::string>& options) {
    const std::string url = m_manager ? m_manager->url() : support::urlOf(m_directory.file("missing"));
    std::vector<std::string> command = {OWB_EXPORTER, "--url", url};
    command.insert(command.end(), options.begin(), options.end());
    m_exporter = std::make_unique<support::Daemon>(command);
    const std::string ready = m_exporter->nextErrorLine();
    ASSERT_EQ("owb-exporter: ready on 127.0.0.1:", ready.substr(0, ready.rfind(':') + 1));
    m_port = static_cast<std::uint16_t>(std::stoul(ready.substr(ready.rfind(':') + 1)));
}

void RunningExporter::writeInterface(const std::string& name, unsigned index) const {
    m_directory.write("host/sys/class/net/" + name + "/ifindex", std::to_string(index) + "\n");
}

void RunningExporter::removeInterface(const std::string& name) const {
    std::filesystem::remove_all(m_directory.file("host/sys/class/net/" + name));
}

void RunningExporter::writeCounters(const std::string& lines) const {
    m_directory.write("host/proc/net/dev", "Inter-|   Receive\n face |bytes\n" + lines);
}

std::vector<pid_t> RunningExporter::children() const {
    const std::string pid = std::to_string(m_exporter->pid());
    std::istringstream text(support::readFile("/proc/" + pid + "/task/" + pid + "/children"));
    std::vector<pid_t> all;
    for (pid_t child = 0; text >> child;)
        all.push_back(child);
    return all;
}

pid_t RunningExporter::awaitChild() const {
    for (int i = 0; i < 2000; ++i) {
        const std::vector<pid_t> all = children();
        if (!all.empty())
            return all.front();
        std::this_thread::sleep_for(5ms);
    }
    ADD_FAILURE() << "no child";
    return 0;
}

std::size_t RunningExporter::descriptors() const {
    const std::filesystem::directory_iterator all("/proc/" + std::to_string(m_exporter->pid()) + "/fd");
    return static_cast<std::size_t>(std::distance(begin(all), end(all)));
}

support::HttpReply RunningExporter::get(const std::string& path, const std::string& fields) const {
    return support::HttpClient(m_port).exchange(request(path, fields));
}

exposition::Text RunningExporter::scrape(const std::string& fields) const {
    return checkedText(get("/metrics", fields));
}

std::string request(const std::string& path, const std::string& fields) {
    return "GET " + path + " HTTP/1.1\r\nHost: localhost\r\n" + fields + "\r\n";
}

exposition::Text checkedText(const support::HttpReply& reply, metrics::Format format) {
    EXPECT_EQ(200U, reply.status);
    exposition::Text text = exposition::read(reply.body, format);
    EXPECT_EQ(std::vector<std::string>(), text.faults);
    return text;
}
