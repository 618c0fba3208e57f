// The configurations and rules for Prometheus.
#include "support/Prometheus.hpp"

#include <gtest/gtest.h>

namespace {

const std::string files = PROMETHEUS_FILES "/";

void expectSuccess(std::vector<std::string> arguments) {
    if (const std::string reason = support::prometheusMissing(); !reason.empty())
        GTEST_SKIP() << reason;
    arguments.insert(arguments.begin(), support::prometheusProgram("promtool"));
    const support::ProgramResult result = support::runProgram(arguments);
    EXPECT_EQ(0, result.exitCode) << result.out << result.err;
}

} // namespace

TEST(PrometheusFiles, TheConfigurationIsValid) {
    expectSuccess({"check", "config", files + "prometheus.yml"});
}

TEST(PrometheusFiles, TheConfigurationOfTheAgentIsValid) {
    expectSuccess({"check", "config", "--agent", files + "prometheus-agent.yml"});
}

TEST(PrometheusFiles, TheRulesAreValid) {
    expectSuccess({"check", "rules", "--lint-fatal", files + "owb-recording.yml", files + "owb-alerts.yml"});
}

TEST(PrometheusFiles, EachAlertFiresAndClears) {
    expectSuccess({"test", "rules", PROMETHEUS_TESTS "/alerts.yml"});
}
