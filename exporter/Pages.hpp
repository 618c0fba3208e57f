#ifndef EXPORTER_PAGES_HPP
#define EXPORTER_PAGES_HPP

#include "exporter/Scraper.hpp"
#include "http/Responder.hpp"

#include <chrono>
#include <memory>
#include <string_view>

namespace exporter {

/** Methods of requests, as in the field Allow. */
constexpr const char* methods = "GET";

/**
 * The time in which a client must have its answer: the limit that it sends in the field
 * X-Prometheus-Scrape-Timeout-Seconds, less a margin for the transfer, but at most `maximum`. A field that is
 * no positive number counts as missing.
 */
std::chrono::milliseconds scrapeLimit(std::string_view field, std::chrono::milliseconds maximum);

/** Answers requests for the pages: a start page at /, the metrics at /metrics, and at /healthz whether the
 * program runs. The scraper must outlive it. */
std::unique_ptr<http::Responder> pages(Scraper& scraper, std::chrono::milliseconds timeLimit);

} // namespace exporter
#endif
