#include "ExpositionReader.hpp"
#include "metrics/Scrape.hpp"

#include <gtest/gtest.h>
#include <owb.h>

using namespace metrics;
using namespace std::chrono_literals;

namespace {

exposition::Text textOf(const Scrape& scrape) {
    exposition::Text text = exposition::read(linesOf(familiesOf(scrape), Format::text), Format::text);
    EXPECT_EQ(std::vector<std::string>(), text.faults);
    return text;
}

const std::chrono::system_clock::time_point begin{std::chrono::microseconds(1795344083839134)};

} // namespace

TEST(Scrape, EachGroupSaysWhetherAndHowFastItWasRead) {
    const exposition::Text text =
        textOf({{4, 7, 9}, {{4, OWB_DONE, 1500us, 0}, {7, OWB_EXCEPTION, 2s, 0}}, begin, 3s, {}});
    EXPECT_EQ("1", text.value("owb_group_read_success", {{"group", "4"}}));
    EXPECT_EQ("0", text.value("owb_group_read_success", {{"group", "7"}}));
    EXPECT_EQ("0", text.value("owb_group_read_success", {{"group", "9"}})) << "not read in time";
    EXPECT_EQ("0.0015", text.value("owb_group_read_seconds", {{"group", "4"}}));
    EXPECT_EQ("2", text.value("owb_group_read_seconds", {{"group", "7"}}));
    EXPECT_EQ("(none)", text.value("owb_group_read_seconds", {{"group", "9"}}));
    EXPECT_EQ("0", text.value("owb_scrape_success"));
    EXPECT_EQ("3", text.value("owb_scrape_read_seconds"));
}

TEST(Scrape, SucceedsIfAllGroupsWereRead) {
    const exposition::Text text =
        textOf({{4, 7}, {{4, OWB_DONE, 0us, 2}, {7, OWB_DONE, 0us, 3}}, begin, 0us, 1500ms});
    EXPECT_EQ("1", text.value("owb_scrape_success"));
    EXPECT_EQ("5", text.value("owb_scrape_dropped_rows"));
    EXPECT_EQ("1795344083.839134", text.value("owb_scrape_timestamp_seconds"));
    EXPECT_EQ("1.5", text.value("owb_scrape_age_seconds"));
}

TEST(Scrape, ATextForALaterMomentHasNoAge) {
    EXPECT_EQ("(none)", textOf({{4}, {}, begin, 0us, {}}).value("owb_scrape_age_seconds"));
}

TEST(Scrape, NamesTheVersionOfTheLibrary) {
    EXPECT_EQ("1", textOf({{4}, {}, begin, 0us, {}})
                       .value("owb_build_info", {{"version", OWB_version(nullptr, nullptr)}}));
}
