#include "exporter/Preferences.hpp"

#include <gtest/gtest.h>

using namespace exporter;
using metrics::Format;

TEST(PreferredFormat, PrometheusGetsOpenMetrics) {
    EXPECT_EQ(Format::openMetrics,
              preferredFormat("application/openmetrics-text;version=1.0.0,application/openmetrics-text;"
                              "version=0.0.1;q=0.75,text/plain;version=0.0.4;q=0.5,*/*;q=0.1"));
    EXPECT_EQ(Format::openMetrics,
              preferredFormat("application/openmetrics-text;version=1.0.0;escaping=allow-utf-8;q=0.6,"
                              "application/openmetrics-text;version=0.0.1;q=0.5,text/plain;version=1.0.0;"
                              "escaping=allow-utf-8;q=0.4,text/plain;version=0.0.4;q=0.3,*/*;q=0.2"));
}

TEST(PreferredFormat, AClientThatDoesNotNameOpenMetricsGetsText) {
    for (const char* const accept :
         {"", "*/*", "text/plain", "text/html,application/xhtml+xml,application/xml;q=0.9,*/*;q=0.8",
          "application/*", "application/json", "text/plain;version=0.0.4"})
        EXPECT_EQ(Format::text, preferredFormat(accept)) << accept;
}

TEST(PreferredFormat, TheWeightsDecide) {
    EXPECT_EQ(Format::text, preferredFormat("application/openmetrics-text;q=0.4, text/plain;q=0.5"));
    EXPECT_EQ(Format::openMetrics, preferredFormat("application/openmetrics-text;q=0.5, text/plain;q=0.5"));
    EXPECT_EQ(Format::text, preferredFormat("application/openmetrics-text;q=0, */*"));
    EXPECT_EQ(Format::text, preferredFormat("application/openmetrics-text;q=0.5, text/*;q=0.9"));
    EXPECT_EQ(Format::openMetrics,
              preferredFormat("application/openmetrics-text;q=0.5, text/plain;q=0.1, */*;q=0.9"))
        << "the most specific element counts";
}

TEST(PreferredFormat, AnotherVersionIsNotOurs) {
    EXPECT_EQ(Format::text, preferredFormat("application/openmetrics-text;version=0.0.1"));
    EXPECT_EQ(Format::text, preferredFormat("application/openmetrics-text;version=2.0.0"));
    EXPECT_EQ(Format::openMetrics, preferredFormat("application/openmetrics-text"));
}

TEST(PreferredFormat, CaseAndWhiteSpaceDoNotMatter) {
    EXPECT_EQ(
        Format::openMetrics,
        preferredFormat(" Application/OpenMetrics-Text ; Version = 1.0.0 ; Q = 0.5 ,text/plain ;q=0.1"));
}

TEST(PreferredFormat, AnInvalidWeightCountsAsZero) {
    for (const char* const weight : {"2", "-1", "nan", "inf", "1e0", "", "x", "0.5555", "0,5"})
        EXPECT_EQ(Format::text, preferredFormat("application/openmetrics-text;q=" + std::string(weight)))
            << weight;
}

TEST(PreferredFormat, ASeparatorInQuotationMarksSeparatesNothing) {
    EXPECT_EQ(Format::text, preferredFormat("text/plain;x=\",application/openmetrics-text,\""));
    EXPECT_EQ(Format::text, preferredFormat("text/plain;x=\"\\\",application/openmetrics-text"));
    EXPECT_EQ(Format::openMetrics, preferredFormat("a/b;x=\"\\\\\";q=0,application/openmetrics-text"));
}

TEST(PreferredFormat, AnyBytesAreRead) {
    for (const std::string& accept :
         {std::string(",;=,;=\"\\"), std::string(100000, ','), std::string(100000, ';'),
          std::string(100000, '"'), std::string("\0\xff", 2)})
        EXPECT_EQ(Format::text, preferredFormat(accept));
}

TEST(AcceptsGzip, OnlyAClientThatSaysSo) {
    for (const char* const accept : {"gzip", "deflate, GZIP", "gzip;q=0.1", "*", "x-gzip", "br, *;q=0.5"})
        EXPECT_TRUE(acceptsGzip(accept)) << accept;
    for (const char* const accept : {"", "identity", "gzip;q=0", "gzip;q=0, *", "*;q=0", "gzipx", "br"})
        EXPECT_FALSE(acceptsGzip(accept)) << accept;
}
