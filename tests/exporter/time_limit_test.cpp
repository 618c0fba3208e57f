// An object manager that does not answer, and readers that die.
#include "RunningExporter.hpp"

#include <chrono>
#include <csignal>

using namespace std::chrono_literals;
using std::chrono::steady_clock;

namespace {

std::string limit(const char* seconds) {
    return std::string("X-Prometheus-Scrape-Timeout-Seconds: ") + seconds + "\r\n";
}

class ExporterTimeLimit : public RunningExporter {
protected:
    ~ExporterTimeLimit() override {
        if (m_isStopped)
            proceed();
    }
    /** Makes the object manager hang. */
    void hang() {
        manager().daemon().signal(SIGSTOP);
        m_isStopped = true;
    }
    void proceed() {
        manager().daemon().signal(SIGCONT);
        m_isStopped = false;
    }

private:
    bool m_isStopped = false;
};

} // namespace

TEST_F(ExporterTimeLimit, OfTheClientIsKeptAndTheTextSaysWhatIsMissing) {
    start({"--max-age", "0"});
    hang();
    const auto begin = steady_clock::now();
    const exposition::Text text = scrape(limit("1"));
    const auto time = steady_clock::now() - begin;
    EXPECT_LE(500ms, time);
    EXPECT_GT(1s, time) << "before the client gives up";
    EXPECT_EQ("0", text.value("owb_scrape_success"));
    EXPECT_EQ("0", text.value("owb_group_read_success", {{"group", "2"}}));
    EXPECT_EQ("(none)", text.value("owb_group_read_seconds", {{"group", "2"}}));
    EXPECT_EQ("(none)", text.value("owb_host_info"));
    EXPECT_EQ(
        "owb-exporter: cannot read groups 0, 1, 2, 3, 4, 5, 6, 7, 9, 10, 11, 12, 13, 14, 15, 16, 18, 19, 20, "
        "21, 22, 26, 27, 30: timed out",
        exporter().nextErrorLine());
    proceed();
    EXPECT_EQ("1", scrape(limit("10")).value("owb_scrape_success"));
    EXPECT_EQ("owb-exporter: all groups are read again", exporter().nextErrorLine());
}

TEST_F(ExporterTimeLimit, OfTheCommandLineHoldsForAllClients) {
    start({"--timeout", "0.3"});
    hang();
    const auto begin = steady_clock::now();
    EXPECT_EQ("0", scrape().value("owb_scrape_success"));
    EXPECT_EQ("0", scrape(limit("60")).value("owb_scrape_success"));
    EXPECT_GT(5s, steady_clock::now() - begin);
}

TEST_F(ExporterTimeLimit, TheReaderIsKilled) {
    start();
    hang();
    scrape(limit("0.2"));
    for (int i = 0; i < 1000 && !children().empty(); ++i)
        ::usleep(5000);
    EXPECT_TRUE(children().empty());
}

TEST_F(ExporterTimeLimit, OtherPagesAreServedMeanwhile) {
    start();
    hang();
    support::HttpClient waiting(port());
    waiting.send(request("/metrics", limit("10")));
    awaitChild();
    const auto begin = steady_clock::now();
    EXPECT_EQ("ok\n", get("/healthz").body);
    EXPECT_GT(1s, steady_clock::now() - begin);
    proceed();
    EXPECT_EQ("1", checkedText(waiting.receive()).value("owb_scrape_success"));
}

TEST_F(ExporterTimeLimit, ClientsThatAskMeanwhileShareTheScrape) {
    start({"--max-age", "0"});
    hang();
    support::HttpClient one(port());
    support::HttpClient other(port());
    one.send(request("/metrics", limit("15")));
    awaitChild();
    other.send(request("/metrics", limit("15")));
    EXPECT_EQ("ok\n", get("/healthz").body) << "the other request has arrived before";
    EXPECT_EQ(1U, children().size());
    proceed();
    EXPECT_EQ(checkedText(one.receive()).value("owb_scrape_timestamp_seconds"),
              checkedText(other.receive()).value("owb_scrape_timestamp_seconds"));
}

TEST_F(ExporterTimeLimit, AnImpatientClientDoesNotEndTheScrapeOfAnother) {
    start({"--max-age", "0"});
    hang();
    support::HttpClient patient(port());
    patient.send(request("/metrics", limit("15")));
    awaitChild();
    EXPECT_EQ("0", scrape(limit("0.4")).value("owb_scrape_success"));
    EXPECT_EQ(1U, children().size());
    proceed();
    EXPECT_EQ("1", checkedText(patient.receive()).value("owb_scrape_success"));
}

TEST_F(ExporterTimeLimit, AReaderThatDiesEndsTheScrapeAtOnce) {
    start();
    hang();
    support::HttpClient client(port());
    client.send(request("/metrics", limit("15")));
    ::kill(awaitChild(), SIGKILL);
    const auto begin = steady_clock::now();
    EXPECT_EQ("0", checkedText(client.receive()).value("owb_scrape_success"));
    EXPECT_GT(5s, steady_clock::now() - begin);
    EXPECT_NE(std::string::npos,
              exporter().nextErrorLine().find(": the child process that reads has failed"));
    proceed();
    EXPECT_EQ("1", scrape().value("owb_scrape_success"));
}

TEST_F(ExporterTimeLimit, AReaderThatHangsIsKilled) {
    start();
    hang();
    support::HttpClient client(port());
    client.send(request("/metrics", limit("1")));
    ::kill(awaitChild(), SIGSTOP);
    EXPECT_EQ("0", checkedText(client.receive()).value("owb_scrape_success"));
    proceed();
    EXPECT_EQ("1", scrape().value("owb_scrape_success"));
}

TEST_F(ExporterTimeLimit, AReaderEndsWithTheExporter) {
    start();
    hang();
    support::HttpClient client(port());
    client.send(request("/metrics", limit("15")));
    const pid_t child = awaitChild();
    exporter().signal(SIGKILL);
    exporter().wait();
    for (int i = 0; i < 1000 && ::kill(child, 0) == 0; ++i)
        ::usleep(5000);
    EXPECT_NE(0, ::kill(child, 0));
}

TEST_F(ExporterTimeLimit, AFailureIsLoggedOnceUntilItChanges) {
    startExporter({"--groups", "4,14", "--max-age", "0"});
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ("0", scrape().value("owb_scrape_success"));
    EXPECT_EQ("owb-exporter: cannot read groups 4, 14: no such file or directory: " +
                  directory().file("missing"),
              exporter().nextErrorLine());
    exporter().signal(SIGUSR1);
    EXPECT_EQ(0U, exporter().nextErrorLine().find("owb-exporter: connections: 3, open "));
}

TEST_F(ExporterTimeLimit, AnObjectManagerThatRestartsIsReadAgain) {
    start({"--max-age", "0", "--groups", "2"});
    EXPECT_EQ("1", scrape().value("owb_scrape_success"));
    manager().end(SIGTERM);
    EXPECT_EQ("0", scrape().value("owb_scrape_success"));
    manager().start();
    EXPECT_EQ("1", scrape().value("owb_scrape_success"));
}
