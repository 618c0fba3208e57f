#include "exporter/Pages.hpp"

#include "exporter/Gzip.hpp"
#include "exporter/Preferences.hpp"
#include "http/RequestRules.hpp"
#include "util/Number.hpp"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <utility>

namespace exporter {

using std::chrono::duration_cast;
using std::chrono::milliseconds;

namespace {

const char* const startPage =
    "<!DOCTYPE html>\n<html lang=\"en\"><head><title>owb-exporter</title></head>\n"
    "<body><h1>owb-exporter</h1><p><a href=\"metrics\">Metrics</a></p></body></html>\n";

/** The path that a request names, without its query. */
std::string pathOf(const http::Request& request) {
    const std::string target(request.target());
    return target.substr(0, target.find('?'));
}

/** A constant text. */
class TextReply : public http::Reply {
public:
    TextReply(const char* type, const char* text, std::string title)
        : m_type(type)
        , m_text(text)
        , m_title(std::move(title)) {}

    http::ReplyHead head() const override { return {{{"Content-Type", m_type}}, {}, {}}; }
    bool append(std::string& piece) override {
        piece += m_text;
        return false;
    }
    std::string title() const override { return m_title; }

private:
    const char* m_type;
    const char* m_text;
    std::string m_title;
};

/** The text of a snapshot: its blocks, the metrics about the scrape, and the end. */
class MetricsReply : public http::Reply {
public:
    MetricsReply(std::shared_ptr<const Snapshot> snapshot, metrics::Format format, bool isCompressed)
        : m_snapshot(std::move(snapshot))
        , m_format(format)
        , m_end(endOfText()) {
        if (isCompressed)
            m_gzip.emplace();
    }

    http::ReplyHead head() const override {
        http::ReplyHead head{
            {{"Content-Type", metrics::contentType(m_format)}, {"Vary", "Accept, Accept-Encoding"}}, {}, {}};
        if (m_gzip)
            head.fields.emplace_back("Content-Encoding", "gzip");
        return head;
    }
    bool append(std::string& piece) override {
        const std::string& text = currentText();
        const std::string_view part = std::string_view(text).substr(m_offset, partSize);
        if (m_gzip)
            m_gzip->add(part, piece);
        else
            piece += part;
        m_offset += part.size();
        if (m_offset < text.size())
            return true;
        m_offset = 0;
        const bool hasMore = m_text++ < m_snapshot->blocks.size();
        if (!hasMore && m_gzip)
            m_gzip->finish(piece);
        return hasMore;
    }
    std::string title() const override { return "GET /metrics"; }

private:
    static constexpr std::size_t partSize = 64 * 1024;

    const std::string& currentText() const {
        return m_text < m_snapshot->blocks.size() ? m_snapshot->blocks[m_text]->textIn(m_format) : m_end;
    }

    std::string endOfText() const {
        metrics::Scrape scrape = m_snapshot->scrape;
        scrape.age =
            duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - m_snapshot->begin);
        return linesOf(familiesOf(scrape), m_format) + metrics::endOf(m_format);
    }

    const std::shared_ptr<const Snapshot> m_snapshot;
    const metrics::Format m_format;
    const std::string m_end;
    std::optional<Gzip> m_gzip;
    std::size_t m_text = 0;   // index of the block being sent; the number of blocks for m_end
    std::size_t m_offset = 0; // in this text
};

class PagesResponder : public http::Responder {
public:
    PagesResponder(Scraper& scraper, milliseconds timeLimit)
        : m_scraper(scraper)
        , m_timeLimit(timeLimit) {}

    std::optional<http::ErrorResponse> check(const http::Request& request) override {
        const std::string path = pathOf(request);
        if (path == "/" || path == "/metrics" || path == "/healthz")
            return std::nullopt;
        return http::ErrorResponse{404, "Not found", path};
    }

    void answer(const http::Request& request, Answered done) override {
        const std::string path = pathOf(request);
        if (path == "/metrics")
            answerMetrics(request, std::move(done));
        else if (path == "/healthz")
            done(std::make_unique<TextReply>("text/plain; charset=utf-8", "ok\n", "GET /healthz"));
        else
            done(std::make_unique<TextReply>("text/html; charset=utf-8", startPage, "GET /"));
    }

private:
    void answerMetrics(const http::Request& request, Answered done) {
        const metrics::Format format = preferredFormat(http::valueOf(request, "Accept"));
        const bool isCompressed = acceptsGzip(http::valueOf(request, "Accept-Encoding"));
        const milliseconds limit =
            scrapeLimit(http::valueOf(request, "X-Prometheus-Scrape-Timeout-Seconds"), m_timeLimit);
        m_scraper.get(
            limit, [done = std::move(done), format, isCompressed](std::shared_ptr<const Snapshot> snapshot) {
                done(std::make_unique<MetricsReply>(std::move(snapshot), format, isCompressed));
            });
    }

    Scraper& m_scraper;
    const milliseconds m_timeLimit;
};

} // namespace

milliseconds scrapeLimit(std::string_view field, milliseconds maximum) {
    const std::optional<double> seconds = util::realNumber(field);
    if (!seconds || !std::isfinite(*seconds) || *seconds <= 0)
        return maximum;
    const double margin = std::min(0.5, *seconds / 2);
    const double limit = std::min((*seconds - margin) * 1000, static_cast<double>(maximum.count()));
    return milliseconds(static_cast<milliseconds::rep>(limit));
}

std::unique_ptr<http::Responder> pages(Scraper& scraper, milliseconds timeLimit) {
    return std::make_unique<PagesResponder>(scraper, timeLimit);
}

} // namespace exporter
