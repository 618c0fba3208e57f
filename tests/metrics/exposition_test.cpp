#include "ExpositionReader.hpp"
#include "metrics/Exposition.hpp"

#include <gtest/gtest.h>

using namespace metrics;

namespace {

Family counter() {
    return {"owb_network_receive_bytes",
            Type::counter,
            "bytes",
            "Bytes received.",
            {{{{"device", "eth0"}}, "18446744073709551615"}, {{{"device", "lo"}}, "0"}}};
}

Family info(const std::string& value) {
    return {"owb_host", Type::info, "", "The host.", {{{{"name", value}}, "1"}}};
}

/** A label value that is written and read. */
std::string readBack(const std::string& value, Format format) {
    const exposition::Text text = exposition::read(linesOf({info(value)}, format) + endOf(format), format);
    EXPECT_EQ(std::vector<std::string>(), text.faults);
    return text.samples.at(0).labels.at("name");
}

} // namespace

TEST(Exposition, ACounterHasTheSuffixTotal) {
    EXPECT_EQ("# HELP owb_network_receive_bytes_total Bytes received.\n"
              "# TYPE owb_network_receive_bytes_total counter\n"
              "owb_network_receive_bytes_total{device=\"eth0\"} 18446744073709551615\n"
              "owb_network_receive_bytes_total{device=\"lo\"} 0\n",
              linesOf({counter()}, Format::text));
    EXPECT_EQ("# HELP owb_network_receive_bytes Bytes received.\n"
              "# TYPE owb_network_receive_bytes counter\n"
              "# UNIT owb_network_receive_bytes bytes\n"
              "owb_network_receive_bytes_total{device=\"eth0\"} 18446744073709551615\n"
              "owb_network_receive_bytes_total{device=\"lo\"} 0\n",
              linesOf({counter()}, Format::openMetrics));
}

TEST(Exposition, LabelsWithoutAValueAreInfoOrGauge) {
    EXPECT_EQ("# HELP owb_host_info The host.\n# TYPE owb_host_info gauge\nowb_host_info{name=\"a\"} 1\n",
              linesOf({info("a")}, Format::text));
    EXPECT_EQ("# HELP owb_host The host.\n# TYPE owb_host info\nowb_host_info{name=\"a\"} 1\n",
              linesOf({info("a")}, Format::openMetrics));
}

TEST(Exposition, AGaugeHasNoSuffix) {
    const Family gauge{"owb_packages", Type::gauge, "", "Packages.", {{{}, "7"}}};
    EXPECT_EQ("# HELP owb_packages Packages.\n# TYPE owb_packages gauge\nowb_packages 7\n",
              linesOf({gauge}, Format::text));
}

TEST(Exposition, AFamilyWithoutSamplesHasNoLines) {
    const Family empty{"owb_packages", Type::gauge, "", "Packages.", {}};
    EXPECT_EQ("", linesOf({empty}, Format::text));
    EXPECT_EQ("", linesOf({empty}, Format::openMetrics));
}

TEST(Exposition, OnlyOpenMetricsHasAnEnd) {
    EXPECT_STREQ("", endOf(Format::text));
    EXPECT_STREQ("# EOF\n", endOf(Format::openMetrics));
}

TEST(Exposition, BackslashesQuotationMarksAndLineFeedsOfLabelsAreEscaped) {
    EXPECT_NE(std::string::npos,
              linesOf({info("a\\b\"c\nd")}, Format::text).find("{name=\"a\\\\b\\\"c\\nd\"} 1\n"));
    for (const Format format : formats) {
        for (const std::string value :
             {"\\", "\"", "\n", "\\n", "\\\\n", "\"\"", "a\\", "},{", "\r\t", "\xc3\xa4"})
            EXPECT_EQ(value, readBack(value, format));
        EXPECT_EQ(64U * 1024, readBack(std::string(64 * 1024, 'x'), format).size());
    }
}

TEST(Exposition, AHelpTextNeedsNoEscapeThatOneFormatLacks) {
    Family family = counter();
    family.help = "a \"b\" c\\d\ne";
    for (const Format format : formats)
        EXPECT_NE(std::string::npos, linesOf({family}, format).find(" a 'b' c\\\\d\\ne\n"));
}

TEST(Exposition, TheContentTypeNamesTheFormat) {
    EXPECT_STREQ("text/plain; version=0.0.4; charset=utf-8", contentType(Format::text));
    EXPECT_STREQ("application/openmetrics-text; version=1.0.0; charset=utf-8",
                 contentType(Format::openMetrics));
}

TEST(ExpositionReader, FindsWhatIsWrong) {
    const std::string head = "# HELP owb_a_total A.\n# TYPE owb_a_total counter\n";
    for (const std::string bad :
         {"owb_a_total{x=\"1\"} 1\nowb_a_total{x=\"1\"} 2\n", "owb_b 1\n", "owb_a_total{x=\"\xff\"} 1\n",
          "owb_a_total{x=\"a\\b\"} 1\n", "owb_a_total 1e5\n", "\n", "# EOF\n", "owb_a_total{x=\"1} 1\n",
          "# HELP owb_a_total A.\n", "# TYPE owb_b gauge\n", "# HELP owb_b_ms B.\n# TYPE owb_b_ms gauge\n",
          "# HELP owb_b_total B.\n# TYPE owb_b_total gauge\n", "owb_a_total{x=\"\"} 1\n", "owb_a_total 1"})
        EXPECT_FALSE(exposition::read(head + bad, Format::text).faults.empty()) << bad;
    EXPECT_TRUE(
        exposition::read(head + "owb_a_total{x=\"1\"} 1\nowb_a_total 2.5\n", Format::text).faults.empty());
}
