// What a scrape contains.
#include "RunningExporter.hpp"

#include <chrono>
#include <thread>
#include <zlib.h>

using namespace std::chrono_literals;
using metrics::Format;

namespace {

const char* const openMetrics = "Accept: application/openmetrics-text;version=1.0.0,text/plain;q=0.5\r\n";

class ExporterContent : public RunningExporter {};

std::string decompressed(const std::string& bytes) {
    z_stream stream{};
    EXPECT_EQ(Z_OK, ::inflateInit2(&stream, 16 + MAX_WBITS));
    std::string text(16 * 1024 * 1024, '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = reinterpret_cast<Bytef*>(text.data());
    stream.avail_out = static_cast<uInt>(text.size());
    EXPECT_EQ(Z_STREAM_END, ::inflate(&stream, Z_FINISH));
    text.resize(stream.total_out);
    ::inflateEnd(&stream);
    return text;
}

} // namespace

TEST_F(ExporterContent, IsThatOfTheObjectManager) {
    start();
    const support::HttpReply reply = get("/metrics");
    EXPECT_TRUE(reply.hasLine("Content-Type: text/plain; version=0.0.4; charset=utf-8"));
    const exposition::Text text = checkedText(reply);
    EXPECT_EQ("1", text.value("owb_host_info", {{"name", "box"}}));
    EXPECT_EQ("18446744073709551615", text.value("owb_network_receive_bytes_total", {{"device", "eth0"}}));
    EXPECT_EQ("1", text.value("owb_scrape_success"));
    EXPECT_EQ("1", text.value("owb_group_read_success", {{"group", "0"}}));
    EXPECT_NE("(none)", text.value("owb_scrape_age_seconds"));
}

TEST_F(ExporterContent, IsOpenMetricsForAClientThatPrefersIt) {
    start();
    const support::HttpReply reply = get("/metrics", openMetrics);
    EXPECT_TRUE(reply.hasLine("Content-Type: application/openmetrics-text; version=1.0.0; charset=utf-8"));
    EXPECT_TRUE(reply.hasLine("Vary: Accept, Accept-Encoding"));
    const exposition::Text text = checkedText(reply, Format::openMetrics);
    EXPECT_EQ("18446744073709551615", text.value("owb_network_receive_bytes_total", {{"device", "eth0"}}));
}

TEST_F(ExporterContent, IsCompressedForAClientThatReadsGzip) {
    start();
    support::HttpReply reply = get("/metrics", "Accept-Encoding: deflate, gzip\r\n");
    EXPECT_TRUE(reply.hasLine("Content-Encoding: gzip"));
    reply.body = decompressed(reply.body);
    EXPECT_EQ("1", checkedText(reply).value("owb_host_info", {{"name", "box"}}));
    EXPECT_FALSE(get("/metrics", "Accept-Encoding: gzip;q=0\r\n").hasLine("Content-Encoding: gzip"));
}

TEST_F(ExporterContent, IsThatOfTheSelectedGroups) {
    start({"--groups", "2,10", "--groups", "QAV_TCPProtocolEndpoint"});
    const exposition::Text text = scrape();
    EXPECT_EQ(4U, text.count("owb_group_read_success"));
    for (const char* const group : {"2", "5", "7", "10"})
        EXPECT_EQ("1", text.value("owb_group_read_success", {{"group", group}}));
    EXPECT_EQ("(none)", text.value("owb_packages"));
}

TEST_F(ExporterContent, OfAYoungSnapshotIsServedAgain) {
    start({"--max-age", "60"});
    const std::string time = scrape().value("owb_scrape_timestamp_seconds");
    std::this_thread::sleep_for(20ms);
    const exposition::Text again = scrape();
    EXPECT_EQ(time, again.value("owb_scrape_timestamp_seconds"));
    EXPECT_LT(0.02, std::stod(again.value("owb_scrape_age_seconds")));
}

TEST_F(ExporterContent, OfAnOldSnapshotIsReadAgain) {
    start({"--max-age", "0.1"});
    const std::string time = scrape().value("owb_scrape_timestamp_seconds");
    std::this_thread::sleep_for(200ms);
    const exposition::Text again = scrape();
    EXPECT_NE(time, again.value("owb_scrape_timestamp_seconds"));
    EXPECT_GT(0.2, std::stod(again.value("owb_scrape_age_seconds")));
}

TEST_F(ExporterContent, AnInterfaceComesAndGoes) {
    start({"--max-age", "0", "--groups", "9,10"});
    EXPECT_EQ(1U, scrape().count("owb_network_info"));
    writeInterface("eth1", 5);
    writeCounters("eth0: 1 2 0 0 0 0 0 0 3 4 0 0 0 0 0 0\neth1: 7 2 0 0 0 0 0 0 3 4 0 0 0 0 0 0\n");
    EXPECT_EQ("7", scrape().value("owb_network_receive_bytes_total", {{"device", "eth1"}}));
    removeInterface("eth0");
    writeCounters("eth1: 7 2 0 0 0 0 0 0 3 4 0 0 0 0 0 0\n");
    EXPECT_EQ("(none)", scrape().value("owb_network_receive_bytes_total", {{"device", "eth0"}}));
}
