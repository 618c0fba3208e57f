// Header fields of a scrape: Accept, Accept-Encoding and the time limit.
#include "exporter/Pages.hpp"
#include "exporter/Preferences.hpp"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace std::chrono_literals;
    const std::string_view field(reinterpret_cast<const char*>(data), size);
    const bool namesOpenMetrics = exporter::preferredFormat(field) == metrics::Format::openMetrics;
    if (namesOpenMetrics && size < std::string_view("application/openmetrics-text").size())
        std::abort();
    exporter::acceptsGzip(field);
    const std::chrono::milliseconds limit = exporter::scrapeLimit(field, 10s);
    if (limit < 0ms || limit > 10s)
        std::abort();
    return 0;
}
