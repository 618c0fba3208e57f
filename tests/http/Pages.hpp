#ifndef TESTS_HTTP_PAGES_HPP
#define TESTS_HTTP_PAGES_HPP
#include "http/Settings.hpp"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

/** A site for tests: serves a text at each target, and echoes the body of a POST. */
struct Pages {
    /** Parts of the body of each reply to GET. */
    std::vector<std::string> parts{"a page"};
    /** Thrown after the last part. */
    std::optional<std::string> fault{};
    /** Error response of authorize(). */
    std::optional<http::ErrorResponse> rejection{};
    /** If set, authorize() and answer() keep what they are to call in it. */
    std::vector<std::function<void()>>* pending = nullptr;
    std::vector<std::string> log{};

    http::Settings settings(std::chrono::milliseconds idle = std::chrono::seconds(60),
                            std::chrono::milliseconds request = std::chrono::seconds(60));
};

class PageReply : public http::Reply {
public:
    PageReply(const Pages& pages, std::string target, std::string echo)
        : m_pages(pages)
        , m_target(std::move(target))
        , m_echo(std::move(echo)) {}

    http::ReplyHead head() const override {
        return {{{"Content-Type", "text/plain"}}, {{"X-Page", m_target}}, {}};
    }
    bool append(std::string& piece) override {
        if (!m_echo.empty()) {
            piece += m_echo;
            return false;
        }
        if (m_next < m_pages.parts.size())
            piece += m_pages.parts[m_next++];
        else if (m_pages.fault)
            throw std::runtime_error(*m_pages.fault);
        return m_next < m_pages.parts.size() || m_pages.fault;
    }
    std::string title() const override { return "page " + m_target; }
    std::optional<std::string> failure() const override {
        return m_target == "/broken" ? std::optional<std::string>("it is broken") : std::nullopt;
    }

private:
    const Pages& m_pages;
    std::string m_target;
    std::string m_echo;
    std::size_t m_next = 0;
};

class PageResponder : public http::Responder {
public:
    explicit PageResponder(Pages& pages)
        : m_pages(pages) {}

    std::optional<http::ErrorResponse> check(const http::Request& request) override {
        if (request.target() == "/missing")
            return http::ErrorResponse{404, "Not found", "/missing"};
        return std::nullopt;
    }
    void authorize(const http::Request&, Authorized done) override {
        callOrKeep([this, done = std::move(done)] { done(m_pages.rejection); });
    }
    void answer(const http::Request& request, Answered done) override {
        callOrKeep([this, &request, done = std::move(done)] {
            done(std::make_unique<PageReply>(m_pages, std::string(request.target()), request.body()));
        });
    }

private:
    void callOrKeep(std::function<void()> call) {
        if (m_pages.pending)
            m_pages.pending->push_back(std::move(call));
        else
            call();
    }

    Pages& m_pages;
};

inline http::Settings Pages::settings(std::chrono::milliseconds idle, std::chrono::milliseconds request) {
    http::Settings settings;
    settings.limits.idle = idle;
    settings.limits.request = request;
    settings.name = "pages";
    settings.methods = "GET, POST";
    settings.makeResponder = [this](const http::Peer&) { return std::make_unique<PageResponder>(*this); };
    settings.log = [this](const std::string& line) { log.push_back(line); };
    return settings;
}

inline std::string get(const std::string& target, const std::string& lines = "") {
    return "GET " + target + " HTTP/1.1\r\nHost: localhost\r\n" + lines + "\r\n";
}

inline std::string post(const std::string& target, const std::string& body) {
    return "POST " + target +
           " HTTP/1.1\r\nHost: localhost\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" +
           body;
}

#endif
