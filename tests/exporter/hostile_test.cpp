// Hostile clients, and a host with hostile names.
#include "RunningExporter.hpp"

#include <sys/socket.h>

namespace {

class ExporterHostile : public RunningExporter {
protected:
    /** Declares interfaces with these names, in JSON, and counters. */
    void startWithInterfaces(const std::vector<std::string>& names) {
        std::string all;
        for (const std::string& name : names)
            all += (all.empty() ? "" : ",") + std::string("{\"InstanceID\":\"") + name + "\",\"InOctets\":7}";
        directory().write("site/a.json", "{\"QAV_NetworkPortStatistics\":[" + all + "]}");
        startManager({"--instances", directory().file("site")});
        startExporter({"--groups", "10", "--max-age", "0"});
    }
};

} // namespace

TEST_F(ExporterHostile, NamesStayLabels) {
    startWithInterfaces(
        {"a\\\"} 1\\nowb_fake 1\\n# EOF", "\\\\", "\\u00e4\\ud83d\\ude00", std::string(65536, 'x')});
    const exposition::Text text = scrape();
    EXPECT_EQ(5U, text.count("owb_network_receive_bytes_total"));
    EXPECT_EQ("7", text.value("owb_network_receive_bytes_total", {{"device", "a\"} 1\nowb_fake 1\n# EOF"}}));
    EXPECT_EQ("7", text.value("owb_network_receive_bytes_total", {{"device", std::string(65536, 'x')}}));
}

TEST_F(ExporterHostile, ALongTextIsServedWhole) {
    std::vector<std::string> names;
    for (int i = 0; i < 1500; ++i)
        names.push_back("interface" + std::to_string(i) + std::string(200, '.'));
    startWithInterfaces(names);
    const support::HttpReply reply = get("/metrics");
    EXPECT_LT(300000U, reply.body.size());
    const std::string last = "device=\"" + names.back() + "\"} 7\n";
    EXPECT_NE(std::string::npos, reply.body.find(last));
}

TEST_F(ExporterHostile, AClientThatDoesNotReadDoesNotDelayOthers) {
    std::vector<std::string> names;
    for (int i = 0; i < 100; ++i)
        names.push_back(std::to_string(i) + std::string(30000, '.'));
    startWithInterfaces(names);
    std::vector<std::unique_ptr<support::HttpClient>> idle;
    for (int i = 0; i < 10; ++i) {
        idle.push_back(std::make_unique<support::HttpClient>(port()));
        idle.back()->send(request("/metrics"));
    }
    EXPECT_EQ("ok\n", get("/healthz").body);
    const support::HttpReply reply = get("/metrics");
    EXPECT_EQ(200U, reply.status);
    EXPECT_LT(3000000U, reply.body.size());
}

TEST_F(ExporterHostile, ARequestInPiecesIsServed) {
    start();
    support::HttpClient client(port());
    for (const char c : request("/metrics", "Accept: application/openmetrics-text\r\n"))
        client.send(std::string(1, c));
    checkedText(client.receive(), metrics::Format::openMetrics);
}

TEST_F(ExporterHostile, ManyClientsAtOnceAreServed) {
    start();
    std::vector<std::unique_ptr<support::HttpClient>> clients;
    for (int i = 0; i < 40; ++i) {
        clients.push_back(std::make_unique<support::HttpClient>(port()));
        clients.back()->send(request("/metrics"));
    }
    for (const auto& client : clients)
        EXPECT_EQ(200U, client->receive().status);
}

TEST_F(ExporterHostile, ClientsThatGoAwayLeaveNothing) {
    start({"--max-age", "0"});
    scrape();
    const std::size_t before = descriptors();
    for (int i = 0; i < 30; ++i) {
        const support::HttpClient client(port());
        client.send(request("/metrics"));
    }
    for (int i = 0; i < 30; ++i)
        scrape();
    for (int i = 0; i < 1000 && descriptors() > before; ++i)
        ::usleep(5000);
    EXPECT_GE(before, descriptors());
    EXPECT_TRUE(children().empty());
}

TEST_F(ExporterHostile, LongHeadsAndBodiesAreRefused) {
    startExporter();
    EXPECT_EQ(431U, get("/metrics", "Accept: " + std::string(20000, ',') + "\r\n").status);
    EXPECT_EQ(413U, get("/metrics", "Content-Length: 100000\r\n").status);
    EXPECT_EQ(400U, support::HttpClient(port()).exchange("\x16\x03\x01 no http\r\n\r\n").status);
}
