// The pages, and requests for others.
#include "RunningExporter.hpp"

namespace {

class ExporterPages : public RunningExporter {
protected:
    ExporterPages() { startExporter(); }
};

} // namespace

TEST_F(ExporterPages, TheStartPageLinksToTheMetrics) {
    const support::HttpReply reply = get("/");
    EXPECT_EQ(200U, reply.status);
    EXPECT_TRUE(reply.hasLine("Content-Type: text/html; charset=utf-8"));
    EXPECT_NE(std::string::npos, reply.body.find("<a href=\"metrics\">"));
}

TEST_F(ExporterPages, HealthNeedsNoObjectManager) {
    const support::HttpReply reply = get("/healthz");
    EXPECT_EQ(200U, reply.status);
    EXPECT_EQ("ok\n", reply.body);
}

TEST_F(ExporterPages, AQueryIsIgnored) {
    EXPECT_EQ(200U, get("/metrics?collect=all").status);
    EXPECT_EQ("ok\n", get("/healthz?").body);
}

TEST_F(ExporterPages, AnyOtherPathGetsStatus404) {
    for (const char* const path :
         {"/metrics/", "/Metrics", "//", "/../metrics", "metrics", "*", "/healthz/x"}) {
        support::HttpClient client(port());
        EXPECT_EQ(404U, client.exchange(request(path)).status) << path;
    }
    EXPECT_NE(std::string::npos, exporter().nextErrorLine().find(": refused: 404 Not found: /metrics/"));
}

TEST_F(ExporterPages, AnyOtherMethodGetsStatus405) {
    for (const char* const method : {"POST", "PUT", "DELETE", "HEAD", "OPTIONS"}) {
        support::HttpClient client(port());
        client.send(std::string(method) + " /metrics HTTP/1.1\r\nHost: x\r\nContent-Length: 0\r\n\r\n");
        const support::HttpReply reply = client.receive();
        EXPECT_EQ(405U, reply.status) << method;
        EXPECT_TRUE(reply.hasLine("Allow: GET"));
    }
}

TEST_F(ExporterPages, AConnectionServesSeveralRequests) {
    support::HttpClient client(port());
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ("ok\n", client.exchange(request("/healthz")).body);
        checkedText(client.exchange(request("/metrics")));
    }
}
